#include "images/ImageCheck.h"

#include <QImageReader>
#include <QtEndian>

#include <climits>

namespace images {

namespace {

quint32 le32(QByteArrayView b, qsizetype at) {
    return qFromLittleEndian<quint32>(b.data() + at);
}
quint16 le16(QByteArrayView b, qsizetype at) {
    return qFromLittleEndian<quint16>(b.data() + at);
}

struct BmpHeader {
    quint32 offset = 0;
    qint64 width = 0;
    qint64 height = 0;
    int bits = 0;
    quint32 compression = 0;
};

bool readBmpHeader(QByteArrayView b, BmpHeader* h) {
    if (b.size() < 26)
        return false;
    h->offset = le32(b, 10);
    if (le32(b, 14) == 12) {
        h->width = le16(b, 18);
        h->height = le16(b, 20);
        h->bits = le16(b, 24);
        return true;
    }
    if (b.size() < 34)
        return false;
    h->width = static_cast<qint32>(le32(b, 18));
    h->height = qAbs(qint64(static_cast<qint32>(le32(b, 22))));
    h->bits = le16(b, 28);
    h->compression = le32(b, 30);
    return true;
}

// Uncompressed and bit-field BMPs say how many bytes their rows take; RLE
// ones do not, and the decoder's own checks have to do.
bool bmpComplete(QByteArrayView b) {
    BmpHeader h;
    if (!readBmpHeader(b, &h))
        return false;
    if (h.compression != 0 && h.compression != 3)
        return true;
    const qint64 rowBytes = ((qAbs(h.width) * h.bits + 31) / 32) * 4;
    return qint64(b.size()) >= qint64(h.offset) + rowBytes * h.height;
}

// Entropy-coded data never holds FF D9 or FF DA (an FF there is followed by
// 00), so the end-of-image marker must come after the last scan's start.
bool jpegComplete(QByteArrayView b) {
    const qsizetype lastScan = b.lastIndexOf(QByteArrayView("\xFF\xDA", 2));
    const qsizetype end = b.lastIndexOf(QByteArrayView("\xFF\xD9", 2));
    return lastScan >= 0 && end > lastScan;
}

bool gifComplete(QByteArrayView b) {
    qsizetype last = b.size() - 1;
    while (last > 0 && b[last] == '\0') // some writers pad to a block size
        --last;
    return last > 0 && b[last] == ';';
}

} // namespace

QString sizeRefusal(QSize size) {
    if (!size.isValid())
        return {};
    const QString pixels = QStringLiteral("%1 x %2 pixels").arg(size.width()).arg(size.height());
    if (size.width() > kMaxSide || size.height() > kMaxSide)
        return QStringLiteral("too large (%1, at most %2 x %2)").arg(pixels).arg(kMaxSide);
    const qint64 limitMB = QImageReader::allocationLimit();
    const qint64 bytes = qint64(size.width()) * size.height() * 4;
    if (limitMB > 0 && bytes > limitMB * 1024 * 1024)
        return QStringLiteral("too large (%1 need %2 MB to decode, more than %3 MB)")
            .arg(pixels)
            .arg((bytes + 1024 * 1024 - 1) / (1024 * 1024))
            .arg(limitMB);
    return {};
}

QSize headerSize(QImageReader& reader, const QByteArray& format, QByteArrayView bytes) {
    const QSize size = reader.size();
    BmpHeader h;
    if (size.isValid() || format != "bmp" || !readBmpHeader(bytes, &h) || h.width <= 0 ||
        h.width > INT_MAX || h.height > INT_MAX)
        return size;
    return QSize(int(h.width), int(h.height));
}

QByteArray contentFormat(QImageReader& reader) {
    reader.setDecideFormatFromContent(true);
    return reader.format().toLower();
}

bool looksComplete(const QByteArray& format, QByteArrayView bytes) {
    if (format == "bmp")
        return bmpComplete(bytes);
    if (format == "jpeg" || format == "jpg")
        return jpegComplete(bytes);
    if (format == "gif")
        return gifComplete(bytes);
    return true;
}

bool isLossyWebP(QByteArrayView b) {
    // RIFF chunks after "RIFF" size "WEBP"; an animation's frames hold their
    // picture chunk 16 bytes into the frame.
    qsizetype at = 12;
    while (at + 8 <= b.size()) {
        const QByteArrayView tag = b.sliced(at, 4);
        const quint32 length = le32(b, at + 4);
        if (tag == "VP8 ")
            return true;
        if (tag == "VP8L")
            return false;
        if (tag == "ANMF" && at + 8 + 16 + 4 <= b.size())
            return b.sliced(at + 8 + 16, 4) == "VP8 ";
        if (length > quint32(b.size()))
            break;
        at += 8 + qsizetype(length) + (length & 1);
    }
    return false;
}

} // namespace images
