#include "store/profile/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace Globals::ProfileDetail {

namespace {

mode_t creationMask() {
    // umask can only be read by setting it; do it once.
    static const mode_t mask = [] {
        const mode_t m = ::umask(022);
        ::umask(m);
        return m;
    }();
    return mask;
}

bool writeAll(int fd, const char* data, qsizetype size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, static_cast<std::size_t>(size));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += n;
        size -= n;
    }
    return true;
}

} // namespace

QString errnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

QByteArray parentFolder(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0)
        return QByteArrayLiteral(".");
    if (slash == 0)
        return QByteArrayLiteral("/");
    return path.left(slash);
}

QByteArray resolveLinks(const QByteArray& path) {
    QByteArray current = path;
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (::lstat(current.constData(), &st) != 0 || !S_ISLNK(st.st_mode))
            return current;
        QByteArray target(st.st_size > 0 ? st.st_size + 1 : 4096, '\0');
        const ssize_t n =
            ::readlink(current.constData(), target.data(), static_cast<std::size_t>(target.size()));
        if (n <= 0)
            return current;
        target.truncate(n);
        current = target.startsWith('/') ? target : parentFolder(current) + '/' + target;
    }
    return current;
}

std::optional<QString> replaceFile(const QByteArray& path, const QByteArray& bytes,
                                   const struct stat* existing) {
    const QByteArray folder = parentFolder(path);
    const qsizetype slash = path.lastIndexOf('/');
    QByteArray pattern = folder + "/." + path.mid(slash + 1) + ".XXXXXX";
    const int fd = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (fd < 0)
        return errnoText(errno);

    const auto fail = [&](int error) -> std::optional<QString> {
        ::close(fd);
        ::unlink(pattern.constData());
        return errnoText(error);
    };
    if (!writeAll(fd, bytes.constData(), bytes.size()))
        return fail(errno);
    const mode_t mode = existing ? (existing->st_mode & 07777) : (0666 & ~creationMask());
    if (::fchmod(fd, mode) != 0)
        return fail(errno);
    if (existing && (existing->st_uid != ::geteuid() || existing->st_gid != ::getegid())) {
        // Only root may give the file away; anyone else keeps what they get.
        [[maybe_unused]] const int ignored = ::fchown(fd, existing->st_uid, existing->st_gid);
    }
    if (::fsync(fd) != 0)
        return fail(errno);
    if (::close(fd) != 0) {
        const int error = errno;
        ::unlink(pattern.constData());
        return errnoText(error);
    }
    if (::rename(pattern.constData(), path.constData()) != 0) {
        const int error = errno;
        ::unlink(pattern.constData());
        return errnoText(error);
    }
    // The rename itself lives in the folder; without this a crash could still
    // bring back the old name.
    const int dirFd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return std::nullopt;
}

} // namespace Globals::ProfileDetail
