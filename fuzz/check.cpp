// Feeds arbitrary bytes to the whole-game check as a game file beside an
// image directory, and checks what must hold for any file: the check ends,
// leaves the file as it was and points at lines that exist.
#include "check/GameChecker.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static QTemporaryDir dir;
    static const bool ready = [] {
        QDir(dir.path()).mkpath(QStringLiteral("duelcards"));
        for (const char* name : {"back.bmp", "pile.bmp", "Knight.bmp", "queen.jpg"}) {
            QFile f(dir.filePath(QStringLiteral("duelcards/") + QLatin1String(name)));
            if (!f.open(QIODevice::WriteOnly))
                return false;
        }
        return true;
    }();
    if (!ready)
        std::abort();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString path = dir.filePath(QStringLiteral("fuzz.game"));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            std::abort();
    }
    store::DropProfileCache();
    const check::GameReport report = check::checkGame(path);

    QFile f(path);
    if (!f.open(QIODevice::ReadOnly) || f.readAll() != bytes) {
        std::fprintf(stderr, "the check changed the file\n");
        std::abort();
    }
    const qsizetype lines = bytes.count('\n') + bytes.count('\r') + 1;
    for (const check::Finding& finding : report.findings) {
        if (finding.place.line < 0 || finding.place.line > lines || finding.message.isEmpty()) {
            std::fprintf(stderr, "a finding points nowhere: line %d\n", finding.place.line);
            std::abort();
        }
    }
    return 0;
}
