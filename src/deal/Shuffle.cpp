#include "deal/Shuffle.h"

#include <QRandomGenerator>

#include <algorithm>
#include <limits>

namespace deal {

Seed readSeed(const QString& text) {
    const QString t = text.trimmed();
    bool ok = false;
    const bool digits = !t.isEmpty() && std::all_of(t.begin(), t.end(), [](QChar c) {
        return c.isDigit() && c.unicode() < 128;
    });
    const quint64 number = digits ? t.toULongLong(&ok) : 0;
    if (ok)
        return {number, {}};
    quint64 hash = 14695981039346656037ull;
    for (const char byte : t.toUtf8()) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 1099511628211ull;
    }
    return {hash, QStringLiteral("Seed \"%1\" is no number from 0 to %2: the deal is that of %3.")
                      .arg(t)
                      .arg(std::numeric_limits<quint64>::max())
                      .arg(hash)};
}

quint64 freshSeed() {
    // Short enough to read out and type again.
    return QRandomGenerator::global()->bounded(quint64{1000000000});
}

quint64 below(std::mt19937_64& generator, quint64 n) {
    const quint64 max = std::numeric_limits<quint64>::max();
    // 2^64 mod n: the outputs from the last whole multiple of n up would
    // favour the small numbers.
    const quint64 rest = (max % n + 1) % n;
    for (;;) {
        const quint64 x = generator();
        if (rest == 0 || x <= max - rest)
            return x % n;
    }
}

Shuffle::Shuffle(qint64 cards, quint64 seed)
    : m_generator(seed), m_cards(std::max<qint64>(cards, 0)) {}

qint64 Shuffle::at(qint64 place) const {
    const auto it = m_moved.find(place);
    return it == m_moved.end() ? place : it->second;
}

qint64 Shuffle::next() {
    if (m_taken >= m_cards)
        return -1;
    const qint64 i = m_taken++;
    const qint64 j = i + static_cast<qint64>(below(m_generator, static_cast<quint64>(m_cards - i)));
    const qint64 card = at(j);
    if (j != i)
        m_moved[j] = at(i);
    m_moved.erase(i);
    return card;
}

} // namespace deal
