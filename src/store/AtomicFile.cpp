#include "store/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <unistd.h>

namespace store::detail {

namespace {

SyncFunction g_sync = ::fsync;

constexpr qsizetype kSuffixLength = 6;

QByteArray randomSuffix() {
    static const char kChars[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    static std::mt19937 rng{std::random_device{}() ^ static_cast<unsigned>(::getpid())};
    QByteArray out(kSuffixLength, 'x');
    for (char& c : out)
        c = kChars[rng() % (sizeof kChars - 1)];
    return out;
}

// Temporary files of a save of `name` are named ".name.XXXXXX". One that no
// living save holds locked was left by a save that died; its lock died with it.
void removeLeftovers(const QByteArray& folder, const QByteArray& name) {
    DIR* dir = ::opendir(folder.constData());
    if (!dir)
        return;
    const QByteArray prefix = '.' + name + '.';
    const int dirFd = ::dirfd(dir);
    while (const dirent* entry = ::readdir(dir)) {
        const QByteArrayView entryName(entry->d_name);
        if (entryName.size() != prefix.size() + kSuffixLength || !entryName.startsWith(prefix))
            continue;
        const int fd =
            ::openat(dirFd, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0)
            continue;
        struct stat st {};
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0)
            ::unlinkat(dirFd, entry->d_name, 0);
        ::close(fd);
    }
    ::closedir(dir);
}

// Gives a file made with O_TMPFILE a name beside its target. Through /proc
// any user may; the direct way needs a privilege that root has.
bool linkTemporary(int fd, const QByteArray& name) {
    const QByteArray self = "/proc/self/fd/" + QByteArray::number(fd);
    if (::linkat(AT_FDCWD, self.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    return errno != EEXIST && ::linkat(fd, "", AT_FDCWD, name.constData(), AT_EMPTY_PATH) == 0;
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

std::optional<QString> replaceRefusal(const struct stat& file, uid_t user) {
    if (S_ISDIR(file.st_mode))
        return QStringLiteral("the path names a folder");
    if ((file.st_mode & 0222) == 0)
        return QStringLiteral("the file is read-only");
    if (user != 0 && file.st_uid != user)
        return QStringLiteral("the file belongs to another user");
    return std::nullopt;
}

void setSyncFunction(SyncFunction sync) {
    g_sync = sync ? sync : ::fsync;
}

namespace {

enum class Temporary { Unnamed, Named };

// One try at the replace. Gives nullopt on success; sets `retry` when an
// unnamed temporary file could not be given a name, which a named one avoids.
std::optional<QString> replaceThrough(Temporary kind, const QByteArray& path,
                                      const QByteArray& bytes, const struct stat* existing,
                                      bool& retry) {
    const QByteArray folder = parentFolder(path);
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    QByteArray temporary;
    int fd = -1;
    if (kind == Temporary::Unnamed) {
        fd = ::open(folder.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
        if (fd < 0) {
            retry = true; // the file system has no unnamed files
            return errnoText(errno);
        }
    } else {
        temporary = folder + "/." + name + ".XXXXXX";
        fd = ::mkostemp(temporary.data(), O_CLOEXEC);
        if (fd < 0)
            return errnoText(errno);
    }
    // The temporary file stays locked until it has replaced the old one, so
    // that no other save takes it for a leftover.
    ::flock(fd, LOCK_EX);
    const auto fail = [&](int error) -> std::optional<QString> {
        ::close(fd);
        if (!temporary.isEmpty())
            ::unlink(temporary.constData());
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
    if (g_sync(fd) != 0)
        return fail(errno);
    for (int attempt = 0; temporary.isEmpty(); ++attempt) {
        const QByteArray candidate = folder + "/." + name + '.' + randomSuffix();
        if (linkTemporary(fd, candidate)) {
            temporary = candidate;
        } else if (errno != EEXIST || attempt == 100) {
            retry = errno != EEXIST;
            return fail(errno);
        }
    }
    if (::rename(temporary.constData(), path.constData()) != 0)
        return fail(errno);
    ::close(fd);
    // The rename itself lives in the folder; without this a crash could still
    // bring back the old name.
    const int dirFd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> replaceFile(const QByteArray& path, const QByteArray& bytes,
                                   const struct stat* existing) {
    removeLeftovers(parentFolder(path), path.mid(path.lastIndexOf('/') + 1));
    bool retry = false;
    auto reason = replaceThrough(Temporary::Unnamed, path, bytes, existing, retry);
    if (reason && retry)
        reason = replaceThrough(Temporary::Named, path, bytes, existing, retry);
    return reason;
}

mode_t creationMask() {
    // umask can only be read by setting it; do it once.
    static const mode_t mask = [] {
        const mode_t m = ::umask(022);
        ::umask(m);
        return m;
    }();
    return mask;
}

} // namespace store::detail
