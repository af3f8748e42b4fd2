#pragma once
// A deck sheet brought back in: what each row of a CSV file would change in a
// deck, shown before anything is written, and the deck with the accepted
// changes. A row that cannot be taken is refused with its reason; the rest
// still apply.

#include "sheet/Csv.h"
#include "sheet/DeckContent.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace sheet {

struct CellChange {
    QString column;
    QString before, after;
};

struct RowPlan {
    enum Kind { Add, Change, Unchanged, Remove } kind = Unchanged;
    int deckRow = -1; // row index in the deck, -1 for Add
    int line = 0;     // CSV line, 0 for Remove
    QString image;
    std::vector<CellChange> changes; // "copies" first when copies change, then property columns
    QString entry, props;            // the row's new entry and property text
};

struct Refusal {
    int line;
    QString image;
    QString column; // "" = the whole row
    QString reason;
};

struct ImportPlan {
    QString error;             // the file as a whole refused: then nothing else is filled
    std::vector<RowPlan> rows; // in CSV order, Removes last
    std::vector<Refusal> refused;
    int added() const;
    int changed() const;
    int unchanged() const;
    int removed() const;
};

ImportPlan planImport(const DeckContent& deck, const QStringList& columns, const CsvRead& csv,
                      const QStringList& folderImages, bool removeMissing);

// Changes rows in place, adds at the end in CSV order, drops the removed.
DeckContent applyImport(const DeckContent& deck, const ImportPlan& plan);

// One line per add, change, refusal and remove, then a summary line.
QString previewText(const ImportPlan& plan);
QByteArray previewJson(const ImportPlan& plan);

// Header "image", "copies", then `columns`; one row per deck row.
QByteArray exportCsv(const DeckContent& deck, const QStringList& columns);

} // namespace sheet
