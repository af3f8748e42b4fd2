#include "pack/Staging.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pack {
namespace {

QString errnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

constexpr char GameName[] = "game";
constexpr char ImagesName[] = "images";
constexpr char PlanName[] = "plan";

// Removes the files of the folder `name` in `parent`, one level deep as a
// staging folder is, then the folder itself.
void removeTree(int parent, const char* name) {
    const int fd = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) {
        ::unlinkat(parent, name, 0);
        return;
    }
    DIR* dir = ::fdopendir(fd);
    if (!dir) {
        ::close(fd);
        return;
    }
    std::vector<std::string> names;
    while (dirent* e = ::readdir(dir))
        if (std::strcmp(e->d_name, ".") != 0 && std::strcmp(e->d_name, "..") != 0)
            names.emplace_back(e->d_name);
    for (const std::string& entry : names)
        if (::unlinkat(::dirfd(dir), entry.c_str(), 0) != 0 && errno == EISDIR)
            removeTree(::dirfd(dir), entry.c_str());
    ::closedir(dir);
    ::unlinkat(parent, name, AT_REMOVEDIR);
}

bool fsyncAt(int dirFd) {
    return ::fsync(dirFd) == 0 || errno == EINVAL;
}

// The renames a plan names, each done only if its source is still there, so
// that running them twice is running them once.
QString runPlan(int target, int staging, const QByteArray& game, const QByteArray& folder) {
    struct stat st {};
    const bool staged = ::fstatat(staging, ImagesName, &st, AT_SYMLINK_NOFOLLOW) == 0;
    if (staged && !folder.isEmpty()) {
        if (::fstatat(target, folder.constData(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
            if (::renameat(staging, ImagesName, target, folder.constData()) != 0)
                return QStringLiteral("%1: %2").arg(QString::fromUtf8(folder), errnoText(errno));
        } else {
            const int into = ::openat(target, folder.constData(),
                                      O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            const int from = ::openat(staging, ImagesName, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            QString error;
            if (into < 0 || from < 0)
                error = QStringLiteral("%1: %2").arg(QString::fromUtf8(folder), errnoText(errno));
            DIR* dir = from >= 0 && into >= 0 ? ::fdopendir(::dup(from)) : nullptr;
            while (dir && error.isEmpty()) {
                dirent* e = ::readdir(dir);
                if (!e)
                    break;
                if (e->d_name[0] == '.' &&
                    (e->d_name[1] == 0 || (e->d_name[1] == '.' && e->d_name[2] == 0)))
                    continue;
                if (::renameat(from, e->d_name, into, e->d_name) != 0)
                    error = QStringLiteral("%1/%2: %3")
                                .arg(QString::fromUtf8(folder), QString::fromUtf8(e->d_name),
                                     errnoText(errno));
            }
            if (dir)
                ::closedir(dir);
            if (into >= 0) {
                fsyncAt(into);
                ::close(into);
            }
            if (from >= 0)
                ::close(from);
            if (!error.isEmpty())
                return error;
        }
    }
    if (::fstatat(staging, GameName, &st, AT_SYMLINK_NOFOLLOW) == 0 &&
        ::renameat(staging, GameName, target, game.constData()) != 0)
        return QStringLiteral("%1: %2").arg(QString::fromUtf8(game), errnoText(errno));
    fsyncAt(target);
    return {};
}

// The plan file: the game's name, a newline, the folder's name.
bool readPlan(int staging, QByteArray& game, QByteArray& folder) {
    const int fd = ::openat(staging, PlanName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return false;
    char buffer[4096];
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    ::close(fd);
    if (got <= 0)
        return false;
    const QList<QByteArray> lines = QByteArray(buffer, static_cast<int>(got)).split('\n');
    if (lines.size() < 2 || lines[0].isEmpty() || lines[0].contains('/') || lines[1].contains('/'))
        return false;
    game = lines[0];
    folder = lines[1];
    return true;
}

} // namespace

Staging* Staging::create(const QString& target, QString& error) {
    auto* staging = new Staging;
    staging->targetPath_ = target;
    staging->target_ =
        ::open(QFile::encodeName(target).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (staging->target_ < 0) {
        error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(target), errnoText(errno));
        delete staging;
        return nullptr;
    }
    std::random_device seed;
    std::mt19937_64 random(seed());
    for (int attempt = 0; attempt < 100; ++attempt) {
        QByteArray name = StagingPrefix + QByteArray::number(random() % 0xFFFFFFFFu, 36);
        if (::mkdirat(staging->target_, name.constData(), 0700) == 0) {
            staging->name_ = name;
            break;
        }
        if (errno != EEXIST) {
            error = QStringLiteral("cannot write in %1: %2")
                        .arg(QDir::toNativeSeparators(target), errnoText(errno));
            delete staging;
            return nullptr;
        }
    }
    staging->self_ = ::openat(staging->target_, staging->name_.constData(),
                              O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (staging->name_.isEmpty() || staging->self_ < 0) {
        error = QStringLiteral("cannot write in %1").arg(QDir::toNativeSeparators(target));
        delete staging;
        return nullptr;
    }
    return staging;
}

Staging::~Staging() {
    if (images_ >= 0)
        ::close(images_);
    if (self_ >= 0)
        ::close(self_);
    if (!name_.isEmpty())
        removeTree(target_, name_.constData());
    if (target_ >= 0)
        ::close(target_);
}

int Staging::createFile(bool image, const QString& name, QString& error) {
    if (image && images_ < 0) {
        if (::mkdirat(self_, ImagesName, 0755) != 0 && errno != EEXIST) {
            error = QStringLiteral("cannot write in %1: %2")
                        .arg(QDir::toNativeSeparators(targetPath_), errnoText(errno));
            return -1;
        }
        images_ = ::openat(self_, ImagesName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }
    const QByteArray file = image ? QFile::encodeName(name) : QByteArray(GameName);
    // Exclusive and never through a link: the name is new in a folder of ours.
    const int fd = ::openat(image ? images_ : self_, file.constData(),
                            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (fd < 0)
        error = QStringLiteral("cannot write %1 in %2: %3")
                    .arg(name, QDir::toNativeSeparators(targetPath_), errnoText(errno));
    return fd;
}

QString Staging::gamePath() const {
    return targetPath_ + QLatin1Char('/') + QString::fromLatin1(name_) + QLatin1Char('/') +
           QLatin1String(GameName);
}

int Staging::openStaged(const QString& name) const {
    if (name.isEmpty())
        return ::openat(self_, GameName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (images_ < 0)
        return -1;
    return ::openat(images_, QFile::encodeName(name).constData(),
                    O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
}

void Staging::drop(const QString& name) {
    if (images_ >= 0)
        ::unlinkat(images_, QFile::encodeName(name).constData(), 0);
}

QString Staging::commit(const QString& gameName, const QString& folder) {
    const QByteArray game = QFile::encodeName(gameName);
    const QByteArray dir = QFile::encodeName(folder);
    // The staged files reach the disk before the plan that names them: one
    // flush of the file system costs less than one per image.
    ::syncfs(self_);
    const QByteArray plan = game + '\n' + dir + '\n';
    const int fd =
        ::openat(self_, "plan.new", O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0 || ::write(fd, plan.constData(), static_cast<size_t>(plan.size())) != plan.size() ||
        ::fsync(fd) != 0) {
        const int error = errno;
        if (fd >= 0)
            ::close(fd);
        return QStringLiteral("cannot write in %1: %2")
            .arg(QDir::toNativeSeparators(targetPath_), errnoText(error));
    }
    ::close(fd);
    if (::renameat(self_, "plan.new", self_, PlanName) != 0 || !fsyncAt(self_))
        return QStringLiteral("cannot write in %1: %2")
            .arg(QDir::toNativeSeparators(targetPath_), errnoText(errno));
    return runPlan(target_, self_, game, dir);
}

QStringList recoverLeftovers(const QString& target) {
    QStringList finished;
    const int fd =
        ::open(QFile::encodeName(target).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return finished;
    DIR* dir = ::fdopendir(::dup(fd));
    std::vector<std::string> leftovers;
    while (dir) {
        dirent* e = ::readdir(dir);
        if (!e)
            break;
        if (std::strncmp(e->d_name, StagingPrefix, sizeof StagingPrefix - 1) == 0)
            leftovers.emplace_back(e->d_name);
    }
    if (dir)
        ::closedir(dir);
    for (const std::string& name : leftovers) {
        const int staging =
            ::openat(fd, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        QByteArray game, folder;
        if (staging >= 0 && readPlan(staging, game, folder) &&
            runPlan(fd, staging, game, folder).isEmpty())
            finished.append(QString::fromUtf8(game));
        if (staging >= 0)
            ::close(staging);
        removeTree(fd, name.c_str());
    }
    ::close(fd);
    return finished;
}

bool sameContent(int a, int b) {
    struct stat sa {
    }, sb{};
    if (::fstat(a, &sa) != 0 || ::fstat(b, &sb) != 0 || !S_ISREG(sa.st_mode) ||
        !S_ISREG(sb.st_mode) || sa.st_size != sb.st_size)
        return false;
    std::vector<char> x(1 << 16), y(1 << 16);
    for (;;) {
        const ssize_t n = ::read(a, x.data(), x.size());
        const ssize_t m = n > 0 ? ::read(b, y.data(), static_cast<size_t>(n)) : 0;
        if (n < 0 || m != n)
            return false;
        if (n == 0)
            return true;
        if (std::memcmp(x.data(), y.data(), static_cast<size_t>(n)) != 0)
            return false;
    }
}

} // namespace pack
