// A value of a scenario line, as the file's reader and the failure messages
// see it.

#include "tools/scenario/Script.h"

#include "store/AnsiCodec.h"

namespace scenario {

Value Value::fromBytes(const QByteArray& bytes) {
    Value v;
    v.type = Text;
    v.bytes = bytes;
    // The same bytes in the game file would read as this text, so a scenario
    // string and a value from the file compare as the program sees them.
    v.text = store::detail::decodeText(bytes.constData(), bytes.size(),
                                       store::detail::FileEncoding::Ansi);
    return v;
}

QVariant Value::toVariant() const {
    switch (type) {
    case Text:
        return text;
    case Number:
        return QVariant::fromValue(number);
    case Boolean:
        return boolean;
    }
    return {};
}

QString quoted(const QString& text) {
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            out += QLatin1String("\\\"");
            break;
        case '\\':
            out += QLatin1String("\\\\");
            break;
        case '\r':
            out += QLatin1String("\\r");
            break;
        case '\n':
            out += QLatin1String("\\n");
            break;
        case '\t':
            out += QLatin1String("\\t");
            break;
        case '\b':
            out += QLatin1String("\\b");
            break;
        default:
            if (c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0))
                out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    return out + QLatin1Char('"');
}

QString Value::show() const {
    switch (type) {
    case Text:
        return quoted(text);
    case Number:
        return QString::number(number);
    case Boolean:
        return boolean ? QStringLiteral("True") : QStringLiteral("False");
    }
    return {};
}

} // namespace scenario
