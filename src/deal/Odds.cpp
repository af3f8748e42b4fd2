#include "deal/Odds.h"

#include "game/Conversions.h"
#include "sheet/PropertyText.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringBuilder>

#include <algorithm>

namespace deal {

namespace {

// Terms this far below the likeliest one add nothing a probability to nine
// places can show, and a hand of thousands of cards need not visit them all.
constexpr long double Negligible = 1e-40L;

long double clamp01(long double p) {
    return std::clamp(p, 0.0L, 1.0L);
}

} // namespace

Chance hypergeometric(qint64 pile, qint64 marked, qint64 hand, qint64 atLeast) {
    const qint64 T = std::max<qint64>(pile, 0);
    const qint64 K = std::clamp<qint64>(marked, 0, T);
    const qint64 N = std::clamp<qint64>(hand, 0, T);
    Chance c;
    if (T == 0 || N == 0) {
        c.atLeast = atLeast <= 0 ? 1 : 0;
        c.exactly = atLeast == 0 ? 1 : 0;
        return c;
    }
    c.expected = static_cast<long double>(N) * K / T;
    const qint64 lo = std::max<qint64>(0, N - (T - K));
    const qint64 hi = std::min(N, K);
    // Each term relative to the likeliest, from the ratio of neighbours: no
    // factorials, so a pile of millions stays exact to the last places, and
    // the sum of all the terms is the divisor that makes them probabilities.
    const qint64 mode = std::clamp<qint64>((N + 1) * (K + 1) / (T + 2), lo, hi);
    long double total = 0, upper = 0, exact = 0;
    const auto add = [&](qint64 x, long double term) {
        total += term;
        if (x >= atLeast)
            upper += term;
        if (x == atLeast)
            exact = term;
    };
    add(mode, 1.0L);
    long double term = 1.0L;
    for (qint64 x = mode; x < hi && term > Negligible; ++x) {
        term *= static_cast<long double>(K - x) * (N - x) /
                (static_cast<long double>(x + 1) * (T - K - N + x + 1));
        add(x + 1, term);
    }
    term = 1.0L;
    for (qint64 x = mode; x > lo && term > Negligible; --x) {
        term *= static_cast<long double>(x) * (T - K - N + x) /
                (static_cast<long double>(K - x + 1) * (N - x + 1));
        add(x - 1, term);
    }
    c.atLeast = atLeast <= lo ? 1.0L : clamp01(upper / total);
    c.exactly = clamp01(exact / total);
    return c;
}

OddsTable oddsTable(const Pile& pile, const QStringList& columns, qint64 hand, qint64 atLeast) {
    OddsTable table;
    table.notes = pile.notes;
    table.pile = pile.total;
    table.atLeast = atLeast;
    table.hand = std::clamp<qint64>(hand, 0, pile.total);
    if (hand > pile.total && pile.total > 0)
        table.notes.append(
            QStringLiteral("A hand of %1 cards from a pile of %2: the odds are those "
                           "of the whole pile in one hand.")
                .arg(hand)
                .arg(pile.total));
    if (table.hand == 0 && pile.total > 0)
        table.notes.append(QStringLiteral("A hand of no cards holds none of them."));

    QHash<QString, int> seen;
    for (const PileRow& row : pile.rows)
        ++seen[row.name];
    for (std::size_t i = 0; i < pile.rows.size(); ++i) {
        const PileRow& row = pile.rows[i];
        OddsRow odds;
        odds.kind = OddsRow::Card;
        odds.what = seen.value(row.name) > 1
                        ? row.name % QStringLiteral(" (row %1)").arg(row.deckRow + 1)
                        : row.name;
        odds.pileRows = {static_cast<int>(i)};
        odds.copies = row.copies;
        table.rows.push_back(std::move(odds));
    }
    for (const QString& name : valueNames(pile, columns)) {
        std::vector<OddsRow> values;
        QHash<QString, std::size_t> index;
        for (std::size_t i = 0; i < pile.rows.size(); ++i) {
            const QString value = sheet::valueOf(pile.rows[i].props, name);
            if (value.isEmpty())
                continue;
            auto it = index.find(value);
            if (it == index.end()) {
                it = index.insert(value, values.size());
                values.push_back({OddsRow::Value, name % QStringLiteral(" = ") % value, {}, 0, {}});
            }
            OddsRow& row = values[*it];
            row.pileRows.push_back(static_cast<int>(i));
            row.copies += pile.rows[i].copies;
        }
        for (OddsRow& row : values)
            table.rows.push_back(std::move(row));
    }
    for (OddsRow& row : table.rows)
        row.chance = hypergeometric(table.pile, row.copies, table.hand, table.atLeast);
    return table;
}

OddsRow groupRow(const Pile& pile, std::vector<int> pileRows, const OddsTable& table) {
    std::sort(pileRows.begin(), pileRows.end());
    pileRows.erase(std::unique(pileRows.begin(), pileRows.end()), pileRows.end());
    OddsRow row;
    row.kind = OddsRow::Group;
    QStringList names;
    for (int r : pileRows) {
        if (r < 0 || r >= static_cast<int>(pile.rows.size()))
            continue;
        row.pileRows.push_back(r);
        row.copies += pile.rows[static_cast<std::size_t>(r)].copies;
        names.append(pile.rows[static_cast<std::size_t>(r)].name);
    }
    row.what = names.join(QStringLiteral(" + "));
    row.chance = hypergeometric(table.pile, row.copies, table.hand, table.atLeast);
    return row;
}

qint64 readAtLeast(const QString& text, QStringList& notes) {
    if (text.trimmed().isEmpty())
        return 1;
    const qint64 k = conv::CInt(conv::Val(text));
    if (k < 0) {
        notes.append(QStringLiteral("At least \"%1\" is below 0: at least 0.").arg(text));
        return 0;
    }
    return k;
}

QStringList oddsHeader(const OddsTable& table) {
    return {QStringLiteral("Cards"), QStringLiteral("In pile"),
            QStringLiteral("At least %1").arg(table.atLeast),
            QStringLiteral("Exactly %1").arg(table.atLeast), QStringLiteral("Expected")};
}

QStringList oddsCells(const OddsRow& row) {
    return {row.what, QString::number(row.copies),
            QString::number(static_cast<double>(row.chance.atLeast), 'f', 9),
            QString::number(static_cast<double>(row.chance.exactly), 'f', 9),
            QString::number(static_cast<double>(row.chance.expected), 'f', 6)};
}

QString oddsText(const OddsTable& table) {
    QString out = QStringLiteral("pile %1 cards, hand %2, at least %3\n")
                      .arg(table.pile)
                      .arg(table.hand)
                      .arg(table.atLeast);
    out += oddsHeader(table).join(QLatin1Char('\t')) % QLatin1Char('\n');
    for (const OddsRow& row : table.rows)
        out += oddsCells(row).join(QLatin1Char('\t')) % QLatin1Char('\n');
    for (const QString& note : table.notes)
        out += QStringLiteral("note: ") % note % QLatin1Char('\n');
    return out;
}

QByteArray oddsJson(const OddsTable& table, const QString& section) {
    static const char* const kinds[] = {"card", "value", "group"};
    QJsonArray rows;
    for (const OddsRow& row : table.rows) {
        rows.append(QJsonObject{
            {QStringLiteral("kind"), QLatin1String(kinds[row.kind])},
            {QStringLiteral("what"), row.what},
            {QStringLiteral("copies"), static_cast<double>(row.copies)},
            {QStringLiteral("atLeast"), static_cast<double>(row.chance.atLeast)},
            {QStringLiteral("exactly"), static_cast<double>(row.chance.exactly)},
            {QStringLiteral("expected"), static_cast<double>(row.chance.expected)},
        });
    }
    const QJsonObject root{
        {QStringLiteral("section"), section},
        {QStringLiteral("pile"), static_cast<double>(table.pile)},
        {QStringLiteral("hand"), static_cast<double>(table.hand)},
        {QStringLiteral("atLeastK"), static_cast<double>(table.atLeast)},
        {QStringLiteral("rows"), rows},
        {QStringLiteral("notes"), QJsonArray::fromStringList(table.notes)},
    };
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

} // namespace deal
