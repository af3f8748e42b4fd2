#include "runtime/Table.h"

#include "runtime/Form.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QKeyEvent>
#include <QMetaProperty>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>

namespace rt {

// The grid as a spreadsheet is used: Enter goes down a row, Tab across and on
// to the next row, and the rows grow with the font when the form is zoomed.
class TableView : public QTableView {
public:
    explicit TableView(QWidget* parent) : QTableView(parent) {}
    Table* owner = nullptr; // gone before the widget

    enum class Step { Down, Next, Previous };
    void step(Step step) {
        const QAbstractItemModel* m = model();
        if (!m || m->rowCount() == 0 || m->columnCount() == 0)
            return;
        const int rows = m->rowCount(), cols = m->columnCount();
        const QModelIndex at = currentIndex();
        int row = at.isValid() ? at.row() : 0, col = at.isValid() ? at.column() : 0;
        if (at.isValid()) {
            if (step == Step::Down) {
                row = std::min(row + 1, rows - 1);
            } else if (step == Step::Next && !(row == rows - 1 && col == cols - 1)) {
                row += (col + 1) / cols;
                col = (col + 1) % cols;
            } else if (step == Step::Previous && !(row == 0 && col == 0)) {
                row -= col == 0 ? 1 : 0;
                col = (col + cols - 1) % cols;
            }
        }
        // Within a selection of several rows the current cell moves and the
        // selection stays, as in a spreadsheet; elsewhere the cell is selected.
        int selected = 0;
        for (const QItemSelectionRange& range : selectionModel()->selection())
            selected += range.height();
        if (at.isValid() && selectionModel()->isSelected(at) && selected > 1)
            selectionModel()->setCurrentIndex(m->index(row, col), QItemSelectionModel::NoUpdate);
        else
            selectionModel()->setCurrentIndex(m->index(row, col),
                                              QItemSelectionModel::ClearAndSelect);
    }

    // Rows and headers at the font's height; columns widen in proportion.
    void fitRowsToFont() {
        const int height = fontMetrics().height() + 6; // room for the editor's frame
        QHeaderView* rows = verticalHeader();
        rows->setMinimumSectionSize(std::min(rows->minimumSectionSize(), height));
        rows->setDefaultSectionSize(height);
        if (m_rowHeight > 0 && height != m_rowHeight) {
            const double ratio = double(height) / m_rowHeight;
            QHeaderView* cols = horizontalHeader();
            cols->setDefaultSectionSize(qRound(cols->defaultSectionSize() * ratio));
            for (int c = 0; model() && c < model()->columnCount(); ++c)
                setColumnWidth(c, std::max(1, qRound(columnWidth(c) * ratio)));
        }
        m_rowHeight = height;
    }

protected:
    bool event(QEvent* event) override {
        // Tab moves within the grid instead of on to the next control.
        if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
                step(key->key() == Qt::Key_Tab && !(key->modifiers() & Qt::ShiftModifier)
                         ? Step::Next
                         : Step::Previous);
                return true;
            }
        }
        return QTableView::event(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
            state() != EditingState && currentIndex().isValid()) {
            step(Step::Down);
            return;
        }
        QTableView::keyPressEvent(event);
    }
    void changeEvent(QEvent* event) override {
        QTableView::changeEvent(event);
        if (event->type() == QEvent::FontChange)
            fitRowsToFont();
    }

private:
    int m_rowHeight = 0;
};

// Hands a committed edit to the table instead of the model, and settles the
// keys that end an edit at once, so that the edit and the move are one action.
class CellDelegate : public QStyledItemDelegate {
public:
    CellDelegate(TableView* view) : QStyledItemDelegate(view), m_view(view) {}

    // The owner repaints its cells at the end of each user action, and the
    // view then hands every open editor its cell's text again: what the user
    // has begun to type must not be put back to the cell's old text.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (const auto* line = qobject_cast<QLineEdit*>(editor); line && line->isModified())
            return;
        QStyledItemDelegate::setEditorData(editor, index);
    }

    void setModelData(QWidget* editor, QAbstractItemModel*,
                      const QModelIndex& index) const override {
        if (m_view->owner)
            m_view->owner->commitCell(index.row(), index.column(), textOf(editor));
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        auto* editor = qobject_cast<QWidget*>(object);
        if (!editor || event->type() != QEvent::KeyPress || !m_view->owner)
            return QStyledItemDelegate::eventFilter(object, event);
        const auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex at = m_view->currentIndex();
        switch (key->key()) {
        case Qt::Key_Escape:
            emit closeEditor(editor, NoHint);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
        case Qt::Key_Backtab: {
            const QString text = textOf(editor);
            // Closed before the owner hears of it: a message box of the owner's
            // would otherwise take the focus from the editor and commit again.
            emit closeEditor(editor, NoHint);
            Table* table = m_view->owner;
            if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
                table->userEditCell(at.row(), at.column(), text);
                return true;
            }
            table->commitCell(at.row(), at.column(), text);
            if (!table->form()->isUnloaded())
                m_view->step(key->key() == Qt::Key_Tab && !(key->modifiers() & Qt::ShiftModifier)
                                 ? TableView::Step::Next
                                 : TableView::Step::Previous);
            return true;
        }
        default:
            return QStyledItemDelegate::eventFilter(object, event);
        }
    }

