#include "images/ImageImport.h"

#include "images/FolderWrite.h"
#include "images/ImageCheck.h"
#include "images/ImageNames.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <sys/stat.h>

namespace images {

namespace {

using detail::Placed;

// A picture within the pixel limits is far smaller; more is no card image.
constexpr qint64 kMaxSourceBytes = qint64(256) * 1024 * 1024;
constexpr int kJpegQuality = 95;
constexpr int kMaxKeepBoth = 9999;

struct Prepared {
    QByteArray bytes; // what goes into the folder
    QString extension;
    bool converted = false;
    bool flattened = false;
    QString error;
};

bool hasTransparentPixels(const QImage& image) {
    if (!image.hasAlphaChannel())
        return false;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            if (qAlpha(line[x]) != 255)
                return true;
        }
    }
    return false;
}

QImage flattened(const QImage& image) {
    QImage out(image.size(), QImage::Format_RGB32);
    out.fill(flattenColour());
    QPainter painter(&out);
    painter.drawImage(0, 0, image);
    return out;
}

// Reads the whole source once, so that what is checked is what is written.
QString readSource(const QString& source, QByteArray* bytes) {
    const QFileInfo info(source);
    struct stat st {};
    if (::stat(QFile::encodeName(source).constData(), &st) != 0)
        return info.isSymLink() ? QStringLiteral("a link to a file that does not exist")
                                : QStringLiteral("no such file");
    if (!S_ISREG(st.st_mode))
        return S_ISDIR(st.st_mode) ? QStringLiteral("a folder, not a file")
                                   : QStringLiteral("not a regular file");
    if (st.st_size > kMaxSourceBytes)
        return QStringLiteral("too large a file (%1 MB)").arg(st.st_size / (1024 * 1024));
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot be read (%1)").arg(file.errorString());
    *bytes = file.read(kMaxSourceBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return QStringLiteral("cannot be read (%1)").arg(file.errorString());
    if (bytes->size() > kMaxSourceBytes)
        return QStringLiteral("too large a file");
    return {};
}

// BMP keeps every pixel of a lossless picture (PNG, TIFF, ...); Qt has no GIF
// writer, and 256 colours would lose some anyway. A lossy source (WebP VP8)
// has lost its fine detail already: as BMP it would only grow many times over,
// so it becomes JPEG at a quality high enough not to lose more that one sees.
QByteArray encode(const QImage& image, bool lossySource, QString* extension) {
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, lossySource ? "jpeg" : "bmp");
    if (lossySource)
        writer.setQuality(kJpegQuality);
    *extension = QLatin1String(lossySource ? "jpg" : "bmp");
    if (!writer.write(image.convertToFormat(QImage::Format_RGB32)))
        return {};
    return out;
}

Prepared prepare(const QByteArray& bytes, const QString& suffix) {
    Prepared p;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QByteArray format = contentFormat(reader);
    if (format.isEmpty()) {
        p.error = QStringLiteral("not an image of a kind this program reads");
        return p;
    }
    p.error = sizeRefusal(headerSize(reader, format, bytes));
    if (!p.error.isEmpty())
        return p;
    const QImage image = reader.read();
    if (image.isNull()) {
        p.error = QStringLiteral("damaged or unreadable (%1)").arg(reader.errorString());
        return p;
    }
    if (format == "bmp" || format == "jpeg" || format == "gif") {
        if (!looksComplete(format, bytes)) {
            p.error = QStringLiteral("damaged: the file is cut short");
            return p;
        }
        p.bytes = bytes;
        p.extension = extensionFor(format, suffix);
        return p;
    }
    p.converted = true;
    p.flattened = hasTransparentPixels(image);
    const bool lossy = format == "webp" && isLossyWebP(bytes);
    p.bytes = encode(p.flattened ? flattened(image) : image, lossy, &p.extension);
    if (p.bytes.isEmpty())
        p.error = QStringLiteral("could not be converted");
    return p;
}

QString keepBothName(const QStringList& names, const QString& base, const QString& ext,
                     const QString& dir, const QByteArray& bytes, bool* same) {
    for (int n = 2; n <= kMaxKeepBoth; ++n) {
        const QString candidate = QStringLiteral("%1-%2.%3").arg(base).arg(n).arg(ext);
        const QString existing = detail::sameNameIn(names, candidate);
        if (existing.isEmpty())
            return candidate;
        if (detail::holdsBytes(dir + QLatin1Char('/') + existing, bytes)) {
            *same = true;
            return existing;
        }
    }
    return {};
}

enum class Outcome { Done, Cancelled };

