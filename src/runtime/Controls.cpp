#include "runtime/Controls.h"

#include "runtime/FileSystem.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>

namespace rt {
namespace {

bool is(const QString& a, const char* b) {
    return a == QLatin1String(b);
}

QWidget* makeTextWidget(const ControlSpec& spec, QWidget* parent) {
    if (spec.flags & MultiLine) {
        auto* edit = new QPlainTextEdit(parent);
        edit->setTabChangesFocus(true);
        // Long lines wrap at the box's edge, as a multi-line box without scroll bars does.
        edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        edit->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        return edit;
    }
    return new QLineEdit(parent);
}

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

// ---- TextBox ----------------------------------------------------------------

TextBox::TextBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : Control(form, spec, makeTextWidget(spec, parent)), m_text(spec.text) {
    m_line = qobject_cast<QLineEdit*>(widget());
    m_multi = qobject_cast<QPlainTextEdit*>(widget());
    showText();
    if (m_line)
        QObject::connect(m_line, &QLineEdit::textEdited, context(), [this] { takeWidgetText(); });
    else
        QObject::connect(m_multi, &QPlainTextEdit::textChanged, context(),
                         [this] { takeWidgetText(); });
}

void TextBox::showText() {
    if (m_line) {
        QSignalBlocker block(m_line);
        m_line->setText(m_text);
    } else {
        QSignalBlocker block(m_multi);
        QString shown = m_text;
        shown.replace(QLatin1String("\r\n"), QLatin1String("\n"))
            .replace(QLatin1Char('\r'), QLatin1Char('\n'));
        m_multi->setPlainText(shown);
    }
}

// The user typed in the widget: the text as the program reads it, line breaks as CR LF.
void TextBox::takeWidgetText() {
    QString now = m_line ? m_line->text() : m_multi->toPlainText();
    if (m_multi)
        now.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    if (now == m_text)
        return;
    m_text = now;
    fire(Change);
}

void TextBox::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    showText();
    fire(Change);
}

void TextBox::userEdit(const QString& text) {
    setText(text);
}

void TextBox::applyKey(int ascii) {
    if (ascii == 8) {
        if (!m_text.isEmpty())
            setText(m_text.left(m_text.size() - 1));
    } else if (ascii == 13) {
        if (m_multi)
            setText(m_text + QLatin1String("\r\n"));
    } else if (ascii >= 32 && ascii != 127) {
        setText(m_text + QChar(ascii));
    }
}

bool TextBox::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Text") && index < 0) {
        out = m_text;
        return true;
    }
    return Control::getProperty(prop, index, out);
}

bool TextBox::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Text") && index < 0) {
        setText(value.toString());
        return true;
    }
    return Control::setProperty(prop, index, value);
}

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
    const QString text = Text();
    if (ascii == 8) {
        if (!text.isEmpty())
            setText(text.left(text.size() - 1));
    } else if (ascii >= 32 && ascii != 127) {
        setText(text + QChar(ascii));
    }
}

bool ComboBox::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Text") && index < 0)
        out = Text();
    else if (is(prop, "ListIndex") && index < 0)
        out = ListIndex();
    else if (is(prop, "ListCount") && index < 0)
        out = ListCount();
    else if (is(prop, "List") && index >= 0 && index < ListCount())
        out = List(index);
    else
        return Control::getProperty(prop, index, out);
    return true;
}

bool ComboBox::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Text") && index < 0)
        setText(value.toString());
    else if (is(prop, "ListIndex") && index < 0)
        setListIndex(value.toInt());
    else
        return Control::setProperty(prop, index, value);
    return true;
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

bool ListBox::getProperty(const QString& prop, int index, QVariant& out) const {
    const bool inRange = index >= 0 && index < ListCount();
    if (is(prop, "Text") && index < 0)
        out = Text();
    else if (is(prop, "ListIndex") && index < 0)
        out = ListIndex();
    else if (is(prop, "ListCount") && index < 0)
        out = ListCount();
    else if (is(prop, "List") && inRange)
        out = List(index);
    else if (is(prop, "ItemData") && inRange)
        out = ItemData(index);
    else if (is(prop, "Selected") && inRange)
        out = Selected(index);
    else
        return Control::getProperty(prop, index, out);
    return true;
}

bool ListBox::setProperty(const QString& prop, int index, const QVariant& value) {
    const bool inRange = index >= 0 && index < ListCount();
    if (is(prop, "ListIndex") && index < 0)
        setListIndex(value.toInt());
    else if (is(prop, "List") && inRange)
        setList(index, value.toString());
    else if (is(prop, "ItemData") && inRange)
        setItemData(index, value.toInt());
    else if (is(prop, "Selected") && inRange)
        setSelected(index, value.toBool());
    else
        return Control::setProperty(prop, index, value);
    return true;
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
    for (const QString& name : listFiles(m_path, m_pattern))
        AddItem(name);
}

