#include "runtime/Form.h"

#include "runtime/Accessibility.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

namespace rt {
namespace {

QFont fontFor(unsigned flags) {
    if (flags & ArialBold) {
        QFont f(QStringLiteral("Arial"));
        f.setPointSizeF(8.25);
        f.setBold(true);
        return f;
    }
    if (flags & SansBold) {
        QFont f(QStringLiteral("MS Sans Serif"));
        f.setStyleHint(QFont::SansSerif);
        f.setPointSizeF(8.25);
        f.setBold(true);
        return f;
    }
    // Every property set explicitly, so that nothing comes from a bold page title.
    QFont f = QGuiApplication::font();
    f.setFamilies(f.families().isEmpty() ? QStringList{f.family()} : f.families());
    f.setPointSizeF(f.pointSizeF());
    f.setBold(false);
    f.setItalic(false);
    return f;
}

void paint(QWidget* w, QRgb back, Kind kind) {
    if (!back)
        return;
    QPalette pal = w->palette();
    const QColor colour = QColor::fromRgb(back);
    pal.setColor(QPalette::Window, colour);
    pal.setColor(QPalette::Base, colour);
    pal.setColor(QPalette::Button, colour);
    pal.setColor(QPalette::WindowText, Qt::black);
    pal.setColor(QPalette::Text, Qt::black);
    w->setPalette(pal);
    w->setAutoFillBackground(kind != Kind::TextBox && kind != Kind::ListBox);
}

std::map<QString, FormFactory>& factories() {
    static std::map<QString, FormFactory> map;
    return map;
}

std::map<QString, QPointer<Form>>& loadedMap() {
    static std::map<QString, QPointer<Form>> map;
    return map;
}

} // namespace

Form::Form(const FormSpec& spec)
    : QWidget(nullptr), m_spec(spec), m_caption(spec.caption), m_clientWidth(spec.clientWidth),
      m_clientHeight(spec.clientHeight) {
    setObjectName(spec.name);
    setWindowTitle(spec.caption);
    if (spec.border == Border::FixedToolWindow) {
        setWindowFlags(Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowCloseButtonHint);
        setFixedSize(toPixels(spec.clientWidth), toPixels(spec.clientHeight));
    } else {
        setWindowFlags(Qt::Window);
        resize(toPixels(spec.clientWidth), toPixels(spec.clientHeight));
    }
    // A form takes keys when nothing on it can, but never a click: a click on a
    // bare spot of a page would take the focus from a field that refused it.
    setFocusPolicy(Qt::TabFocus);
    m_client = new QWidget(this);
    m_client->setObjectName(QStringLiteral("client"));
    m_client->setGeometry(0, 0, width(), height());
    build();
}

Form::~Form() {
    // The controls go before their widgets, so that no widget signal reaches a
    // control that is gone.
    m_byName.clear();
    m_fonts.clear();
    m_controls.clear();
}

Control* Form::makeControl(const ControlSpec& s) {
    QWidget* parent = m_client;
    if (!s.parent.isEmpty()) {
        QString base = s.parent;
        int index = -1;
        const int open = base.indexOf(QLatin1Char('('));
        if (open > 0) {
            index = base.mid(open + 1, base.size() - open - 2).toInt();
            base = base.left(open);
        }
        if (Control* p = control(base, index))
            parent = p->widget();
    }
    std::unique_ptr<Control> c;
    switch (s.kind) {
    case Kind::TextBox:
        c = std::make_unique<TextBox>(this, s, parent);
        break;
    case Kind::ComboBox:
        c = std::make_unique<ComboBox>(this, s, parent);
        break;
    case Kind::ListBox:
        c = std::make_unique<ListBox>(this, s, parent);
        break;
    case Kind::FileListBox:
        c = std::make_unique<FileListBox>(this, s, parent);
        break;
    case Kind::CheckBox:
        c = std::make_unique<CheckBox>(this, s, parent);
        break;
    case Kind::Label:
        c = std::make_unique<Label>(this, s, parent);
        break;
    case Kind::CommandButton:
        c = std::make_unique<CommandButton>(this, s, parent);
        break;
    case Kind::Frame:
        c = std::make_unique<Frame>(this, s, parent);
        break;
    case Kind::PictureBox:
        c = std::make_unique<PictureBox>(this, s, parent);
        break;
    case Kind::CommonDialog:
        c = std::make_unique<CommonDialog>(this, s, parent);
        break;
    case Kind::Table:
        c = std::make_unique<Table>(this, s, parent);
        break;
    }
    QWidget* w = c->widget();
    m_fonts[c.get()] = fontFor(s.flags);
    applyFont(*c);
    paint(w, s.back, s.kind);
    if (auto* frame = qobject_cast<QFrame*>(w)) {
        if (s.flags & BorderSingle)
            frame->setFrameStyle(QFrame::Box | QFrame::Plain);
        else if (s.back && (s.kind == Kind::TextBox || s.kind == Kind::ListBox))
            frame->setFrameStyle(QFrame::Box | QFrame::Plain); // flat
    }
    if (s.flags & NoTabStop)
        w->setFocusPolicy(Qt::ClickFocus);
    if (!c->canFocus() && s.kind != Kind::Frame)
        w->setFocusPolicy(Qt::NoFocus);
    Control* raw = c.get();
    m_byName[{s.name, s.index}] = raw;
    m_controls.push_back(std::move(c));
    return raw;
}

void Form::build() {
    for (const ControlSpec& s : m_spec.controls)
        makeControl(s);
    describeForm(*this, m_controls);
}

Control* Form::control(const QString& name, int index) const {
    auto it = m_byName.find({name, index});
    return it == m_byName.end() ? nullptr : it->second;
}

Control* Form::LoadElement(const QString& name, int index) {
    if (Control* existing = control(name, index))
        return existing;
    for (const ControlSpec& s : m_spec.controls) {
        if (s.name == name && s.index == 0) {
            ControlSpec copy = s;
            copy.index = index;
            copy.flags |= Hidden;
            return makeControl(copy);
        }
    }
    return nullptr;
}

Control* Form::firstTabControl() const {
    for (const auto& c : m_controls) {
        if (!c->canFocus() || !c->Visible() || c->kind() == Kind::Frame)
            continue;
        // A control on a hidden page cannot take the focus.
        bool shown = true;
        for (QWidget* p = c->widget()->parentWidget(); p && p != m_client; p = p->parentWidget())
            shown = shown && !p->isHidden();
        if (shown)
            return c.get();
    }
    return nullptr;
}

void Form::setCaption(const QString& caption) {
    m_caption = caption;
    setWindowTitle(m_markable ? caption + QStringLiteral("[*]") : caption);
}

void Form::showModified(bool modified) {
    if (!m_markable) {
        m_markable = true;
        setCaption(m_caption);
    }
    setWindowModified(modified);
}

void Form::replace(Form* old) {
    m_shownOnce = true;
    setZoom(old->zoom());
    move(old->pos());
    if (old->isMaximized())
        setWindowState(Qt::WindowMaximized);
    old->m_unloaded = true;
    dropForm(old);
    old->hide();
    emit old->unloaded();
    old->deleteLater();
}

void Form::centre() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect area = screen->availableGeometry();
        QRect frame = frameGeometry();
        frame.moveCenter(area.center());
        move(frame.topLeft());
    }
}

