// What an import would do, in words and as JSON, and the sheet that an import
// reads back unchanged.
#include "sheet/Import.h"

#include "game/CardEntry.h"
#include "sheet/PropertyText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringBuilder>

#include <algorithm>

namespace sheet {

namespace {

QString quoted(const QString& text) {
    return QLatin1Char('"') % text % QLatin1Char('"');
}

QString changesText(const std::vector<CellChange>& changes, bool add) {
    QStringList parts;
    for (const CellChange& c : changes) {
        if (add)
            parts.append(c.column % QLatin1Char(' ') % quoted(c.after));
        else if (c.after.isEmpty())
            parts.append(c.column % QLatin1Char(' ') % quoted(c.before) %
                         QStringLiteral(" removed"));
        else
            parts.append(c.column % QLatin1Char(' ') % quoted(c.before) % QStringLiteral(" -> ") %
                         quoted(c.after));
    }
    return parts.join(QStringLiteral(", "));
}

QString rowText(const RowPlan& row) {
    const QString where = QStringLiteral("line %1: ").arg(row.line);
    switch (row.kind) {
    case RowPlan::Add: {
        const QString detail = changesText(row.changes, true);
        return where % QStringLiteral("add ") % row.image %
               (detail.isEmpty() ? QString() : QStringLiteral(": ") % detail);
    }
    case RowPlan::Change:
        return where % QStringLiteral("change ") % row.image % QStringLiteral(": ") %
               changesText(row.changes, false);
    case RowPlan::Remove:
        return QStringLiteral("remove ") % row.image %
               QStringLiteral(" (row %1 of the deck)").arg(row.deckRow + 1);
    case RowPlan::Unchanged:
        break;
    }
    return {};
}

QString refusalText(const Refusal& r) {
    QString text = QStringLiteral("line %1: refused").arg(r.line);
    if (!r.image.isEmpty())
        text += QStringLiteral(": ") % r.image;
    if (!r.column.isEmpty())
        text += QStringLiteral(": ") % r.column;
    return text % QStringLiteral(": ") % r.reason;
}

const char* kindName(RowPlan::Kind kind) {
    switch (kind) {
    case RowPlan::Add:
        return "add";
    case RowPlan::Change:
        return "change";
    case RowPlan::Remove:
        return "remove";
    case RowPlan::Unchanged:
        break;
    }
    return "unchanged";
}

} // namespace

QString previewText(const ImportPlan& plan) {
    if (!plan.error.isEmpty())
        return QStringLiteral("refused: ") % plan.error % QLatin1Char('\n');
    // Rows and refusals by the line they come from, so that a user reads the
    // file's order; removes stand apart at the end.
    std::vector<std::pair<int, QString>> lines;
    QStringList removes;
    for (const RowPlan& row : plan.rows) {
        if (row.kind == RowPlan::Remove)
            removes.append(rowText(row));
        else if (row.kind != RowPlan::Unchanged)
            lines.emplace_back(row.line, rowText(row));
    }
    for (const Refusal& r : plan.refused)
        lines.emplace_back(r.line, refusalText(r));
    std::stable_sort(lines.begin(), lines.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QString out;
    for (const auto& [line, text] : lines)
        out += text % QLatin1Char('\n');
    for (const QString& text : removes)
        out += text % QLatin1Char('\n');
    out += QStringLiteral("%1 to add, %2 to change, %3 unchanged, %4 to remove, %5 refused\n")
               .arg(plan.added())
               .arg(plan.changed())
               .arg(plan.unchanged())
               .arg(plan.removed())
               .arg(plan.refused.size());
    return out;
}

QByteArray previewJson(const ImportPlan& plan) {
    QJsonObject doc;
    if (!plan.error.isEmpty()) {
        doc.insert(QStringLiteral("error"), plan.error);
        return QJsonDocument(doc).toJson();
    }
    QJsonArray rows;
    for (const RowPlan& row : plan.rows) {
        QJsonArray changes;
        for (const CellChange& c : row.changes)
            changes.append(QJsonObject{{QStringLiteral("column"), c.column},
                                       {QStringLiteral("before"), c.before},
                                       {QStringLiteral("after"), c.after}});
        rows.append(QJsonObject{{QStringLiteral("kind"), QLatin1String(kindName(row.kind))},
                                {QStringLiteral("line"), row.line},
                                {QStringLiteral("deckRow"), row.deckRow},
                                {QStringLiteral("image"), row.image},
                                {QStringLiteral("entry"), row.entry},
                                {QStringLiteral("props"), row.props},
                                {QStringLiteral("changes"), changes}});
    }
    QJsonArray refused;
    for (const Refusal& r : plan.refused)
        refused.append(QJsonObject{{QStringLiteral("line"), r.line},
                                   {QStringLiteral("image"), r.image},
                                   {QStringLiteral("column"), r.column},
                                   {QStringLiteral("reason"), r.reason}});
    doc.insert(QStringLiteral("added"), plan.added());
    doc.insert(QStringLiteral("changed"), plan.changed());
    doc.insert(QStringLiteral("unchanged"), plan.unchanged());
    doc.insert(QStringLiteral("removed"), plan.removed());
    doc.insert(QStringLiteral("rows"), rows);
    doc.insert(QStringLiteral("refused"), refused);
    return QJsonDocument(doc).toJson();
}

QByteArray exportCsv(const DeckContent& deck, const QStringList& columns) {
    QStringList header{QStringLiteral("image"), QStringLiteral("copies")};
    header += columns;
    std::vector<QStringList> rows;
    rows.reserve(deck.rows.size());
    for (const DeckRow& row : deck.rows) {
        const CardEntry entry = readCardEntry(row.entry);
        QStringList cells{entry.name, QString::number(entry.count)};
        for (const QString& column : columns)
            cells.append(valueOf(row.props, column));
        rows.push_back(std::move(cells));
    }
    return writeCsv(header, rows);
}

} // namespace sheet
