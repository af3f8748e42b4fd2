// The decks in use: their images, their cards, what they deal.

#include "check/CheckContext.h"
#include "game/CardEntry.h"
#include "game/Conversions.h"
#include "game/GameFile.h"

#include <algorithm>

namespace check::detail {

namespace {

constexpr int kMaxCopies = 32767;

// Copies of one card line as the wizard reads them, and whether the count
// written was beyond what a row can hold (the wizard's reading stops there).
struct Entry {
    int copies = 1;
    QString name;
};

// Where a character stands in a short text, from a place on; -1 if nowhere.
// Qt's search is built for long texts and costs more on a card's few letters.
qsizetype find(QStringView text, char16_t c, qsizetype from = 0) {
    const auto it = std::find(text.begin() + from, text.end(), QChar(c));
    return it == text.end() ? -1 : it - text.begin();
}

// The wizard's reading of an entry, on the line's own text; a count past
// the largest a row holds is kept as such for its finding.
Entry readEntry(QStringView text) {
    const CardEntryParts parts = cardEntryParts(text);
    return {parts.copies > kMaxCopies ? kMaxCopies + 1 : conv::CInt(parts.copies),
            parts.name.toString()};
}

// The keys card1 to card200, made once instead of once for each deck.
const QString& cardKey(int number, QString& spare) {
    static const std::vector<QString> keys = [] {
        std::vector<QString> made;
        for (int n = 1; n <= game::MaxDeckRows; ++n)
            made.push_back(game::key::card(n));
        return made;
    }();
    if (number >= 1 && number <= game::MaxDeckRows)
        return keys[static_cast<std::size_t>(number - 1)];
    spare = game::key::card(number);
    return spare;
}

// One card line of a deck. Its place and words are built only for a finding:
// most cards have none, and a game holds thousands of them.
struct Card {
    Context& c;
    const Deck& deck;
    int number;
    const QString& key;

