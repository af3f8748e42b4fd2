// Combo boxes, list boxes and the file list.

#include "runtime/Controls.h"
#include "runtime/FileSystem.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>

namespace rt {
namespace {

QWidget* makeCombo(const ControlSpec& spec, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setEditable(!(spec.flags & ListOnly));
    box->setInsertPolicy(QComboBox::NoInsert);
    if (box->lineEdit())
        box->lineEdit()->setCompleter(nullptr);
    box->setMaxVisibleItems(12);
    return box;
}

QWidget* makeList(const ControlSpec& spec, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setSelectionMode(spec.flags & MultiSelect ? QAbstractItemView::MultiSelection
                                                    : QAbstractItemView::SingleSelection);
    list->setUniformItemSizes(true);
    return list;
}

} // namespace

// ---- lists ------------------------------------------------------------------

void ListControl::userPick(int row) {
    if (row < 0 || row >= ListCount())
        return;
    setListIndex(row);
}



// ---- ComboBox ---------------------------------------------------------------

ComboBox::ComboBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : ListControl(form, spec, makeCombo(spec, parent)) {
    m_box = qobject_cast<QComboBox*>(widget());
    {
        QSignalBlocker block(m_box);
        if (!spec.items.isEmpty())
            m_box->addItems(spec.items.split(QLatin1Char('|')));
        m_box->setCurrentIndex(-1);
        if (m_box->isEditable())
            m_box->setEditText(spec.text);
    }
    QObject::connect(m_box, &QComboBox::activated, context(), [this] { fire(Click); });
    if (m_box->lineEdit())
        QObject::connect(m_box->lineEdit(), &QLineEdit::textEdited, context(),
                         [this] { fire(Change); });
}

bool ComboBox::editable() const {
    return m_box->isEditable();
}

void ComboBox::AddItem(const QString& item) {
    QSignalBlocker block(m_box);
    const QString text = Text();
    const int current = m_box->currentIndex();
    m_box->addItem(item);
    // Adding a row selects nothing and leaves the edit field alone.
    m_box->setCurrentIndex(current);
    if (editable())
        m_box->setEditText(text);
}

void ComboBox::Clear() {
    QSignalBlocker block(m_box);
    m_box->clear();
    if (editable())
        m_box->setEditText(QString());
}

void ComboBox::RemoveItem(int index) {
    QSignalBlocker block(m_box);
    const QString text = Text();
    m_box->removeItem(index);
    if (editable())
        m_box->setEditText(text);
}

QString ComboBox::List(int index) const {
    return m_box->itemText(index);
}
int ComboBox::ListCount() const {
    return m_box->count();
}

int ComboBox::ListIndex() const {
    const int current = m_box->currentIndex();
    if (current < 0)
        return -1;
    // An edit field that no longer shows the row's text has left the row.
    if (editable() && m_box->itemText(current) != m_box->currentText())
        return -1;
    return current;
}

void ComboBox::setListIndex(int index) {
    {
        QSignalBlocker block(m_box);
        m_box->setCurrentIndex(index >= 0 && index < m_box->count() ? index : -1);
        if (editable())
            m_box->setEditText(index >= 0 ? m_box->itemText(index) : QString());
    }
    fire(Click);
}

QString ComboBox::Text() const {
    return m_box->currentText();
}

void ComboBox::setText(const QString& text) {
    if (!editable()) {
        const int row = m_box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (row >= 0)
            setListIndex(row);
        return;
    }
    if (text == Text())
        return;
    {
        QSignalBlocker block(m_box);
        m_box->setEditText(text);
    }
    fire(Change);
}

void ComboBox::userPick(int row) {
    ListControl::userPick(row);
}

void ComboBox::userEdit(const QString& text) {
    setText(text);
}

void ComboBox::applyKey(int ascii) {
    if (!editable())
        return;
    setText(textAfterKey(Text(), ascii, false));
}



// ---- ListBox ----------------------------------------------------------------

ListBox::ListBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : ListControl(form, spec, makeList(spec, parent)), m_multi(spec.flags & MultiSelect) {
    m_list = qobject_cast<QListWidget*>(widget());
    if (!spec.items.isEmpty())
        for (const QString& item : spec.items.split(QLatin1Char('|')))
            AddItem(item);
    QObject::connect(m_list, &QListWidget::clicked, context(), [this] { fire(Click); });
    QObject::connect(m_list, &QListWidget::doubleClicked, context(), [this] { fire(DblClick); });
}

void ListBox::AddItem(const QString& item) {
    QSignalBlocker block(m_list);
    auto* row = new QListWidgetItem(item);
    row->setData(Qt::UserRole, 0);
    m_list->addItem(row);
}

void ListBox::Clear() {
    QSignalBlocker block(m_list);
    m_list->clear();
}

void ListBox::RemoveItem(int index) {
    if (index < 0 || index >= ListCount())
        return;
    QSignalBlocker block(m_list);
    delete m_list->takeItem(index);
}

QString ListBox::List(int index) const {
    const QListWidgetItem* row = m_list->item(index);
    return row ? row->text() : QString();
}

void ListBox::setList(int index, const QString& text) {
    if (QListWidgetItem* row = m_list->item(index))
        row->setText(text);
}

int ListBox::ListCount() const {
    return m_list->count();
}
int ListBox::ListIndex() const {
    return m_list->currentRow();
}

void ListBox::setListIndex(int index) {
    QSignalBlocker block(m_list);
    if (index < 0 || index >= ListCount()) {
        m_list->setCurrentRow(-1, QItemSelectionModel::NoUpdate);
        if (!m_multi)
            m_list->clearSelection();
        return;
    }
    m_list->setCurrentRow(index, m_multi ? QItemSelectionModel::NoUpdate
                                         : QItemSelectionModel::ClearAndSelect);
}

qint32 ListBox::ItemData(int index) const {
    const QListWidgetItem* row = m_list->item(index);
    return row ? row->data(Qt::UserRole).toInt() : 0;
}

void ListBox::setItemData(int index, qint32 value) {
    if (QListWidgetItem* row = m_list->item(index))
        row->setData(Qt::UserRole, value);
}

bool ListBox::Selected(int index) const {
    const QListWidgetItem* row = m_list->item(index);
    return row && row->isSelected();
}

void ListBox::setSelected(int index, bool selected) {
    QSignalBlocker block(m_list);
    if (QListWidgetItem* row = m_list->item(index))
        row->setSelected(selected);
}

QString ListBox::Text() const {
    return List(ListIndex());
}

void ListBox::userPick(int row) {
    if (row < 0 || row >= ListCount())
        return;
    setListIndex(row);
    if (m_multi)
        setSelected(row, !Selected(row));
    fire(Click);
}



// ---- FileListBox ------------------------------------------------------------

FileListBox::FileListBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : ListBox(form, spec, parent),
      m_pattern(spec.pattern.isEmpty() ? QStringLiteral("*.*") : spec.pattern) {}

void FileListBox::setPath(const QString& path) {
    m_path = path;
    Refresh();
}

void FileListBox::setPattern(const QString& pattern) {
    m_pattern = pattern;
    Refresh();
}

void FileListBox::Refresh() {
    Clear();
    if (m_path.isEmpty())
        return;
    // All rows in one insertion: a folder of thousands of images lists at once.
    QSignalBlocker block(list());
    list()->addItems(listFiles(m_path, m_pattern));
}



} // namespace rt