private:
    static QString textOf(const QWidget* editor) {
        const QMetaProperty user = editor->metaObject()->userProperty();
        return user.isValid() ? user.read(editor).toString() : QString();
    }
    TableView* m_view;
};

Table::Table(Form* form, const ControlSpec& spec, QWidget* parent)
    : Control(form, spec, new TableView(parent)) {
    m_view = static_cast<TableView*>(widget());
    m_view->owner = this;
    m_view->setItemDelegate(new CellDelegate(m_view));
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_view->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                            QAbstractItemView::EditKeyPressed);
    m_view->setWordWrap(false);
    m_view->fitRowsToFont();
    QObject::connect(m_view, &QTableView::clicked, context(), [this] { fire(Click); });
    QObject::connect(m_view, &QTableView::doubleClicked, context(), [this] { fire(DblClick); });
    QObject::connect(m_view->verticalHeader(), &QHeaderView::sectionClicked, context(),
                     [this] { fire(Click); });
}

Table::~Table() {
    m_view->owner = nullptr;
}

void Table::setModel(QAbstractItemModel* model) {
    m_view->setModel(model);
}
QAbstractItemModel* Table::model() const {
    return m_view->model();
}
QTableView* Table::view() const {
    return m_view;
}

int Table::Rows() const {
    return model() ? model()->rowCount() : 0;
}
int Table::Cols() const {
    return model() ? model()->columnCount() : 0;
}

QString Table::Cell(int row, int col) const {
    return model() ? model()->index(row, col).data(Qt::DisplayRole).toString() : QString();
}

QString Table::Header(int col) const {
    if (!model() || col < 0 || col >= Cols())
        return {};
    return model()->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
}

bool Table::cellEditable(int row, int col) const {
    if (!model())
        return false;
    const Qt::ItemFlags flags = model()->flags(model()->index(row, col));
    return model()->index(row, col).isValid() && (flags & Qt::ItemIsEditable) &&
           (flags & Qt::ItemIsEnabled);
}

bool Table::Selected(int row) const {
    return row >= 0 && row < Rows() && m_view->selectionModel() &&
           m_view->selectionModel()->rowIntersectsSelection(row, QModelIndex());
}

void Table::setSelected(int row, bool selected) {
    if (row < 0 || row >= Rows() || Cols() == 0)
        return;
    const QItemSelection whole(model()->index(row, 0), model()->index(row, Cols() - 1));
    m_view->selectionModel()->select(whole, selected ? QItemSelectionModel::Select
                                                     : QItemSelectionModel::Deselect);
}

std::vector<int> Table::selectedRows() const {
    std::vector<int> rows;
    if (!m_view->selectionModel())
        return rows;
    // By ranges, so that a selection of thousands of whole rows stays cheap.
    for (const QItemSelectionRange& range : m_view->selectionModel()->selection())
        for (int r = range.top(); r <= range.bottom(); ++r)
            rows.push_back(r);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

int Table::currentRow() const {
    return m_view->currentIndex().isValid() ? m_view->currentIndex().row() : -1;
}
int Table::currentCol() const {
    return m_view->currentIndex().isValid() ? m_view->currentIndex().column() : -1;
}

void Table::setCurrentCell(int row, int col) {
    // A cell of a selected row becomes current within the selection, so that
    // typing over it sets every selected row; any other cell is selected alone.
    if (!model() || !model()->index(row, col).isValid())
        return;
    m_view->selectionModel()->setCurrentIndex(model()->index(row, col),
                                              Selected(row) ? QItemSelectionModel::NoUpdate
                                                            : QItemSelectionModel::ClearAndSelect);
}

void Table::commitCell(int row, int col, const QString& text) {
    if (m_committing || !CellEdit || !cellEditable(row, col))
        return;
    // The same text over the cell changes nothing, unless other rows are
    // selected with it: they take the text too.
    if (text == model()->index(row, col).data(Qt::EditRole).toString() &&
        !(Selected(row) && selectedRows().size() > 1))
        return;
    m_committing = true;
    CellEdit(row, col, text);
    m_committing = false;
}

void Table::userEditCell(int row, int col, const QString& text) {
    commitCell(row, col, text);
    // Enter moves on down, as in a spreadsheet.
    if (!form()->isUnloaded() && currentRow() == row && currentCol() == col)
        m_view->step(TableView::Step::Down);
}

void Table::userPick(int row) {
    if (row < 0 || row >= Rows() || Cols() == 0)
        return;
    const int col = std::max(currentCol(), 0);
    m_view->selectionModel()->setCurrentIndex(
        model()->index(row, col), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    fire(Click);
}

} // namespace rt
