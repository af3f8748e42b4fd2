#include "sheet/Import.h"

#include "game/CardEntry.h"
#include "game/GameFile.h"
#include "sheet/PropertyText.h"

#include <QHash>
#include <QSet>
#include <QStringBuilder>

#include <algorithm>

namespace sheet {

namespace {

// The longest value the game file's readers give back whole.
constexpr qsizetype MaxLine = 254;

struct Header {
    int image = -1;
    int copies = -1;
    std::vector<std::pair<int, QString>> properties; // CSV column, name as the game spells it
    std::vector<int> unknown;
};

// A cell as the user meant it: blanks trimmed and the export's formula
// escape undone.
QString cellText(const QStringList& row, int column) {
    if (column < 0 || column >= row.size())
        return {};
    QString cell = row[column].trimmed();
    if (cell.size() >= 2 && cell.front() == QLatin1Char('\'')) {
        const QChar c = cell[1];
        if (c == QLatin1Char('=') || c == QLatin1Char('+') || c == QLatin1Char('-') ||
            c == QLatin1Char('@') || c == QLatin1Char('\''))
            cell.remove(0, 1);
    }
    return cell;
}

QString readHeader(const CsvTable& table, const QStringList& columns, Header& header) {
    QHash<QString, QString> byFolded;
    for (const QString& column : columns)
        byFolded.insert(column.toCaseFolded(), column);
    QSet<QString> seen;
    for (int i = 0; i < table.header.size(); ++i) {
        const QString name = table.header[i].trimmed();
        const QString folded = name.toCaseFolded();
        if (!name.isEmpty() && seen.contains(folded))
            return QStringLiteral("The column \"%1\" stands twice in the header").arg(name);
        seen.insert(folded);
        if (folded == QLatin1String("image"))
            header.image = i;
        else if (folded == QLatin1String("copies"))
            header.copies = i;
        else if (byFolded.contains(folded) && !name.isEmpty())
            header.properties.emplace_back(i, byFolded.value(folded));
        else
            header.unknown.push_back(i);
    }
    if (header.image < 0)
        return QStringLiteral("The header has no \"image\" column, which names each row's card");
    // The deck's own column order, whatever order the file has.
    std::stable_sort(header.properties.begin(), header.properties.end(),
                     [&](const auto& a, const auto& b) {
                         return columns.indexOf(a.second) < columns.indexOf(b.second);
                     });
    return {};
}

// A whole number of copies, or -1.
int copiesOf(const QString& text) {
    if (text.isEmpty() || text.size() > 5)
        return -1;
    for (const QChar c : text) {
        if (!c.isDigit() || c.unicode() > 0x7F)
            return -1;
    }
    const int n = text.toInt();
    return n >= 1 && n <= 32767 ? n : -1;
}

const QString kCopiesReason = QStringLiteral("Copies must be a whole number from 1 to 32767");

QString folderRefusal(const QString& image) {
    if (image.contains(QLatin1Char('/')) || image.contains(QLatin1Char('\\')) ||
        image.contains(QLatin1String("..")))
        return QStringLiteral("The image \"%1\" names a file in a folder; a card's image is a bare "
                              "file name in the game's directory")
            .arg(image);
    return imageRefusal(image);
}

class Planner {
public:
    Planner(const DeckContent& deck, const QStringList& columns, const CsvTable& table,
            const QStringList& images, ImportPlan& plan)
        : m_deck(deck), m_columns(columns), m_table(table), m_plan(plan) {
        for (const QString& image : images) {
            m_folder.insert(image);
            m_folderFolded.insert(image.toCaseFolded(), image);
        }
        for (int i = 0; i < static_cast<int>(deck.rows.size()); ++i)
            m_deckRows[cardEntryParts(deck.rows[i].entry).name.trimmed().toString()].push_back(i);
        m_matched.assign(deck.rows.size(), false);
        m_rowCount = static_cast<int>(deck.rows.size());
    }

