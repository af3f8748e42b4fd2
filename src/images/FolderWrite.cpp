#include "images/FolderWrite.h"

#include "store/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace images::detail {

namespace {

QString errnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

// Gives the finished temporary file its name unless that name is taken.
// Folders whose file system cannot rename without replacing get a hard link.
int renameNoReplace(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return -1;
    if (::link(from.constData(), to.constData()) != 0)
        return -1;
    ::unlink(from.constData());
    return 0;
}

void syncFolder(const QString& dir) {
    const int fd = ::open(QFile::encodeName(dir).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

PlaceOutcome placeFile(const QString& dir, const QString& name, const QByteArray& bytes,
                       bool replace) {
    QTemporaryFile temp(dir + QStringLiteral("/.import-XXXXXX"));
    if (!temp.open())
        return {Placed::Failed, QStringLiteral("cannot write in the folder %1 (%2)")
                                    .arg(QDir::toNativeSeparators(dir), temp.errorString())};
    const auto failed = [&](const QString& why) {
        return PlaceOutcome{Placed::Failed, QStringLiteral("cannot write %1 (%2)").arg(name, why)};
    };
    if (temp.write(bytes) != bytes.size() || !temp.flush())
        return failed(temp.errorString());
    // The temporary file is private (0600); the picture is as public as any new file.
    if (::fchmod(temp.handle(), 0666 & ~store::detail::creationMask()) != 0 || ::fsync(temp.handle()) != 0)
        return failed(errnoText(errno));
    const QByteArray from = QFile::encodeName(temp.fileName());
    const QByteArray to = QFile::encodeName(dir + QLatin1Char('/') + name);
    const int done =
        replace ? ::rename(from.constData(), to.constData()) : renameNoReplace(from, to);
    if (done != 0) {
        if (!replace && errno == EEXIST)
            return {Placed::Exists, {}};
        return failed(errnoText(errno));
    }
    temp.setAutoRemove(false); // it has its name now
    syncFolder(dir);
    return {Placed::Done, {}};
}

QStringList folderNames(const QString& dir) {
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                               QDir::NoDotAndDotDot);
}

QString sameNameIn(const QStringList& names, const QString& name) {
    for (const QString& n : names) {
        if (n.compare(name, Qt::CaseInsensitive) == 0)
            return n;
    }
    return {};
}

bool holdsBytes(const QString& path, const QByteArray& bytes) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0 || !S_ISREG(st.st_mode) ||
        st.st_size != bytes.size())
        return false;
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.readAll() == bytes;
}

} // namespace images::detail
