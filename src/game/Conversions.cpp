#include "game/Conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace conv {

double Val(const QString& text) {
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && (text[i] == u' ' || text[i] == u'\t' || text[i] == u'\r' || text[i] == u'\n'))
        ++i;
    std::string number;
    bool negative = false;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    bool digits = false;
    const auto takeDigits = [&] {
        while (i < n && text[i] >= u'0' && text[i] <= u'9') {
            number += static_cast<char>(text[i].unicode());
            digits = true;
            ++i;
        }
    };
    takeDigits();
    if (i < n && text[i] == u'.') {
        number += '.';
        ++i;
        takeDigits();
    }
    if (!digits)
        return 0.0;
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too many digits for a double: only its magnitude can matter.
        value = number.find_first_not_of("0.") == std::string::npos
                    ? 0.0
                    : std::numeric_limits<double>::max();
    }
    return negative ? -value : value;
}

qint16 CInt(double x) {
    if (std::isnan(x))
        return 0;
    if (x >= 32767.5)
        return 32767;
    if (x <= -32768.5)
        return -32768;
    // The default rounding mode sends exact halves to the even neighbour.
    return static_cast<qint16>(std::nearbyint(x));
}

QString Trim(const QString& text) {
    qsizetype b = 0;
    qsizetype e = text.size();
    while (b < e && text[b] == u' ')
        ++b;
    while (e > b && text[e - 1] == u' ')
        --e;
    return text.mid(b, e - b);
}

QString UCase(const QString& text) {
    return text.toUpper();
}

QString GetField(const QString& text, qint16 n, QString& delim) {
    if (delim.isEmpty())
        delim = QStringLiteral(",");
    return GetField(text, n, std::as_const(delim));
}

QString GetField(const QString& text, qint16 n, const QString& delim) {
    const QString separator = delim.isEmpty() ? QStringLiteral(",") : delim;
    QString work = text + separator;
    for (int i = 1; i <= n; ++i) {
        const qsizetype pos = work.indexOf(separator); // 0-based; -1 when absent
        if (pos < 0)
            return work;
        if (i == n)
            return work.left(pos);
        if (pos + 1 == work.size())
            return {};
        work = work.mid(pos + separator.size());
    }
    return {};
}

} // namespace conv