    void run(const Header& header, bool removeMissing) {
        for (const int column : header.unknown) {
            const QString name = m_table.header[column].trimmed();
            if (name.isEmpty() && !anyCellIn(column))
                continue; // a spreadsheet's trailing empty column
            m_plan.refused.push_back({m_table.headerLine, QString(), name,
                                      QStringLiteral("Unknown column: it is no property of the "
                                                     "game's lists, so its cells are not read")});
        }
        for (std::size_t r = 0; r < m_table.rows.size(); ++r)
            planRow(header, m_table.rows[r], m_table.lines[r]);
        if (!removeMissing)
            return;
        for (std::size_t d = 0; d < m_deck.rows.size(); ++d) {
            if (m_matched[d])
                continue;
            const DeckRow& row = m_deck.rows[d];
            RowPlan plan;
            plan.kind = RowPlan::Remove;
            plan.deckRow = static_cast<int>(d);
            plan.image = cardEntryParts(row.entry).name.trimmed().toString();
            plan.entry = row.entry;
            plan.props = row.props;
            m_plan.rows.push_back(std::move(plan));
        }
    }

private:
    bool anyCellIn(int column) const {
        return std::any_of(m_table.rows.begin(), m_table.rows.end(), [&](const QStringList& row) {
            return !cellText(row, column).isEmpty();
        });
    }

    void refuse(int line, const QString& image, const QString& column, const QString& reason) {
        m_plan.refused.push_back({line, image, column, reason});
    }

    void planRow(const Header& header, const QStringList& cells, int line) {
        const QString image = cellText(cells, header.image);
        if (image.isEmpty())
            return refuse(line, image, QString(), QStringLiteral("The row has no image name"));
        if (const QString why = folderRefusal(image); !why.isEmpty())
            return refuse(line, image, QString(), why);
        const int seen = m_seen[image]++;
        const std::vector<int>& rows = m_deckRows.value(image);
        RowPlan plan;
        plan.line = line;
        plan.image = image;
        const QString copiesText = cellText(cells, header.copies);
        if (seen < static_cast<int>(rows.size())) {
            plan.deckRow = rows[static_cast<std::size_t>(seen)];
            m_matched[static_cast<std::size_t>(plan.deckRow)] = true;
            const DeckRow& old = m_deck.rows[static_cast<std::size_t>(plan.deckRow)];
            plan.entry = old.entry;
            plan.props = old.props;
            setCopies(plan, copiesText);
        } else {
            if (!rows.empty() || seen > 0)
                return refuse(line, image, QString(),
                              QStringLiteral("Duplicate row: the deck holds %1 row(s) of this "
                                             "image, and this is row %2 of it in the file")
                                  .arg(rows.size())
                                  .arg(seen + 1));
            if (!m_folder.contains(image)) {
                const QString near = m_folderFolded.value(image.toCaseFolded());
                return refuse(line, image, QString(),
                              QStringLiteral("The image is not in the game's image folder") +
                                  (near.isEmpty()
                                       ? QString()
                                       : QStringLiteral(" (it holds \"%1\")").arg(near)));
            }
            if (m_rowCount >= game::MaxDeckRows)
                return refuse(
                    line, image, QString(),
                    QStringLiteral("The deck would hold more than %1 rows").arg(game::MaxDeckRows));
            const int copies = copiesText.isEmpty() ? 1 : copiesOf(copiesText);
            if (copies < 0)
                return refuse(line, image, QStringLiteral("copies"), kCopiesReason);
            plan.kind = RowPlan::Add;
            plan.entry = entryWithCopies(image, QString::number(copies));
            if (copies > 1)
                plan.changes.push_back(
                    {QStringLiteral("copies"), QString(), QString::number(copies)});
            ++m_rowCount;
        }
        setProperties(plan, header, cells);
        if (plan.kind != RowPlan::Add) {
            const DeckRow& old = m_deck.rows[static_cast<std::size_t>(plan.deckRow)];
            plan.kind = plan.entry == old.entry && plan.props == old.props ? RowPlan::Unchanged
                                                                           : RowPlan::Change;
        }
        m_plan.rows.push_back(std::move(plan));
    }

    void setCopies(RowPlan& plan, const QString& text) {
        if (text.isEmpty())
            return;
        const int count = readCardEntry(plan.entry).count;
        // A count the wizard would not write (0, a fraction) stays when the file repeats it.
        if (text == QString::number(count))
            return;
        const int copies = copiesOf(text);
        if (copies < 0)
            return refuse(plan.line, plan.image, QStringLiteral("copies"), kCopiesReason);
        if (copies == count)
            return;
        plan.entry = entryWithCopies(plan.entry, QString::number(copies));
        plan.changes.push_back(
            {QStringLiteral("copies"), QString::number(count), QString::number(copies)});
    }

