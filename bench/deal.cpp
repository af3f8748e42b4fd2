// The deal at the format's limits: the odds table of a 200-row deck of 2,000
// cards with 24 property columns, of rows of 32,767 copies each (checked
// against a product formula), and a deal of six hands of ten with their
// pictures from the cache.

#include "GuiBenchMain.h"
#include "deal/Deal.h"
#include "deal/Odds.h"
#include "images/Preview.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cmath>

namespace {

sheet::DeckContent deckOf(int copies, QStringList* columns) {
    sheet::DeckContent deck;
    for (int c = 0; c < 24; ++c)
        columns->append(QStringLiteral("P%1").arg(c));
    for (int r = 0; r < 200; ++r) {
        QStringList pairs;
        for (int p = 0; p < 6; ++p)
            pairs.append(QStringLiteral("P%1=v%2").arg((r + p * 4) % 24).arg(r % (3 + p)));
        deck.rows.push_back(
            {QStringLiteral("(x%1)card%2.bmp").arg(copies).arg(r, 3, 10, QLatin1Char('0')),
             pairs.join(QLatin1Char('|'))});
    }
    return deck;
}

void OddsTable200Rows2000Cards24Columns(benchmark::State& state) {
    QStringList columns;
    const deal::Pile pile = deal::pileOf(deckOf(10, &columns));
    std::size_t rows = 0;
    for (auto _ : state) {
        const deal::OddsTable table = deal::oddsTable(pile, columns, 10, 1);
        rows = table.rows.size();
        benchmark::DoNotOptimize(table);
    }
    state.SetLabel(QStringLiteral("goal: 16 ms; %1 rows").arg(rows).toStdString());
}
BENCHMARK(OddsTable200Rows2000Cards24Columns)->Unit(benchmark::kMillisecond);

void OddsTableOfRowsOf32767Copies(benchmark::State& state) {
    QStringList columns;
    const deal::Pile pile = deal::pileOf(deckOf(32767, &columns));
    const int hand = static_cast<int>(state.range(0));
    deal::OddsTable table;
    for (auto _ : state) {
        table = deal::oddsTable(pile, columns, hand, 1);
        benchmark::DoNotOptimize(table);
    }
    // One card's row: P(none) = prod (T - K - i) / (T - i), found apart.
    const long double T = 200.0L * 32767, K = 32767;
    long double none = 1;
    for (int i = 0; i < hand; ++i)
        none *= (T - K - i) / (T - i);
    const long double error = std::fabs(table.rows[0].chance.atLeast - (1 - none));
    if (error > 1e-12L)
        state.SkipWithError("the odds are not exact");
    state.SetLabel(
        QStringLiteral("goal: 50 ms; error %1").arg(double(error), 0, 'g', 3).toStdString());
}
BENCHMARK(OddsTableOfRowsOf32767Copies)->Arg(10)->Arg(5000)->Unit(benchmark::kMillisecond);

void Deal6HandsOf10From2000CardsPicturesCached(benchmark::State& state) {
    QTemporaryDir dir;
    QImage picture(250, 350, QImage::Format_RGB32);
    for (int r = 0; r < 200; ++r) {
        picture.fill(QColor::fromHsv(r % 360, 160, 200));
        picture.save(dir.filePath(QStringLiteral("card%1.bmp").arg(r, 3, 10, QLatin1Char('0'))));
    }
    QStringList columns;
    const deal::Pile pile = deal::pileOf(deckOf(10, &columns));
    auto& cache = images::PreviewCache::instance();
    const QSize thumb(40, 60);
    for (const deal::PileRow& row : pile.rows)
        cache.request(dir.filePath(row.name), thumb);
    cache.waitIdle();
    quint64 seed = 1;
    int missing = 0;
    for (auto _ : state) {
        const deal::Deal dealt(pile, 6, 10, seed++);
        for (const auto& hand : dealt.hands())
            for (int row : hand)
                missing +=
                    cache
                        .request(dir.filePath(pile.rows[static_cast<std::size_t>(row)].name), thumb)
                        .isNull();
    }
    if (missing > 0)
        state.SkipWithError("pictures were not in the cache");
    state.SetLabel("goal: 16 ms");
}
BENCHMARK(Deal6HandsOf10From2000CardsPicturesCached)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_GUI_BENCHMARK_MAIN()