    Place where() const { return c.place(deck, key); }
    QString who() const {
        return QStringLiteral("Card ") + QString::number(number) + QStringLiteral(" of ") +
               deck.words();
    }
    void add(Severity severity, const QString& message) const {
        c.add(severity, where(), who() + message);
    }
};

void checkProperties(const Card& card, QStringView text) {
    qsizetype pairs = 0;
    // Split by hand: a tokenizer costs more than the rest of the card.
    for (qsizetype from = 0, bar = 0; bar >= 0; from = bar + 1) {
        bar = find(text, u'|', from);
        const QStringView pair = text.mid(from, bar < 0 ? -1 : bar - from);
        if (++pairs > 6)
            continue;
        const qsizetype equals = find(pair, u'=');
        if (equals < 0) {
            card.add(
                Severity::Error,
                QStringLiteral(": ") + quoted(pair.toString()) +
                    QStringLiteral(" is no name=value pair; a value holding \"|\" is split there"));
            continue;
        }
        const QStringView name = pair.left(equals);
        if (find(pair, u'=', equals + 1) >= 0)
            card.add(Severity::Error,
                     QStringLiteral(": the value of ") + quoted(name.toString()) +
                         QStringLiteral(" holds \"=\" and is cut there on reading"));
        if (!card.c.hasProperty(name))
            card.add(Severity::Warning,
                     QStringLiteral(" has a value for ") + quoted(name.toString()) +
                         QStringLiteral(", a property that stands in no property list"));
    }
    if (pairs > 6)
        card.add(Severity::Warning,
                 QStringLiteral(" has ") + QString::number(pairs) +
                     QStringLiteral(" property values; only the first six are read"));
}

// Gives the copies the card adds to the deck.
int checkCard(Context& c, const Deck& deck, int number, const QString& key) {
    const Card card{c, deck, number, key};
    const QString line = c.read(deck.section, card.key);
    // Field 1 is the entry, field 3 the property text; field 2 stays empty.
    const qsizetype comma = line.indexOf(u',');
    const QStringView first = QStringView(line).left(comma < 0 ? line.size() : comma);
    if (first.isEmpty()) {
        card.add(Severity::Error, QStringLiteral(" has no image"));
        return 0;
    }
    const qsizetype commas = comma < 0 ? 0 : std::count(line.cbegin(), line.cend(), u',');
    if (commas != 0 && (commas != 2 || line.at(comma + 1) != u','))
        card.add(Severity::Error,
                 QStringLiteral(" holds a \",\" in its image name or in a property "
                                "value; the line is cut there on reading"));
    const Entry entry = readEntry(first);
    if (entry.copies < 1 || entry.copies > kMaxCopies)
        card.add(Severity::Error, QStringLiteral(": the copies in ") + quoted(first.toString()) +
                                      QStringLiteral(" read as ") +
                                      (entry.copies < 1 ? QString::number(entry.copies)
                                                        : QStringLiteral("more than 32767")) +
                                      QStringLiteral("; a card has 1 to 32767 copies"));
    const ImageLookup image = c.lookUpImage(entry.name);
    if (image.state != ImageState::Found)
        c.reportImage(image, entry.name, card.where(), card.who());
    if (const qsizetype second = commas >= 2 ? line.indexOf(u',', comma + 1) : -1; second >= 0) {
        const qsizetype third = line.indexOf(u',', second + 1);
        const QStringView properties =
            QStringView(line).mid(second + 1, third < 0 ? -1 : third - second - 1);
        if (!properties.isEmpty())
            checkProperties(card, properties);
    }
    return std::clamp(entry.copies, 0, kMaxCopies);
}

void checkDeal(Context& c, const Deck& deck, qint64 copies) {
    const QString text = c.read(deck.section, QStringLiteral("deal"));
    const Place where = c.place(deck, QStringLiteral("deal"));
    const auto deal = wholeNumber(text);
    if (!deal) {
        c.add(Severity::Error, where,
              QStringLiteral("The cards to deal of ") + deck.words() + QStringLiteral(" are ") +
                  (text.isEmpty() ? QStringLiteral("empty") : quoted(text)) +
                  QStringLiteral(", not a whole number"));
        return;
    }
    const int hands = deck.common ? std::max(c.players, 1) : 1;
    if (*deal * hands > copies)
        c.add(Severity::Error, where,
              deck.words().left(1).toUpper() + deck.words().mid(1) + QStringLiteral(" deals ") +
                  QString::number(*deal) +
                  (deck.common ? QStringLiteral(" cards to each of ") + QString::number(hands) +
                                     QStringLiteral(" players")
                               : QStringLiteral(" cards")) +
                  QStringLiteral(" but holds ") + QString::number(copies));
}

void checkDeck(Context& c, const Deck& deck) {
    const QString Words = deck.words().left(1).toUpper() + deck.words().mid(1);
    if (!c.index.section(deck.section)) {
        // Point at the count that put the deck in use.
        Place where = c.place(deck);
        where.line =
            deck.common
                ? c.index.lineOf(game::section::game(), QStringLiteral("common_decks"))
                : c.index.lineOf(game::section::player(deck.player), QStringLiteral("decks"));
        c.add(Severity::Warning, where,
              Words + QStringLiteral(" is in use but has never been saved: it has no cards"));
        return;
    }
    for (const auto& [key, what] :
         {std::pair{QStringLiteral("img_back"), QStringLiteral("back")},
          std::pair{QStringLiteral("img_discard"), QStringLiteral("discard")}}) {
        const QString image = c.read(deck.section, key);
        if (image.isEmpty())
            c.add(Severity::Warning, c.place(deck, key),
                  Words + QStringLiteral(" has no ") + what + QStringLiteral(" image"));
        else
            c.checkImage(image, c.place(deck, key),
                         QStringLiteral("The ") + what + QStringLiteral(" image of ") +
                             deck.words());
    }

    const QString sizeText = c.read(deck.section, QStringLiteral("decksize"));
    const auto size = wholeNumber(sizeText);
    if (!sizeText.isEmpty() && !size)
        c.add(Severity::Error, c.place(deck, QStringLiteral("decksize")),
              QStringLiteral("The size of ") + deck.words() + QStringLiteral(" is ") +
                  quoted(sizeText) + QStringLiteral(", not a whole number"));
    const int cards = std::clamp<int>(conv::CInt(conv::Val(sizeText)), 0, kMaxCopies);
    if (cards > game::MaxDeckRows)
        c.add(Severity::Error, c.place(deck, QStringLiteral("decksize")),
              QStringLiteral("The size of ") + deck.words() + QStringLiteral(" is ") +
                  QString::number(cards) + QStringLiteral(", more than the ") +
                  QString::number(game::MaxDeckRows) + QStringLiteral(" cards a deck can hold"));
    int present = 0;
    int firstMissing = 0;
    qint64 copies = 0;
    const LineIndex::Section& lines = *c.index.section(deck.section);
    QString spare;
    for (int card = 1; card <= cards; ++card) {
        const QString& key = cardKey(card, spare);
        if (LineIndex::hasFoldedKey(lines, key)) {
            ++present;
            copies += checkCard(c, deck, card, key);
        } else if (firstMissing == 0) {
            firstMissing = card;
        }
    }
    if (present < cards)
        c.add(Severity::Error, c.place(deck, QStringLiteral("decksize")),
              QStringLiteral("The size of ") + deck.words() + QStringLiteral(" is ") +
                  QString::number(cards) + QStringLiteral(" but only ") + QString::number(present) +
                  QStringLiteral(" card lines are present (the first missing is card") +
                  QString::number(firstMissing) +
                  QStringLiteral("): the wizard shows empty cards"));
    checkDeal(c, deck, copies);
}

} // namespace

void checkDecks(Context& c) {
    for (int d = 1; d <= c.commonDecks; ++d)
        checkDeck(c, {true, 0, d, game::section::common(d)});
    for (int p = 1; p <= c.players; ++p) {
        for (int d = 1; d <= c.playerDecks[p]; ++d)
            checkDeck(c, {false, p, d, game::section::playerDeck(d, p)});
    }
}

} // namespace check::detail
