#include "images/ImageNames.h"

#include <QFileInfo>

namespace images {

namespace {

// The characters Windows-1252 holds in 0x80..0x9F, where Latin-1 has controls.
constexpr char16_t kCp1252High[] = {0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x017D, 0x2018,
                                    0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC,
                                    0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};

bool fitsCp1252(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return true;
    for (char16_t h : kCp1252High) {
        if (h == c)
            return true;
    }
    return false;
}

bool holdable(QChar c) {
    const char16_t u = c.unicode();
    if (u < 0x20 || u == 0x7F || !fitsCp1252(u))
        return false;
    return !QStringView(u",\\/:*?\"<>|").contains(c);
}

} // namespace

QString cleanBaseName(const QString& name) {
    QString out;
    out.reserve(name.size());
    for (const QChar c : name) {
        if (holdable(c))
            out.append(c);
    }
    const auto trimmable = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('.'); };
    qsizetype begin = 0;
    qsizetype end = out.size();
    while (begin < end && trimmable(out[begin]))
        ++begin;
    while (end > begin && trimmable(out[end - 1]))
        --end;
    return out.mid(begin, end - begin);
}

QString extensionFor(const QByteArray& format, const QString& sourceSuffix) {
    const QString suffix = sourceSuffix.toLower();
    if (format == "jpeg" || format == "jpg")
        return suffix == QLatin1String("jpg") ? sourceSuffix : QStringLiteral("jpg");
    if (format == "gif")
        return suffix == QLatin1String("gif") ? sourceSuffix : QStringLiteral("gif");
    return suffix == QLatin1String("bmp") ? sourceSuffix : QStringLiteral("bmp");
}

bool isGameImageName(const QString& name) {
    const QString suffix = QFileInfo(name).suffix().toLower();
    return suffix == QLatin1String("bmp") || suffix == QLatin1String("jpg") ||
           suffix == QLatin1String("gif");
}

} // namespace images
