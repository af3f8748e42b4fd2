#pragma once
// What can be told about an image before and after decoding it: its kind by
// content, whether its size is one we agree to decode, whether the file ends
// where its kind says it must.

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>
#include <QString>

class QImageReader;

namespace images {

// The engine and most decoders stop here; larger pictures are hostile or a mistake.
constexpr int kMaxSide = 16384;

// Why a picture of `size` is refused before any decoding, or "" when it may be
// decoded. Counts 4 bytes a pixel against QImageReader's allocation limit.
QString sizeRefusal(QSize size);

// The size `reader` reads from the header; for a BMP that Qt's reader will not
// even measure (it gives up past 16384 x 16384 pixels), the header's own.
QSize headerSize(QImageReader& reader, const QByteArray& format, QByteArrayView bytes);

// The kind `reader` finds in the content, not the file name: "bmp", "jpeg",
// "gif", "png"... or "" when no decoder recognises it.
QByteArray contentFormat(QImageReader& reader);

// Qt decodes a BMP, JPEG or GIF that is cut short without a word, filling the
// rest; a copied file must be whole, so these look at the end of the bytes.
bool looksComplete(const QByteArray& format, QByteArrayView bytes);

// Whether a WebP file holds lossy (VP8) rather than lossless (VP8L) data.
bool isLossyWebP(QByteArrayView bytes);

} // namespace images
