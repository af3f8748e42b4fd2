// Check boxes, the controls with a caption, pictures and the open dialog.

#include "runtime/Controls.h"
#include "runtime/Accessibility.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>

namespace rt {

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

// ---- captions ---------------------------------------------------------------

void CaptionedControl::setCaption(const QString& caption) {
    m_caption = caption;
    showCaption(caption);
    captionChanged(*this, caption);
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
        painter.scale(box->form()->zoom(), box->form()->zoom());
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

} // namespace rt
