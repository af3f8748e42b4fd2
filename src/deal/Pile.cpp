#include "deal/Pile.h"

#include "game/CardEntry.h"
#include "game/Conversions.h"
#include "sheet/PropertyText.h"

#include <QSet>

#include <cmath>

namespace deal {

namespace {

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString rowName(int deckRow, const QString& entry) {
    return QStringLiteral("Row %1 %2").arg(deckRow + 1).arg(quoted(entry));
}

} // namespace

Pile pileOf(const sheet::DeckContent& deck) {
    Pile pile;
    pile.rows.reserve(deck.rows.size());
    for (std::size_t i = 0; i < deck.rows.size(); ++i) {
        const int r = static_cast<int>(i);
        const sheet::DeckRow& row = deck.rows[i];
        const CardEntryParts parts = cardEntryParts(row.entry);
        if (parts.name.isEmpty()) {
            pile.notes.append(rowName(r, row.entry) + QStringLiteral(" names no image: no card."));
            continue;
        }
        const qint16 copies = conv::CInt(parts.copies);
        if (copies < 1) {
            pile.notes.append(rowName(r, row.entry) +
                              QStringLiteral(" has %1 copies: no card.").arg(copies));
            continue;
        }
        if (parts.copies >= 32767.5 || std::isnan(parts.copies))
            pile.notes.append(rowName(r, row.entry) +
                              QStringLiteral(" asks for more copies than a row holds: 32767."));
        pile.rows.push_back({r, parts.name.toString(), row.props, copies});
        pile.total += copies;
    }
    if (pile.total == 0)
        pile.notes.prepend(QStringLiteral("The deck has no cards: the pile is empty."));
    return pile;
}

int readHands(const QString& text, QStringList& notes) {
    const int n = conv::CInt(conv::Val(text));
    if (n < 1) {
        if (!text.trimmed().isEmpty())
            notes.append(QStringLiteral("Players %1 is no number from 1 to %2: one hand.")
                             .arg(quoted(text))
                             .arg(MaxHands));
        return 1;
    }
    if (n > MaxHands) {
        notes.append(QStringLiteral("Players %1 is more than %2: %2 hands.")
                         .arg(quoted(text))
                         .arg(MaxHands));
        return MaxHands;
    }
    return n;
}

int readHandSize(const QString& text, QStringList& notes) {
    const double value = conv::Val(text);
    const int n = conv::CInt(value);
    if (n > 0)
        return n;
    if (n < 0)
        notes.append(
            QStringLiteral("Cards to deal %1 is below 0: no cards dealt.").arg(quoted(text)));
    else if (value == 0 && !text.trimmed().isEmpty() &&
             !text.trimmed().startsWith(QLatin1Char('0')))
        notes.append(
            QStringLiteral("Cards to deal %1 is no number: no cards dealt.").arg(quoted(text)));
    return 0;
}

QStringList valueNames(const Pile& pile, const QStringList& columns) {
    QStringList names;
    QSet<QString> seen;
    const auto take = [&](const QString& name) {
        if (!name.isEmpty() && !seen.contains(name)) {
            seen.insert(name);
            names.append(name);
        }
    };
    for (const QString& c : columns)
        take(c);
    for (const PileRow& row : pile.rows) {
        // Only the pairs the file's readers look at.
        const QStringList pairs = row.props.split(QLatin1Char('|'));
        for (qsizetype p = 0; p < pairs.size() && p < sheet::MaxPairs; ++p)
            take(pairs[p].section(QLatin1Char('='), 0, 0));
    }
    return names;
}

} // namespace deal
