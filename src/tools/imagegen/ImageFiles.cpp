#include "tools/imagegen/ImageFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QSaveFile>

#include <vector>

namespace {

// GIF's variable-width LZW: codes go out least significant bit first, packed
// into data sub-blocks of at most 255 bytes.
class BitWriter {
public:
    void put(int code, int width) {
        m_acc |= static_cast<quint32>(code) << m_bits;
        m_bits += width;
        while (m_bits >= 8) {
            m_bytes.append(static_cast<char>(m_acc & 0xFF));
            m_acc >>= 8;
            m_bits -= 8;
        }
    }
    QByteArray finish() {
        if (m_bits > 0)
            m_bytes.append(static_cast<char>(m_acc & 0xFF));
        m_acc = 0;
        m_bits = 0;
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    quint32 m_acc = 0;
    int m_bits = 0;
};

QByteArray lzwEncode(const std::vector<quint8>& pixels, int minCodeSize) {
    const int clear = 1 << minCodeSize;
    const int end = clear + 1;
    constexpr int maxCode = 4095;
    QHash<quint32, int> table; // (prefix code << 8 | pixel) -> code
    int codeSize = minCodeSize + 1;
    int next = end + 1;
    BitWriter out;
    out.put(clear, codeSize);
    if (pixels.empty()) {
        out.put(end, codeSize);
        return out.finish();
    }
    int prefix = pixels[0];
    for (std::size_t i = 1; i < pixels.size(); ++i) {
        const quint32 key = (static_cast<quint32>(prefix) << 8) | pixels[i];
        const auto found = table.constFind(key);
        if (found != table.constEnd()) {
            prefix = *found;
            continue;
        }
        out.put(prefix, codeSize);
        if (next < maxCode) {
            table.insert(key, next++);
            // The decoder adds its entries one code later than we do, so the
            // width grows once the code just handed out no longer fits.
            if (next > (1 << codeSize) && codeSize < 12)
                ++codeSize;
        } else {
            out.put(clear, codeSize);
            table.clear();
            codeSize = minCodeSize + 1;
            next = end + 1;
        }
        prefix = pixels[i];
    }
    out.put(prefix, codeSize);
    out.put(end, codeSize);
    return out.finish();
}

void putWord(QByteArray& out, int value) {
    out.append(static_cast<char>(value & 0xFF));
    out.append(static_cast<char>((value >> 8) & 0xFF));
}

QByteArray gifFile(int w, int h, QRgb colour) {
    QByteArray out("GIF89a");
    putWord(out, w);
    putWord(out, h);
    out.append(static_cast<char>(0x80)); // a global table of two colours
    out.append('\0');                    // background: entry 0
    out.append('\0');                    // square pixels
    const char table[6] = {static_cast<char>(qRed(colour)),
                           static_cast<char>(qGreen(colour)),
                           static_cast<char>(qBlue(colour)),
                           0,
                           0,
                           0};
    out.append(table, 6);
    out.append(',');
    putWord(out, 0);
    putWord(out, 0);
    putWord(out, w);
    putWord(out, h);
    out.append('\0');              // no local table, not interlaced
    constexpr int minCodeSize = 2; // the smallest the format allows
    out.append(static_cast<char>(minCodeSize));
    const std::vector<quint8> pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), 0);
    const QByteArray data = lzwEncode(pixels, minCodeSize);
    for (qsizetype at = 0; at < data.size(); at += 255) {
        const qsizetype n = std::min<qsizetype>(255, data.size() - at);
        out.append(static_cast<char>(n));
        out.append(data.constData() + at, n);
    }
    out.append('\0');
    out.append(';');
    return out;
}

bool fail(QString* error, const QString& why) {
    if (error)
        *error = why;
    return false;
}

} // namespace

bool writeImageFile(const QString& path, int w, int h, QRgb colour, QString* error) {
    if (w <= 0 || h <= 0)
        return fail(error, QStringLiteral("an image needs a positive width and height"));
    const QString ext = QFileInfo(path).suffix().toLower();
    if (ext == QLatin1String("gif")) {
        if (w > 0xFFFF || h > 0xFFFF)
            return fail(error, QStringLiteral("a GIF holds at most 65535 pixels a side"));
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return fail(error, file.errorString());
        file.write(gifFile(w, h, colour));
        if (!file.commit())
            return fail(error, file.errorString());
        return true;
    }
    const char* format = nullptr;
    if (ext == QLatin1String("bmp"))
        format = "BMP";
    else if (ext == QLatin1String("png"))
        format = "PNG";
    else if (ext == QLatin1String("jpg") || ext == QLatin1String("jpeg"))
        format = "JPG";
    else
        return fail(error, QStringLiteral("no image format for the extension \"%1\"").arg(ext));
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(colour);
    if (!image.save(path, format))
        return fail(error, QStringLiteral("cannot write %1").arg(path));
    return true;
}
