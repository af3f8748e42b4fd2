// The text box: its text as assigned, CR LF and all, whatever the widget shows.

#include "runtime/Controls.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

namespace rt {
namespace {

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

QString textAfterKey(const QString& text, int ascii, bool multiLine) {
    if (ascii == 8)
        return text.left(text.size() - 1);
    if (ascii == 13)
        return multiLine ? text + QLatin1String("\r\n") : text;
    if (ascii >= 32 && ascii != 127)
        return text + QChar(ascii);
    return text;
}

void TextBox::applyKey(int ascii) {
    setText(textAfterKey(m_text, ascii, m_multi != nullptr));
}



} // namespace rt
