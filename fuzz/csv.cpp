// Feeds arbitrary bytes to the CSV reader and the import plan over a small
// deck, and checks what must hold for any file: a refusal says why, every row
// points at a line that exists, and applying the plan keeps the deck whole.
#include "sheet/Csv.h"
#include "sheet/Import.h"

#include <cstdio>
#include <cstdlib>

namespace {

void expect(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const sheet::CsvRead csv = sheet::readCsv(bytes);
    expect(csv.ok || !csv.error.isEmpty(), "a refusal without a reason");
    expect(csv.table.rows.size() == csv.table.lines.size(), "rows and lines disagree");
    expect(csv.table.rows.size() <= sheet::MaxCsvRows, "more rows than the limit");

    static const sheet::DeckContent deck{
        QStringLiteral("back.bmp"),
        QString(),
        QStringLiteral("5"),
        {{QStringLiteral("(x4)knight.bmp"), QStringLiteral("Value=3|Colour=red")},
         {QStringLiteral("queen.bmp"), QString()},
         {QStringLiteral("(x2)king.bmp"), QStringLiteral("o1=1|o2=2|o3=3|o4=4|o5=5")}}};
    static const QStringList columns{QStringLiteral("Value"), QStringLiteral("Colour")};
    static const QStringList images{QStringLiteral("ace.gif"), QStringLiteral("knight.bmp")};
    const sheet::ImportPlan plan = sheet::planImport(deck, columns, csv, images, size % 2 == 1);
    expect(csv.ok || !plan.error.isEmpty(), "a refused file was planned");
    const int lines = static_cast<int>(bytes.count('\n') + bytes.count('\r')) + 1;
    for (const sheet::RowPlan& row : plan.rows)
        expect(row.line >= 0 && row.line <= lines, "a row points nowhere");
    const sheet::DeckContent after = sheet::applyImport(deck, plan);
    expect(static_cast<int>(after.rows.size()) ==
               static_cast<int>(deck.rows.size()) + plan.added() - plan.removed(),
           "the deck's size does not add up");
    (void)sheet::previewText(plan);
    (void)sheet::previewJson(plan);
    return 0;
}
