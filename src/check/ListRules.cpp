// Property lists and reports, and what the counts leave unread.

#include "check/CheckContext.h"
#include "game/Conversions.h"
#include "game/GameFile.h"

#include <QRegularExpression>

#include <algorithm>

namespace check::detail {

namespace {

const QString kLists = game::section::propLists();
const QString kReports = game::section::reports();

int countIn(Context& c, const QString& section, const QString& key, const QString& what, int high,
            Where where) {
    const QString text = c.read(section, key);
    const auto n = wholeNumber(text);
    if (!text.isEmpty() && (!n || *n > high))
        c.add(Severity::Error, c.place(where, section, key),
              what + QStringLiteral(" is ") + quoted(text) +
                  QStringLiteral(", not a whole number from 0 to ") + QString::number(high));
    return std::clamp<int>(conv::CInt(conv::Val(text)), 0, high);
}

} // namespace

void checkPropertyLists(Context& c) {
    c.lists = countIn(c, kLists, QStringLiteral("total"),
                      QStringLiteral("The number of property lists"), 4, Where::PropertyLists);
    QSet<QString> listNames;
    for (int k = 1; k <= c.lists; ++k) {
        const QString key = QStringLiteral("list") + QString::number(k);
        const Place where = c.place(Where::PropertyLists, kLists, key);
        const QString who = QStringLiteral("Property list ") + QString::number(k);
        const QString line = c.read(kLists, key);
        if (line.isEmpty()) {
            c.add(Severity::Warning, where, who + QStringLiteral(" is empty"));
            continue;
        }
        const QStringList fields = line.split(u',');
        const QString& name = fields.front();
        if (name.isEmpty())
            c.add(Severity::Warning, where, who + QStringLiteral(" has no name"));
        else if (listNames.contains(name))
            c.add(Severity::Warning, where,
                  who + QStringLiteral(" is called ") + quoted(name) +
                      QStringLiteral(" like an earlier list; choosing it shows the later one"));
        listNames.insert(name);
        if (fields.size() > 7)
            c.add(Severity::Warning, where,
                  who + QStringLiteral(" has ") + QString::number(fields.size() - 1) +
                      QStringLiteral(" property names; only the first six are read"));
        QSet<QString> inList;
        for (qsizetype j = 1; j < std::min<qsizetype>(fields.size(), 7); ++j) {
            const QString& property = fields[j];
            if (property.isEmpty())
                continue;
            if (inList.contains(property))
                c.add(Severity::Warning, where,
                      who + QStringLiteral(" names the property ") + quoted(property) +
                          QStringLiteral(" twice"));
            inList.insert(property);
            if (!c.hasProperty(property))
                c.propertyNames.append(property);
        }
    }
}

void checkReports(Context& c) {
    const int reports = countIn(c, kReports, QStringLiteral("num_reports"),
                                QStringLiteral("The number of reports"), 8, Where::Report);
    static const QStringList types = {QStringLiteral("SUM"), QStringLiteral("COUNT")};
    static const QStringList scopes = {QStringLiteral("ALL"), QStringLiteral("HAND"),
                                       QStringLiteral("SELECTED")};
    for (int r = 1; r <= reports; ++r) {
        const QString key = QStringLiteral("report") + QString::number(r);
        const Place where = c.place(Where::Report, kReports, key, 0, 0, r);
        const QString who = QStringLiteral("Report ") + QString::number(r);
        const QString line = c.read(kReports, key);
        if (line.isEmpty()) {
            c.add(Severity::Error, where, who + QStringLiteral(" is missing"));
            continue;
        }
        const QString type = conv::GetField(line, 2, QStringLiteral(","));
        const QString scope = conv::GetField(line, 3, QStringLiteral(","));
        const QString property = conv::GetField(line, 5, QStringLiteral(","));
        if (!types.contains(type))
            c.add(Severity::Error, where,
                  who + QStringLiteral(" has the type ") + quoted(type) +
                      QStringLiteral(", which is neither \"SUM\" nor \"COUNT\""));
        if (!scopes.contains(scope))
            c.add(Severity::Error, where,
                  who + QStringLiteral(" has the scope ") + quoted(scope) +
                      QStringLiteral(", which is none of \"ALL\", \"HAND\" and \"SELECTED\""));
        if (!c.hasProperty(property))
            c.add(Severity::Error, where,
                  who + QStringLiteral(" is on the property ") + quoted(property) +
                      QStringLiteral(", which stands in no property list"));
    }
}

namespace {

struct Numbered {
    QStringView prefix; // as spelled
    int number = 0;
};

// "card12" -> {"card", 12}; nothing for a key without a number at its end.
// Done by hand, without copies: it runs on every key of the file.
std::optional<Numbered> numberedKey(const QString& key) {
    qsizetype digits = key.size();
    while (digits > 0 && key[digits - 1].isDigit() && key[digits - 1].unicode() < 128)
        --digits;
    if (digits == 0 || digits == key.size() || key.size() - digits > 9)
        return std::nullopt;
    int number = 0;
    for (qsizetype i = digits; i < key.size(); ++i)
        number = number * 10 + (key[i].unicode() - u'0');
    return Numbered{QStringView(key).left(digits), number};
}

// Whether a prefix in lower case is the key's prefix in lower case.
bool samePrefix(QStringView spelled, const QString& lower) {
    if (spelled.size() != lower.size())
        return spelled.toString().toLower() == lower; // lower case may change the length
    for (qsizetype i = 0; i < spelled.size(); ++i) {
        const char16_t c = spelled[i].unicode();
        if (c >= 0x80)
            return spelled.toString().toLower() == lower;
        if ((c >= u'A' && c <= u'Z' ? c - u'A' + u'a' : c) != lower[i].unicode())
            return false;
    }
    return true;
}

void leftoverKeys(Context& c, const LineIndex::Section& section, const QString& prefix, int inUse,
                  Place where, const QString& what) {
    int count = 0;
    for (const LineIndex::Key& key : section.keys) {
        const auto n = numberedKey(key.name);
        if (!n || n->number <= inUse || !samePrefix(n->prefix, prefix))
            continue;
        if (count++ == 0)
            where.line = key.line;
    }
    if (count == 0)
        return;
    c.add(Severity::Note, where,
          QString::number(count) + QLatin1Char(' ') + what +
              (count == 1 ? QStringLiteral(" line above the count is")
                          : QStringLiteral(" lines above the count are")) +
              QStringLiteral(" not read"));
}

} // namespace

namespace {

// The page a section belongs to, read off its name.
struct SectionKind {
    Where where = Where::Game;
    int player = 0;
    int deck = 0;
    bool known = false;
};

SectionKind kindOf(const QString& name) {
    static const QRegularExpression player(QStringLiteral("^player ([0-9]{1,9})$"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (const auto m = player.match(name); m.hasMatch())
        return {Where::Player, m.captured(1).toInt(), 0, true};
    if (game::section::DeckName deck; game::section::parseDeck(name, deck))
        return {deck.common ? Where::CommonDeck : Where::PlayerDeck, deck.player, deck.deck, true};
    if (LineIndex::fold(name) == LineIndex::fold(kLists))
        return {Where::PropertyLists, 0, 0, true};
    if (LineIndex::fold(name) == LineIndex::fold(kReports))
        return {Where::Report, 0, 0, true};
    return {Where::Game, 0, 0, LineIndex::fold(name) == QLatin1String("game")};
}

Place sectionPlace(Context& c, const LineIndex::Section& s, const QString& key, int line) {
    const SectionKind kind = kindOf(s.name);
    Place p = c.place(kind.where, s.name, key, kind.player, kind.deck);
    p.line = line;
    return p;
}

int decksize(Context& c, const QString& section) {
    return conv::CInt(conv::Val(c.read(section, QStringLiteral("decksize"))));
}

} // namespace

namespace {

// A run of lines without "=" from keys[first] on: no reader takes them. The
// usual source is a description of several lines, which a save writes whole
// and every later save leaves behind once more.
void strayLines(Context& c, const LineIndex::Section& s, std::size_t first,
                const LineIndex::Key* before) {
    std::size_t n = 0;
    while (first + n < s.keys.size() && !s.keys[first + n].hasEquals)
        ++n;
    const LineIndex::Key& key = s.keys[first];
    const QString head = s.line == 0 ? QStringLiteral("before the first section")
                                     : QStringLiteral("in [") + s.name + QLatin1Char(']');
    QString message = (n == 1 ? QStringLiteral("The line ") + quoted(key.name)
                              : QString::number(n) + QStringLiteral(" lines, from ") +
                                    quoted(key.name) + QStringLiteral(" on,")) +
                      QLatin1Char(' ') + head +
                      (n == 1 ? QStringLiteral(" is no key=value line") :
                                QStringLiteral(" are no key=value lines"));
    if (before && LineIndex::fold(before->name) == QLatin1String(game::key::description) &&
        LineIndex::fold(s.name) == LineIndex::fold(game::section::game()))
        message += QStringLiteral(": left over from a description of several lines, of "
                                  "which the engine reads only the first, and every save "
                                  "leaves the later ones once more. Write the description on "
                                  "one line and delete the lines below it");
    else
        message += QStringLiteral("; no reader takes it");
    c.add(Severity::Warning, sectionPlace(c, s, QString(), key.line), message);
}

} // namespace

void checkLeftovers(Context& c) {
    QSet<QString> seen;
    for (const LineIndex::Section& s : c.index.sections()) {
        // Lines before the first header, and a later section of a name already
        // seen, are no section that the counts speak of.
        if (s.line == 0 || seen.contains(LineIndex::fold(s.name)))
            continue;
        seen.insert(LineIndex::fold(s.name));
        const SectionKind kind = kindOf(s.name);
        const Place p = sectionPlace(c, s, QString(), s.line);
        const QString head = QLatin1Char('[') + s.name + QLatin1Char(']');
        switch (kind.where) {
        case Where::Player:
            if (kind.player > c.players)
                c.add(Severity::Note, p, head + QStringLiteral(" is above the number of players"));
            break;
        case Where::CommonDeck:
        case Where::PlayerDeck: {
            const bool common = kind.where == Where::CommonDeck;
            const bool inUse = common
                                   ? kind.deck <= c.commonDecks
                                   : kind.player <= c.players &&
                                         kind.deck <= c.playerDecks[std::clamp(kind.player, 0, 6)];
            if (inUse)
                leftoverKeys(c, s, QStringLiteral("card"), decksize(c, s.name), p,
                             QStringLiteral("card"));
            else
                c.add(Severity::Note, p,
                      head + (common ? QStringLiteral(" is above the number of common decks")
                                     : QStringLiteral(
                                           " is above the number of players or of their decks")));
            break;
        }
        case Where::PropertyLists:
            leftoverKeys(c, s, QStringLiteral("list"), c.lists, p, QStringLiteral("property list"));
            break;
        case Where::Report:
            leftoverKeys(c, s, QStringLiteral("report"),
                         std::clamp<int>(conv::CInt(conv::Val(
                                             c.read(kReports, QStringLiteral("num_reports")))),
                                         0, 8),
                         p, QStringLiteral("report"));
            break;
        case Where::Game:
            break;
        }
    }
}

void checkLongValues(Context& c) {
    for (const LineIndex::Section& s : c.index.sections()) {
        const LineIndex::Key* lastKey = nullptr;
        for (std::size_t k = 0; k < s.keys.size(); ++k) {
            const LineIndex::Key& key = s.keys[k];
            if (key.hasEquals) {
                lastKey = &key;
            } else if (k == 0 || s.keys[k - 1].hasEquals) {
                strayLines(c, s, k, lastKey);
            }
            if (key.valueLength <= 254)
                continue;
            c.add(Severity::Error, sectionPlace(c, s, key.name, key.line),
                  QStringLiteral("The value of ") + key.name + QStringLiteral(" in [") + s.name +
                      QStringLiteral("] has ") + QString::number(key.valueLength) +
                      QStringLiteral(" characters; readers take only the first 254"));
        }
    }
}

} // namespace check::detail