bool FileListBox::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Path") && index < 0)
        out = m_path;
    else if (is(prop, "Pattern") && index < 0)
        out = m_pattern;
    else
        return ListBox::getProperty(prop, index, out);
    return true;
}

bool FileListBox::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Path") && index < 0)
        setPath(value.toString());
    else if (is(prop, "Pattern") && index < 0)
        setPattern(value.toString());
    else
        return ListBox::setProperty(prop, index, value);
    return true;
}

// ---- CheckBox ---------------------------------------------------------------

namespace {

// A check box whose caption wraps at its width, as the long option captions
// of the deck dialog need.
class WrappingCheckBox : public QCheckBox {
public:
    explicit WrappingCheckBox(QWidget* parent) : QCheckBox(parent) {}
    void setCaption(const QString& caption) {
        m_caption = caption;
        rewrap();
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QCheckBox::resizeEvent(event);
        rewrap();
    }

private:
    void rewrap() {
        const int room = width() - style()->pixelMetric(QStyle::PM_IndicatorWidth) -
                         style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing) - 4;
        const QFontMetrics fm(font());
        QStringList lines;
        QString line;
        for (const QString& word : m_caption.split(QLatin1Char(' '))) {
            const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
            if (!line.isEmpty() && fm.horizontalAdvance(longer) > room) {
                lines << line;
                line = word;
            } else {
                line = longer;
            }
        }
        lines << line;
        const QString shown = lines.join(QLatin1Char('\n'));
        if (shown != text())
            setText(shown);
    }
    QString m_caption;
};

} // namespace

CheckBox::CheckBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : CaptionedControl(form, spec, new WrappingCheckBox(parent)) {
    m_box = qobject_cast<QCheckBox*>(widget());
    setCaption(spec.text);
    QObject::connect(m_box, &QCheckBox::clicked, context(), [this](bool checked) {
        m_value = checked ? 1 : 0;
        fire(Click);
    });
}

void CheckBox::showCaption(const QString& caption) {
    static_cast<WrappingCheckBox*>(m_box)->setCaption(caption);
}

void CheckBox::setValue(int value) {
    value = value ? 1 : 0;
    if (value == m_value)
        return;
    m_value = value;
    {
        QSignalBlocker block(m_box);
        m_box->setChecked(value == 1);
    }
    fire(Click);
}

void CheckBox::userClick() {
    setValue(1 - m_value);
}

bool CheckBox::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Value") && index < 0) {
        out = m_value;
        return true;
    }
    return CaptionedControl::getProperty(prop, index, out);
}

bool CheckBox::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Value") && index < 0) {
        setValue(value.toInt());
        return true;
    }
    return CaptionedControl::setProperty(prop, index, value);
}

// ---- captions ---------------------------------------------------------------

void CaptionedControl::setCaption(const QString& caption) {
    m_caption = caption;
    showCaption(caption);
}

bool CaptionedControl::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Caption") && index < 0) {
        out = m_caption;
        return true;
    }
    return Control::getProperty(prop, index, out);
}

bool CaptionedControl::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Caption") && index < 0) {
        setCaption(value.toString());
        return true;
    }
    return Control::setProperty(prop, index, value);
}

// ---- Label ------------------------------------------------------------------