// Gives the prepared bytes a name in `dir`, asking what to do when the name is
// taken by other bytes. A name taken while writing is looked at again.
Outcome place(Imported& r, const QString& dir, const QString& base, const Prepared& p,
              const ImportOptions& options) {
    const QString wanted = base + QLatin1Char('.') + p.extension;
    for (int attempt = 0; attempt < 3; ++attempt) {
        const QStringList names = detail::folderNames(dir);
        QString name = wanted;
        bool replace = false;
        const QString existing = detail::sameNameIn(names, wanted);
        if (!existing.isEmpty()) {
            if (detail::holdsBytes(dir + QLatin1Char('/') + existing, p.bytes)) {
                r.skipped = true;
                r.name = existing;
                return Outcome::Done;
            }
            const Conflict answer =
                options.onConflict ? options.onConflict(existing, r.source) : Conflict::KeepBoth;
            if (answer == Conflict::Skip || answer == Conflict::Cancel) {
                r.skipped = true;
                return answer == Conflict::Cancel ? Outcome::Cancelled : Outcome::Done;
            }
            replace = answer == Conflict::Replace;
            if (replace) {
                name = existing;
            } else {
                bool same = false;
                name = keepBothName(names, base, p.extension, dir, p.bytes, &same);
                if (name.isEmpty()) {
                    r.message = QStringLiteral("%1: no free name left beside %2")
                                    .arg(QFileInfo(r.source).fileName(), existing);
                    return Outcome::Done;
                }
                if (same) {
                    r.skipped = true;
                    r.name = name;
                    return Outcome::Done;
                }
            }
        }
        const detail::PlaceOutcome placed = detail::placeFile(dir, name, p.bytes, replace);
        if (placed.result == Placed::Done) {
            r.name = name;
            return Outcome::Done;
        }
        if (placed.result == Placed::Failed) {
            r.message = QStringLiteral("%1: %2").arg(QFileInfo(r.source).fileName(), placed.error);
            return Outcome::Done;
        }
    }
    r.message = QStringLiteral("%1: the name %2 keeps being taken by another program")
                    .arg(QFileInfo(r.source).fileName(), wanted);
    return Outcome::Done;
}

QString folderRefusal(const QString& dir) {
    const QFileInfo info(dir);
    if (!info.exists())
        return QStringLiteral("the folder %1 does not exist").arg(dir);
    if (!info.isDir())
        return QStringLiteral("%1 is not a folder").arg(dir);
    return {};
}

} // namespace

QColor flattenColour() {
    return QColor(Qt::white);
}

std::vector<Imported> importImages(const QStringList& sources, const QString& dir,
                                   const ImportOptions& options) {
    std::vector<Imported> results;
    results.reserve(static_cast<std::size_t>(sources.size()));
    const QString folderError = folderRefusal(dir);
    bool cancelled = false;
    for (const QString& source : sources) {
        Imported& r = results.emplace_back();
        r.source = source;
        const QFileInfo info(source);
        const auto refuse = [&](const QString& why) {
            r.message = QStringLiteral("%1: %2").arg(info.fileName(), why);
        };
        if (cancelled) {
            r.skipped = true;
            refuse(QStringLiteral("not brought in, the import was cancelled"));
            continue;
        }
        if (!folderError.isEmpty()) {
            refuse(folderError);
            continue;
        }
        QByteArray bytes;
        if (const QString why = readSource(source, &bytes); !why.isEmpty()) {
            refuse(why);
            continue;
        }
        const Prepared p = prepare(bytes, info.suffix());
        if (!p.error.isEmpty()) {
            refuse(p.error);
            continue;
        }
        r.converted = p.converted;
        r.flattened = p.flattened;
        // A name without a suffix is all base; "a.b.png" keeps "a.b".
        const QString rawBase = info.suffix().isEmpty() ? info.fileName() : info.completeBaseName();
        const QString base = cleanBaseName(rawBase);
        r.renamed = base != rawBase;
        if (base.isEmpty()) {
            refuse(QStringLiteral("no usable name is left once the characters a game file "
                                  "cannot hold are taken out"));
            continue;
        }
        cancelled = place(r, dir, base, p, options) == Outcome::Cancelled;
    }
    return results;
}

QString importReport(const std::vector<Imported>& results) {
    QStringList lines;
    for (const Imported& r : results) {
        const QString from = QFileInfo(r.source).fileName();
        if (!r.message.isEmpty()) {
            lines << r.message;
            continue;
        }
        if (r.skipped) {
            lines << (r.name.isEmpty()
                          ? QStringLiteral("%1: skipped").arg(from)
                          : QStringLiteral("%1: already there as %2").arg(from, r.name));
            continue;
        }
        QStringList notes;
        if (r.converted)
            notes << QStringLiteral("converted");
        if (r.flattened)
            notes << QStringLiteral("transparent parts filled with %1")
                         .arg(flattenColour() == QColor(Qt::white) ? QStringLiteral("white")
                                                                   : flattenColour().name());
        if (r.renamed)
            notes << QStringLiteral("characters a game file cannot hold taken out of the name");
        QString line = QStringLiteral("%1 -> %2").arg(from, r.name);
        if (!notes.isEmpty())
            line += QStringLiteral(" (%1)").arg(notes.join(QStringLiteral("; ")));
        lines << line;
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace images
