// Feeds arbitrary bytes as an archive to the unpack, into a folder of its own,
// and checks what must hold for any archive: the unpack ends, and a refused
// archive leaves the folder empty, while an accepted one leaves a game there.
#include "pack/Unpack.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static QTemporaryDir dir;
    const QString zip = dir.filePath(QStringLiteral("in.zip"));
    const QString target = dir.filePath(QStringLiteral("target"));
    QDir(target).removeRecursively();
    QDir().mkpath(target);
    {
        QFile f(zip);
        if (!f.open(QIODevice::WriteOnly))
            std::abort();
        f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    pack::Limits limits;
    limits.maxTotalBytes = 8 << 20;
    limits.maxEntryBytes = 4 << 20;
    limits.ratioFrom = 1 << 20;
    const pack::UnpackResult result = pack::unpackArchive(zip, target, {}, limits);
    const QStringList left =
        QDir(target).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    if (result.status != pack::UnpackResult::Done && !left.isEmpty())
        std::abort();
    if (result.status == pack::UnpackResult::Done && !QFile::exists(result.gameFile))
        std::abort();
    return 0;
}