    void setProperties(RowPlan& plan, const Header& header, const QStringList& cells) {
        QHash<QString, QString> values;
        std::vector<CellChange> changes;
        for (const auto& [column, name] : header.properties) {
            const QString value = cellText(cells, column);
            const QString before = valueOf(plan.props, name);
            if (value == before.trimmed())
                continue;
            if (const QString why = valueRefusal(value); !why.isEmpty()) {
                refuse(plan.line, plan.image, name, why);
                continue;
            }
            values.insert(name, value);
            changes.push_back({name, before, value});
        }
        if (values.isEmpty())
            return;
        QStringList names;
        for (const CellChange& change : changes)
            names.append(change.column);
        const PropsEdit edit = setValues(plan.props, m_columns, values);
        if (!edit.ok)
            return refuse(plan.line, plan.image, names.join(QStringLiteral(", ")), edit.message);
        const qsizetype length = plan.entry.size() + 2 + edit.props.size();
        if (length > MaxLine)
            return refuse(plan.line, plan.image, names.join(QStringLiteral(", ")),
                          QStringLiteral("The card's line would be %1 characters long; the game "
                                         "file's readers cut it at %2")
                              .arg(length)
                              .arg(MaxLine));
        plan.props = edit.props;
        plan.changes.insert(plan.changes.end(), changes.begin(), changes.end());
    }

    const DeckContent& m_deck;
    const QStringList& m_columns;
    const CsvTable& m_table;
    ImportPlan& m_plan;
    QSet<QString> m_folder;
    QHash<QString, QString> m_folderFolded;
    QHash<QString, std::vector<int>> m_deckRows;
    QHash<QString, int> m_seen;
    std::vector<bool> m_matched;
    int m_rowCount = 0;
};

int countOf(const ImportPlan& plan, RowPlan::Kind kind) {
    return static_cast<int>(std::count_if(plan.rows.begin(), plan.rows.end(),
                                          [kind](const RowPlan& r) { return r.kind == kind; }));
}

} // namespace

int ImportPlan::added() const {
    return countOf(*this, RowPlan::Add);
}
int ImportPlan::changed() const {
    return countOf(*this, RowPlan::Change);
}
int ImportPlan::unchanged() const {
    return countOf(*this, RowPlan::Unchanged);
}
int ImportPlan::removed() const {
    return countOf(*this, RowPlan::Remove);
}

ImportPlan planImport(const DeckContent& deck, const QStringList& columns, const CsvRead& csv,
                      const QStringList& folderImages, bool removeMissing) {
    ImportPlan plan;
    if (!csv.ok) {
        plan.error = csv.error.isEmpty() ? QStringLiteral("The file could not be read") : csv.error;
        return plan;
    }
    Header header;
    plan.error = readHeader(csv.table, columns, header);
    if (!plan.error.isEmpty())
        return plan;
    Planner(deck, columns, csv.table, folderImages, plan).run(header, removeMissing);
    return plan;
}

DeckContent applyImport(const DeckContent& deck, const ImportPlan& plan) {
    DeckContent out = deck;
    std::vector<bool> dropped(deck.rows.size(), false);
    const auto valid = [&](int row) {
        return row >= 0 && row < static_cast<int>(deck.rows.size());
    };
    for (const RowPlan& row : plan.rows) {
        if (row.kind == RowPlan::Add)
            out.rows.push_back({row.entry, row.props});
        else if (row.kind == RowPlan::Change && valid(row.deckRow))
            out.rows[static_cast<std::size_t>(row.deckRow)] = {row.entry, row.props};
        else if (row.kind == RowPlan::Remove && valid(row.deckRow))
            dropped[static_cast<std::size_t>(row.deckRow)] = true;
    }
    std::vector<DeckRow> kept;
    kept.reserve(out.rows.size());
    for (std::size_t i = 0; i < out.rows.size(); ++i) {
        if (i >= dropped.size() || !dropped[i])
            kept.push_back(std::move(out.rows[i]));
    }
    out.rows = std::move(kept);
    return out;
}

} // namespace sheet
