#include "pack/EntryCount.h"

#include <QByteArray>
#include <QFile>

#include <cstring>

namespace pack {
namespace {

quint64 little(const char* p, int bytes) {
    quint64 value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = (value << 8) | static_cast<unsigned char>(p[i]);
    return value;
}

} // namespace

std::optional<qint64> declaredEntries(const QString& zip) {
    QFile file(zip);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // The end record is 22 bytes and a comment of at most 64 KiB.
    const qint64 size = file.size();
    const qint64 tail = std::min<qint64>(size, 22 + 0xFFFF + 20);
    file.seek(size - tail);
    const QByteArray end = file.read(tail);
    const int at = end.lastIndexOf(QByteArrayLiteral("PK\x05\x06"));
    if (at < 0 || at + 22 > end.size())
        return std::nullopt;
    const qint64 count = static_cast<qint64>(little(end.constData() + at + 10, 2));
    if (count != 0xFFFF)
        return count;
    // The 64-bit record, which a locator just before the end record points at.
    if (at < 20 || std::memcmp(end.constData() + at - 20, "PK\x06\x07", 4) != 0)
        return count;
    const quint64 offset = little(end.constData() + at - 20 + 8, 8);
    if (offset > static_cast<quint64>(size) || !file.seek(static_cast<qint64>(offset)))
        return count;
    const QByteArray record = file.read(56);
    if (record.size() < 56 || !record.startsWith(QByteArrayLiteral("PK\x06\x06")))
        return count;
    const quint64 total = little(record.constData() + 32, 8);
    return static_cast<qint64>(std::min<quint64>(total, quint64(1) << 62));
}

} // namespace pack