void Form::Show(int modal) {
    if (m_unloaded)
        return;
    if (modal) {
        m_modal = true;
        if (!isVisible())
            setWindowModality(Qt::ApplicationModal);
    }
    if (!m_shownOnce) {
        m_shownOnce = true;
        centre();
    }
    show();
    // The frame is known only once the window is up: an outer size set
    // before then is made good now.
    if (m_width >= 0)
        setWidth(m_width);
    if (m_height >= 0)
        setHeight(m_height);
    // The offscreen platform has no window stack to raise a window in.
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        raise();
        activateWindow();
    }
    raiseForm(this);
    if (!m_active)
        setFocusSilently(firstTabControl());
    if (modal) {
        actionEnded();
        if (hooks().modalWait)
            hooks().modalWait(this);
    }
}

void Form::Unload() {
    if (m_unloaded)
        return;
    m_unloaded = true;
    Form_Unload();
    auto& map = loadedMap();
    auto it = map.find(m_spec.name);
    if (it != map.end() && it->second == this)
        map.erase(it);
    dropForm(this);
    hide();
    emit unloaded();
    deleteLater();
}

void Form::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}

void Form::userKey(int ascii) {
    int key = ascii;
    if (KeyPreview())
        Form_KeyPress(key);
}

void Form::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    int ascii = -1;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        ascii = 13;
    else if (event->key() == Qt::Key_Escape)
        ascii = 27;
    else if (text.size() == 1 && text.at(0).unicode() >= 32 && text.at(0).unicode() < 256)
        ascii = text.at(0).unicode();
    if (ascii >= 0 && KeyPreview()) {
        userKey(ascii);
        return;
    }
    QWidget::keyPressEvent(event);
}

// ---- the forms of the program ----------------------------------------------

void registerForm(const QString& name, FormFactory factory) {
    factories()[name] = std::move(factory);
}

Form* Load(const QString& name) {
    if (Form* f = loadedForm(name))
        return f;
    auto it = factories().find(name);
    if (it == factories().end())
        return nullptr;
    Form* form = it->second();
    loadedMap()[name] = form;
    form->Form_Load();
    return form;
}

Form* Reload(const QString& name) {
    auto it = factories().find(name);
    if (it == factories().end())
        return nullptr;
    Form* old = loadedForm(name);
    Form* form = it->second();
    if (old)
        form->replace(old);
    loadedMap()[name] = form;
    form->Form_Load();
    return form;
}

Form* loadedForm(const QString& name) {
    auto& map = loadedMap();
    auto it = map.find(name);
    if (it == map.end() || it->second.isNull() || it->second->isUnloaded())
        return nullptr;
    return it->second;
}

std::vector<Form*> loadedForms() {
    std::vector<Form*> out;
    for (auto& [name, form] : loadedMap())
        if (!form.isNull() && !form->isUnloaded())
            out.push_back(form);
    return out;
}

// ---- the catalogue -----------------------------------------------------------

static std::vector<const FormSpec*>& specs() {
    static std::vector<const FormSpec*> list;
    return list;
}

void registerFormSpec(const FormSpec* spec) {
    for (const FormSpec* s : specs())
        if (s->name == spec->name)
            return;
    specs().push_back(spec);
}

const FormSpec* findFormSpec(const QString& name) {
    for (const FormSpec* s : specs())
        if (s->name == name)
            return s;
    return nullptr;
}

const std::vector<const FormSpec*>& allFormSpecs() {
    return specs();
}

} // namespace rt
