// Feeds arbitrary bytes as a picture to the preview decoder and to an import
// into a scratch game folder, and checks what must hold for any bytes: both
// end, an import either names a readable file of a game kind or says why not,
// and no temporary file stays behind.
#include "images/ImageImport.h"
#include "images/ImageNames.h"
#include "images/Preview.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    // Keeps each run small; the limit is what refuses the rest.
    QImageReader::setAllocationLimit(32);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static QTemporaryDir dir;
    static const bool ready = QDir(dir.path()).mkpath(QStringLiteral("game"));
    if (!ready)
        std::abort();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString source = dir.filePath(QStringLiteral("card.png"));
    {
        QFile f(source);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            std::abort();
    }
    QString error;
    const QImage shown = images::decodeScaled(source, {64, 64}, &error);
    if (shown.isNull() == error.isEmpty() || shown.width() > 64 || shown.height() > 64) {
        std::fprintf(stderr, "a preview that is neither a fitting picture nor a reason\n");
        std::abort();
    }

    QDir game(dir.filePath(QStringLiteral("game")));
    const images::Imported r = images::importImages({source}, game.path(), {}).front();
    const QStringList left = game.entryList(QDir::Files | QDir::Hidden);
    if (r.name.isEmpty() == r.message.isEmpty() || left.size() != (r.name.isEmpty() ? 0 : 1)) {
        std::fprintf(stderr, "import left %lld files for name '%s'\n",
                     static_cast<long long>(left.size()), qPrintable(r.name));
        std::abort();
    }
    if (!r.name.isEmpty() &&
        (!images::isGameImageName(r.name) || QImageReader(game.filePath(r.name)).read().isNull())) {
        std::fprintf(stderr, "imported %s, which is no readable game image\n", qPrintable(r.name));
        std::abort();
    }
    for (const QString& name : left)
        game.remove(name);
    return 0;
}
