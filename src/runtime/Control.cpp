#include "runtime/Control.h"

#include "runtime/DragDrop.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QKeyEvent>

namespace rt {
namespace {

// Keys as KeyPress sees them: the character's code, Enter 13, Esc 27,
// Backspace 8; -1 for keys that give no KeyPress.
int asciiOf(const QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    default:
        break;
    }
    const QString text = event->text();
    if (text.size() == 1 && text.at(0).unicode() >= 32 && text.at(0).unicode() < 256)
        return text.at(0).unicode();
    return -1;
}

class KeyFilter : public QObject {
public:
    KeyFilter(Control* control, QObject* parent) : QObject(parent), m_control(control) {}
    std::function<int(int)> dispatch;
    std::function<void(int)> apply;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int ascii = asciiOf(static_cast<QKeyEvent*>(event));
        if (ascii < 0)
            return false;
        const int result = dispatch(ascii);
        // Enter goes no further in a combo box: its edit field takes no line
        // break, and the list must not take it for a pick.
        if (result == 13 && m_control->kind() == Kind::ComboBox)
            return true;
        if (result == ascii && !m_control->form()->isUnloaded())
            return false; // the widget does what the key does
        if (result != 0 && !m_control->form()->isUnloaded())
            apply(result);
        return true;
    }

private:
    Control* m_control;
};

class MouseFilter : public QObject {
public:
    MouseFilter(Control* control, QObject* parent) : QObject(parent), m_control(control) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease)
            m_control->userClick();
        else if (event->type() == QEvent::MouseButtonDblClick)
            m_control->userDblClick();
        return false;
    }

private:
    Control* m_control;
};

} // namespace

Control::Control(Form* form, const ControlSpec& spec, QWidget* widget)
    : m_form(form), m_kind(spec.kind), m_base(spec.name), m_index(spec.index), m_widget(widget),
      m_visible(!(spec.flags & Hidden)), m_left(spec.left), m_top(spec.top), m_width(spec.width),
      m_height(spec.height) {
    m_widget->setObjectName(m_index < 0 ? m_base
                                        : m_base + QLatin1Char('_') + QString::number(m_index));
    controlsByWidget().insert(m_widget, this);
    applyGeometry();
    m_widget->setVisible(m_visible);

    auto* keys = new KeyFilter(this, &m_context);
    keys->dispatch = [this](int a) { return dispatchKeyPress(a); };
    keys->apply = [this](int a) { applyKey(a); };
    m_widget->installEventFilter(keys);
    // An edit field inside the control can hold the focus itself; a key that
    // the control forwards to it directly passes no filter a second time.
    for (QWidget* inner : m_widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (inner->focusPolicy() != Qt::NoFocus)
            inner->installEventFilter(keys);
    if (m_kind == Kind::Label || m_kind == Kind::PictureBox || m_kind == Kind::Frame)
        m_widget->installEventFilter(new MouseFilter(this, &m_context));
    installDragAndDrop(this, &m_context);
}

Control::~Control() {
    controlsByWidget().remove(m_widget);
}

QHash<const QObject*, Control*>& controlsByWidget() {
    static QHash<const QObject*, Control*> byWidget;
    return byWidget;
}

Control* controlOf(const QObject* object) {
    const auto& byWidget = controlsByWidget();
    for (const QObject* o = object; o; o = o->parent())
        if (const auto it = byWidget.constFind(o); it != byWidget.cend())
            return *it;
    return nullptr;
}

QString Control::name() const {
    return m_index < 0 ? m_base
                       : m_base + QLatin1Char('(') + QString::number(m_index) + QLatin1Char(')');
}

void Control::setVisible(bool visible) {
    m_visible = visible;
    m_widget->setVisible(visible);
}

void Control::applyGeometry() {
    const double z = m_form->zoom();
    m_widget->setGeometry(toPixels(m_left * z), toPixels(m_top * z), toPixels(m_width * z),
                          toPixels(m_height * z));
}

void Control::setLeft(int twips) {
    m_left = twips;
    applyGeometry();
}
void Control::setTop(int twips) {
    m_top = twips;
    applyGeometry();
}
void Control::setWidth(int twips) {
    m_width = twips;
    applyGeometry();
}
void Control::setHeight(int twips) {
    m_height = twips;
    applyGeometry();
}

void Control::ZOrder() {
    m_widget->raise();
}

void Control::fire(const std::function<void()>& event) const {
    if (event)
        event();
}

void Control::userClick() {
    fire(Click);
}
void Control::userDblClick() {
    fire(DblClick);
}

int Control::dispatchKeyPress(int ascii) {
    int key = ascii;
    if (m_form->KeyPreview()) {
        m_form->Form_KeyPress(key);
        if (key == 0 || m_form->isUnloaded())
            return key;
    }
    if (KeyPress)
        KeyPress(key);
    return key;
}

void Control::userKey(int ascii) {
    const int key = dispatchKeyPress(ascii);
    if (key != 0 && !m_form->isUnloaded())
        applyKey(key);
}

void Control::applyKey(int) {}
void Control::userEdit(const QString&) {}

} // namespace rt