Label::Label(Form* form, const ControlSpec& spec, QWidget* parent)
    : CaptionedControl(form, spec, new QLabel(parent)) {
    m_label = qobject_cast<QLabel*>(widget());
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    if (spec.flags & BorderSingle)
        m_label->setMargin(2); // the text keeps clear of the border
    m_label->setAlignment((spec.flags & Centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop);
    setCaption(spec.text);
}

void Label::showCaption(const QString& caption) {
    QString shown = caption;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    m_label->setText(shown);
}

// ---- CommandButton ----------------------------------------------------------

CommandButton::CommandButton(Form* form, const ControlSpec& spec, QWidget* parent)
    : CaptionedControl(form, spec, new QPushButton(parent)) {
    m_button = qobject_cast<QPushButton*>(widget());
    m_button->setAutoDefault(false);
    m_button->setDefault(spec.flags & DefaultButton);
    setCaption(spec.text);
    QObject::connect(m_button, &QPushButton::clicked, context(), [this] { fire(Click); });
}

void CommandButton::showCaption(const QString& caption) {
    m_button->setText(caption);
}

// ---- Frame ------------------------------------------------------------------

static QWidget* makeFrame(const ControlSpec& spec, QWidget* parent) {
    if (spec.flags & NoBorder)
        return new QWidget(parent);
    return new QGroupBox(parent);
}

Frame::Frame(Form* form, const ControlSpec& spec, QWidget* parent)
    : CaptionedControl(form, spec, makeFrame(spec, parent)) {
    m_group = qobject_cast<QGroupBox*>(widget());
    // Pages are opaque: a page left by a jump stays visible under the one in front.
    if (m_group)
        widget()->setAutoFillBackground(true);
    setCaption(spec.text);
}

void Frame::showCaption(const QString& caption) {
    if (m_group)
        m_group->setTitle(caption);
}

// ---- PictureBox -------------------------------------------------------------

class PictureWidget : public QWidget {
public:
    PictureWidget(QWidget* parent) : QWidget(parent) {}
    PictureBox* box = nullptr;

protected:
    void paintEvent(QPaintEvent*) override {
        if (!box)
            return;
        QPainter painter(this);
        if (!box->m_image.isNull())
            painter.drawImage(0, 0, box->m_image);
        painter.setPen(palette().color(QPalette::WindowText));
        const QFontMetrics fm(font());
        for (const auto& line : box->m_lines)
            painter.drawText(toPixels(line.x), toPixels(line.y) + fm.ascent(), line.text);
    }
};

PictureBox::PictureBox(Form* form, const ControlSpec& spec, QWidget* parent)
    : Control(form, spec, new PictureWidget(parent)), m_canvas(widget()),
      m_autoSize(spec.flags & AutoSize) {
    static_cast<PictureWidget*>(m_canvas)->box = this;
}

void PictureBox::Cls() {
    m_lines.clear();
    m_printed.clear();
    m_currentX = 0;
    m_currentY = 0;
    m_canvas->update();
}

void PictureBox::Print(const QString& text) {
    m_lines.push_back({m_currentX, m_currentY, text});
    m_printed.append(text);
    m_currentY += TextHeight(text);
    m_currentX = 0;
    m_canvas->update();
}

int PictureBox::TextWidth(const QString& text) const {
    return toTwips(QFontMetrics(m_canvas->font()).horizontalAdvance(text));
}

int PictureBox::TextHeight(const QString&) const {
    return toTwips(QFontMetrics(m_canvas->font()).height());
}

int PictureBox::ScaleWidth() const {
    return Width();
}

void PictureBox::setPicture(const QImage& image, const QString& path) {
    m_image = image;
    m_picturePath = path;
    if (m_autoSize && !image.isNull()) {
        setWidth(toTwips(image.width()));
        setHeight(toTwips(image.height()));
    }
    m_canvas->update();
}

bool PictureBox::getProperty(const QString& prop, int index, QVariant& out) const {
    if (index >= 0)
        return false;
    if (is(prop, "Printed"))
        out = Printed();
    else if (is(prop, "Picture"))
        out = m_picturePath;
    else if (is(prop, "ScaleWidth"))
        out = ScaleWidth();
    else if (is(prop, "CurrentX"))
        out = m_currentX;
    else
        return Control::getProperty(prop, index, out);
    return true;
}

bool PictureBox::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "CurrentX") && index < 0) {
        m_currentX = value.toInt();
        return true;
    }
    return Control::setProperty(prop, index, value);
}

// ---- CommonDialog -----------------------------------------------------------

static QWidget* makeHidden(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setFocusPolicy(Qt::NoFocus);
    return w;
}

CommonDialog::CommonDialog(Form* form, const ControlSpec& spec, QWidget* parent)
    : Control(form, spec, makeHidden(parent)) {
    setVisible(false);
}

void CommonDialog::ShowOpen() {
    m_fileName = rt::ShowOpen(m_filter);
}

QString CommonDialog::FileTitle() const {
    return m_fileName.isEmpty() ? QString() : QFileInfo(m_fileName).fileName();
}

bool CommonDialog::getProperty(const QString& prop, int index, QVariant& out) const {
    if (is(prop, "Filter") && index < 0)
        out = m_filter;
    else if (is(prop, "FileName") && index < 0)
        out = m_fileName;
    else
        return Control::getProperty(prop, index, out);
    return true;
}

bool CommonDialog::setProperty(const QString& prop, int index, const QVariant& value) {
    if (is(prop, "Filter") && index < 0) {
        m_filter = value.toString();
        return true;
    }
    return Control::setProperty(prop, index, value);
}

} // namespace rt
