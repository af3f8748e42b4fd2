#include "pack/AppFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace pack {
namespace {

// Copies what the user's folder lacks, never over a file the user has.
void copyMissing(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QDir source(from);
    for (const QFileInfo& info :
         source.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString target = to + QLatin1Char('/') + info.fileName();
        if (info.isDir())
            copyMissing(info.filePath(), target);
        else if (!QFileInfo::exists(target) && QFile::copy(info.filePath(), target))
            QFile(target).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                         QFile::ReadOther);
    }
}

} // namespace

QString applicationFolder(const QString& exeDir, const QString& shared) {
    const QString from = shared.isEmpty()
                             ? QDir::cleanPath(exeDir + QStringLiteral("/../share/zavik-wizard"))
                             : shared;
    // An installed program is told by the package's files beside it, not only
    // by a folder it cannot write: root can write in /usr/bin.
    const bool installed = QFileInfo(from).isDir();
    if (!installed && ::access(QFile::encodeName(exeDir).constData(), W_OK) == 0)
        return exeDir;
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty() || !QDir::isAbsolutePath(data))
        data = QDir::homePath() + QStringLiteral("/.local/share");
    const QString folder = data + QStringLiteral("/zavik-wizard");
    if (!QFileInfo::exists(folder))
        copyMissing(from, folder);
    return folder;
}

} // namespace pack
