// The deck sheet against a deck of the largest size: a 200-row CSV with 24
// property columns planned and previewed, and the deck exported.
#include "sheet/Csv.h"
#include "sheet/Import.h"

#include <benchmark/benchmark.h>

namespace {

struct Sheet {
    sheet::DeckContent deck;
    QStringList columns;
    QStringList images;
    QByteArray csv; // every row changed in copies and in two properties
};

const Sheet& largest() {
    static const Sheet sheet = [] {
        Sheet s;
        for (int c = 0; c < 24; ++c)
            s.columns.append(QStringLiteral("Prop%1").arg(c));
        for (int r = 0; r < 200; ++r) {
            const QString image = QStringLiteral("card%1.bmp").arg(r, 3, 10, QLatin1Char('0'));
            s.images.append(image);
            QStringList pairs;
            for (int p = 0; p < 6; ++p)
                pairs.append(QStringLiteral("Prop%1=v%2").arg((r + p * 4) % 24).arg(r));
            s.deck.rows.push_back({QStringLiteral("(x2)") + image, pairs.join(QLatin1Char('|'))});
        }
        const QByteArray exported = sheet::exportCsv(s.deck, s.columns);
        sheet::CsvRead read = sheet::readCsv(exported);
        for (QStringList& row : read.table.rows) {
            row[1] = QStringLiteral("3");
            for (int c = 2; c < row.size(); ++c) {
                if (!row[c].isEmpty()) {
                    row[c] += QStringLiteral("x");
                    if (c % 2)
                        break;
                }
            }
        }
        s.csv = sheet::writeCsv(read.table.header, read.table.rows);
        return s;
    }();
    return sheet;
}

void ImportPreview200Rows24Columns(benchmark::State& state) {
    const Sheet& s = largest();
    int changed = 0;
    for (auto _ : state) {
        const sheet::ImportPlan plan =
            sheet::planImport(s.deck, s.columns, sheet::readCsv(s.csv), s.images, false);
        benchmark::DoNotOptimize(sheet::previewText(plan));
        changed = plan.changed();
    }
    if (changed != 200)
        state.SkipWithError("the plan did not change every row");
    state.SetLabel("goal: 20 ms");
}
BENCHMARK(ImportPreview200Rows24Columns)->Unit(benchmark::kMillisecond);

void Export200Rows24Columns(benchmark::State& state) {
    const Sheet& s = largest();
    for (auto _ : state)
        benchmark::DoNotOptimize(sheet::exportCsv(s.deck, s.columns));
    state.SetLabel("goal: 10 ms");
}
BENCHMARK(Export200Rows24Columns)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
