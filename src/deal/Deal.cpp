#include "deal/Deal.h"

#include <QStringBuilder>

#include <algorithm>

namespace deal {

Deal::Deal() : m_shuffle(0, 0) {}

Deal::Deal(const Pile& pile, int hands, int handSize, quint64 seed)
    : m_shuffle(pile.total, seed), m_seed(seed) {
    hands = std::clamp(hands, 1, MaxHands);
    handSize = std::max(handSize, 0);
    qint64 sum = 0;
    m_ends.reserve(pile.rows.size());
    for (const PileRow& row : pile.rows)
        m_ends.push_back(sum += row.copies);
    m_hands.resize(static_cast<std::size_t>(hands));
    const qint64 wanted = qint64{hands} * handSize;
    if (wanted > pile.total && pile.total > 0)
        m_notes.append(QStringLiteral("The pile holds %1 cards, fewer than the %2 that %3 hands of "
                                      "%4 need: dealt round the table until it ran out.")
                           .arg(pile.total)
                           .arg(wanted)
                           .arg(hands)
                           .arg(handSize));
    for (int round = 0; round < handSize && m_shuffle.left() > 0; ++round)
        for (int h = 0; h < hands; ++h)
            draw(h);
}

int Deal::rowOf(qint64 card) const {
    return static_cast<int>(std::upper_bound(m_ends.begin(), m_ends.end(), card) - m_ends.begin());
}

bool Deal::draw(int hand) {
    if (hand < 0 || hand >= static_cast<int>(m_hands.size()))
        return false;
    const qint64 card = m_shuffle.next();
    if (card < 0)
        return false;
    m_hands[static_cast<std::size_t>(hand)].push_back(rowOf(card));
    return true;
}

bool Deal::discard(int hand, int position) {
    if (hand < 0 || hand >= static_cast<int>(m_hands.size()))
        return false;
    std::vector<int>& cards = m_hands[static_cast<std::size_t>(hand)];
    if (position < 0 || position >= static_cast<int>(cards.size()))
        return false;
    m_discards.push_back(cards[static_cast<std::size_t>(position)]);
    cards.erase(cards.begin() + position);
    return true;
}

QString dealText(const Pile& pile, const Deal& deal) {
    QString out = QStringLiteral("seed ") % QString::number(deal.seed()) % QLatin1Char('\n');
    for (std::size_t h = 0; h < deal.hands().size(); ++h) {
        QStringList names;
        for (int row : deal.hands()[h])
            names.append(pile.rows[static_cast<std::size_t>(row)].name);
        out += QStringLiteral("hand %1: ").arg(h + 1) % names.join(QStringLiteral(", ")) %
               QLatin1Char('\n');
    }
    out += QStringLiteral("pile: %1 of %2 cards left\n").arg(deal.left()).arg(pile.total);
    for (const QString& note : pile.notes + deal.notes())
        out += QStringLiteral("note: ") % note % QLatin1Char('\n');
    return out;
}

} // namespace deal
