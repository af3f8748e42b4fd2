#pragma once
// A grid of cells over a model that the form's code owns. The grid shows and
// selects; what a typed cell becomes is the owner's decision, so an edit goes
// to CellEdit and never into the model by itself.

#include "runtime/Control.h"

#include <functional>
#include <vector>

class QAbstractItemModel;
class QTableView;

namespace rt {

class TableView;

class Table : public Control {
public:
    Table(Form* form, const ControlSpec& spec, QWidget* parent);
    ~Table() override;

    void setModel(QAbstractItemModel* model); // not owned
    QAbstractItemModel* model() const;
    QTableView* view() const;

    int Rows() const;
    int Cols() const;
    // The text shown (DisplayRole), "" outside the grid.
    QString Cell(int row, int col) const;
    QString Header(int col) const;
    // Whether the model lets the user type over the cell.
    bool cellEditable(int row, int col) const;

    // The row holds a selected cell.
    bool Selected(int row) const;
    // Adds the whole row to the selection, or takes it out.
    void setSelected(int row, bool selected);
    std::vector<int> selectedRows() const; // sorted
    int currentRow() const;
    int currentCol() const;
    void setCurrentCell(int row, int col);

    // The user types `text` over a cell and commits it (Enter): CellEdit runs
    // when the text differs from the cell's, and only on a cell that can be
    // edited. The table writes nothing to the model.
    void userEditCell(int row, int col, const QString& text);
    std::function<void(int row, int col, const QString& text)> CellEdit;
    // A click on the row's header: that row alone selected, then Click.
    void userPick(int row);

private:
    friend class CellDelegate;
    friend class TableView;
    // Every committed edit, from the widget's editor or from userEditCell.
    void commitCell(int row, int col, const QString& text);
    TableView* m_view;
    bool m_committing = false; // a handler's message box must not commit twice
};

} // namespace rt
