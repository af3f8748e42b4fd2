// Tables, and what is dropped on a control: files from outside, rows of
// another list of the program.

#include "tools/scenario/Runner.h"

#include "runtime/Controls.h"
#include "runtime/Table.h"

#include <QDir>

namespace scenario {
void Runner::pickTableRow(const Statement& s) {
    rt::Control* c = focusFor(s);
    auto* table = dynamic_cast<rt::Table*>(c);
    if (!table)
        return;
    const int row = s.row.value_or(-1);
    if (!s.row || row < 0 || row >= table->Rows()) {
        fail(s,
             s.row
                 ? QStringLiteral("expected a row %1 in %2, found %3 rows")
                       .arg(row)
                       .arg(s.ref.controlName())
                       .arg(table->Rows())
                 : QStringLiteral("%1 is a table: pick it by row number").arg(s.ref.controlName()));
        return;
    }
    table->userPick(row);
}

void Runner::editCell(const Statement& s) {
    if (!reachable(s))
        return;
    auto* table = dynamic_cast<rt::Table*>(control(s));
    if (!table) {
        if (!m_failed)
            fail(s, QStringLiteral("%1 is no table").arg(s.ref.controlName()));
        return;
    }
    const int row = s.ref.propIndex, col = s.ref.propIndex2;
    if (row >= table->Rows() || col >= table->Cols()) {
        fail(s, QStringLiteral("expected a cell (%1,%2) in %3, found %4 rows and %5 columns")
                    .arg(row)
                    .arg(col)
                    .arg(s.ref.controlName())
                    .arg(table->Rows())
                    .arg(table->Cols()));
        return;
    }
    if (!table->cellEditable(row, col)) {
        fail(s, QStringLiteral("expected cell (%1,%2) of %3 to take typing, found it read-only")
                    .arg(row)
                    .arg(col)
                    .arg(s.ref.controlName()));
        return;
    }
    if (!(table = dynamic_cast<rt::Table*>(focusFor(s))))
        return;
    table->setCurrentCell(row, col);
    table->userEditCell(row, col, s.value.text);
}

void Runner::dropFiles(const Statement& s) {
    if (!reachable(s))
        return;
    rt::Control* c = control(s);
    if (!c)
        return;
    if (!c->FilesDropped) {
        fail(s, QStringLiteral("expected %1 to take dropped files, found that it takes none")
                    .arg(s.ref.controlName()));
        return;
    }
    if (!(c = focusFor(s)))
        return;
    QStringList paths;
    for (const QString& p : s.paths)
        paths << (QDir::isAbsolutePath(p) ? p : m_appPath + QLatin1Char('/') + p);
    c->userDropFiles(paths);
}

void Runner::dragRow(const Statement& s) {
    Statement onto = s;
    onto.ref = s.target;
    if (!reachable(s) || !reachable(onto))
        return;
    rt::Control* from = control(s);
    rt::Control* to = from ? control(onto) : nullptr;
    if (!to)
        return;
    int rows = -1;
    if (const auto* list = dynamic_cast<rt::ListControl*>(from))
        rows = list->ListCount();
    else if (const auto* table = dynamic_cast<rt::Table*>(from))
        rows = table->Rows();
    const int row = *s.row;
    if (rows < 0) {
        fail(s, QStringLiteral("%1 is no list").arg(s.ref.controlName()));
    } else if (row < 0 || row >= rows) {
        fail(s, QStringLiteral("expected a row %1 in %2, found %3 rows")
                    .arg(row)
                    .arg(s.ref.controlName())
                    .arg(rows));
    } else if (!to->RowsDropped) {
        fail(s, QStringLiteral("expected %1 to take dropped rows, found that it takes none")
                    .arg(s.target.controlName()));
    } else if ((to = focusFor(onto))) {
        // Validate on the way may have taken the source list away.
        if (!(from = control(s, true)))
            fail(s, QStringLiteral("%1 went away before the drop").arg(s.ref.controlName()));
        else
            to->userDropRows(from, {row});
    }
}

} // namespace scenario
