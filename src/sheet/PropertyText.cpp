#include "sheet/PropertyText.h"

#include "game/CardEntry.h"
#include "game/Conversions.h"
#include "store/AnsiCodec.h"

#include <QSet>
#include <QStringBuilder>

#include <vector>

namespace sheet {

namespace {

const QString kPairDelim = QStringLiteral("|");
const QString kNameDelim = QStringLiteral("=");

struct Pair {
    QString name;
    QString value;
    QString text; // as written, kept whole when the pair is not edited
};

// The pairs as the file's readers see them, one per "|" field; an empty field
// is no pair and goes when the text is written again.
std::vector<Pair> pairsOf(const QString& props) {
    std::vector<Pair> out;
    if (props.isEmpty())
        return out;
    const QStringList fields = props.split(QLatin1Char('|'));
    for (const QString& field : fields) {
        if (field.isEmpty())
            continue;
        out.push_back(
            {conv::GetField(field, 1, kNameDelim), conv::GetField(field, 2, kNameDelim), field});
    }
    return out;
}

bool fitsCodePage(QStringView ch) {
    if (ch.size() != 1)
        return false; // a character beyond 16 bits is never in a single-byte code page
    const char16_t c = ch.front().unicode();
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return true;
    return store::detail::encodeText(ch.toString(), store::detail::FileEncoding::Ansi) != "?";
}

QString quoted(const QString& text) {
    return QLatin1Char('"') % text % QLatin1Char('"');
}

QString codePoint(QStringView ch) {
    const char32_t c = ch.size() == 2 ? QChar::surrogateToUcs4(ch[0], ch[1]) : ch[0].unicode();
    return QStringLiteral("U+%1").arg(static_cast<uint>(c), 4, 16, QLatin1Char('0')).toUpper();
}

enum class Kind { Value, Name, Image };

QString refusal(Kind kind, const QString& text) {
    const QString what = kind == Kind::Value  ? QStringLiteral("The value ")
                         : kind == Kind::Name ? QStringLiteral("The property name ")
                                              : QStringLiteral("The image name ");
    const QString head = what % quoted(text) % QStringLiteral(" holds ");
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const qsizetype width = c.isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QStringView ch = QStringView(text).mid(i, width);
        i += width - 1;
        if (c == QLatin1Char(','))
            return head % QStringLiteral("\",\", which ends a card's line in the game file");
        if (kind != Kind::Image && c == QLatin1Char('|'))
            return head % QStringLiteral("\"|\", which separates a card's properties");
        if (kind != Kind::Image && c == QLatin1Char('='))
            return head % QStringLiteral("\"=\", which separates a name from its value");
        if (kind == Kind::Image && (c == QLatin1Char('/') || c == QLatin1Char('\\')))
            return head % quoted(c) %
                   QStringLiteral(": an image is a bare file name in the game's directory, not a "
                                  "name with a folder");
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n'))
            return head % QStringLiteral("a line break, which ends a line of the game file");
        if ((c.unicode() < 0x20 && c != QLatin1Char('\t')) || c.unicode() == 0x7F)
            return head % QStringLiteral("the control character ") % codePoint(ch) %
                   QStringLiteral(", which has no place in the game file's text");
        if (!fitsCodePage(ch))
            return head % quoted(ch.toString()) % QStringLiteral(" (") % codePoint(ch) %
                   QStringLiteral("), which the game file's single-byte text (Windows-1252) "
                                  "cannot hold");
    }
    return {};
}

} // namespace

QString valueOf(const QString& props, const QString& name) {
    // In place rather than by GetField: a sheet asks every card for every
    // column, thousands of times for one view. The fields are the same.
    QString value;
    bool found = false;
    QStringView rest(props);
    for (int k = 0; k < MaxPairs && (k == 0 || !rest.isNull()); ++k) {
        const qsizetype bar = rest.indexOf(QLatin1Char('|'));
        const QStringView pair = bar < 0 ? rest : rest.left(bar);
        rest = bar < 0 ? QStringView() : rest.mid(bar + 1);
        const qsizetype eq = pair.indexOf(QLatin1Char('='));
        if ((eq < 0 ? pair : pair.left(eq)) != name)
            continue;
        found = true;
        QStringView v = eq < 0 ? QStringView() : pair.mid(eq + 1);
        const qsizetype eq2 = v.indexOf(QLatin1Char('='));
        value = (eq2 < 0 ? v : v.left(eq2)).toString();
    }
    return found ? value : QString();
}

QString valueRefusal(const QString& value) {
    return refusal(Kind::Value, value);
}

QString nameRefusal(const QString& name) {
    if (name.isEmpty())
        return QStringLiteral("A property name cannot be empty");
    return refusal(Kind::Name, name);
}

QString imageRefusal(const QString& image) {
    return refusal(Kind::Image, image);
}

PropsEdit setValues(const QString& props, const QStringList& columns,
                    const QHash<QString, QString>& values) {
    PropsEdit edit;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        QString why = nameRefusal(it.key());
        if (why.isEmpty())
            why = valueRefusal(it.value().trimmed());
        if (!why.isEmpty()) {
            edit.message = why;
            return edit;
        }
    }
    const std::vector<Pair> old = pairsOf(props);
    const QSet<QString> columnSet(columns.cbegin(), columns.cend());
    QStringList names;
    QStringList pairs;
    QSet<QString> placed;
    for (const QString& column : columns) {
        if (placed.contains(column))
            continue;
        placed.insert(column);
        QString value;
        if (values.contains(column)) {
            value = values.value(column).trimmed();
        } else {
            for (const Pair& pair : old) {
                if (pair.name == column)
                    value = pair.value; // the later pair wins, as on reading
            }
        }
        if (!value.isEmpty()) {
            names.append(column);
            pairs.append(column % kNameDelim % value);
        }
    }
    for (const Pair& pair : old) {
        if (columnSet.contains(pair.name) || values.contains(pair.name))
            continue;
        names.append(pair.name);
        pairs.append(pair.text);
    }
    if (pairs.size() > MaxPairs) {
        edit.message = QStringLiteral("A card holds at most six properties; this one would hold "
                                      "%1: %2")
                           .arg(pairs.size())
                           .arg(names.join(QStringLiteral(", ")));
        return edit;
    }
    edit.ok = true;
    edit.props = pairs.join(kPairDelim);
    return edit;
}

QString entryWithCopies(const QString& entry, const QString& copies) {
    const QString name = readCardEntry(entry).name;
    if (conv::Val(copies) > 1)
        return QStringLiteral("(x") % conv::Trim(copies) % QLatin1Char(')') % name;
    return name;
}

} // namespace sheet
