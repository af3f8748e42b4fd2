#include "runtime/Runtime.h"

#include "runtime/Form.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <vector>

namespace rt {
namespace {

QString g_appPath;
double g_tpp = 0;
std::vector<std::function<void()>> g_actionEndHooks;
bool g_inActionEnd = false;

// "Game Files|*.game" in the form Qt's dialogs read.
QString dialogFilter(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i] + QStringLiteral(" (") +
                       QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' ')) +
                       QLatin1Char(')');
    return filters.join(QStringLiteral(";;"));
}

} // namespace

QString AppPath() {
    return g_appPath;
}

void setAppPath(const QString& path) {
    g_appPath = path;
    while (g_appPath.size() > 1 && g_appPath.endsWith(QLatin1Char('/')))
        g_appPath.chop(1);
}

double twipsPerPixel() {
    if (g_tpp <= 0) {
        const QScreen* screen = QGuiApplication::primaryScreen();
        const double dpi = screen ? screen->logicalDotsPerInch() : 96.0;
        g_tpp = dpi > 0 ? 1440.0 / dpi : 15.0;
    }
    return g_tpp;
}

void setTwipsPerPixel(double tpp) {
    g_tpp = tpp;
}
int toPixels(double twips) {
    return qRound(twips / twipsPerPixel());
}
int toTwips(int pixels) {
    return qRound(pixels * twipsPerPixel());
}

QString programName() {
    return QStringLiteral("Zavik Wizard");
}

Hooks& hooks() {
    static Hooks h;
    return h;
}

void installDefaultHooks() {
    Hooks& h = hooks();
    h.msgBox = [](const QString& text, int style) {
        QMessageBox box(style & 64 ? QMessageBox::Information : QMessageBox::NoIcon, programName(),
                        text, QMessageBox::Ok, activeForm());
        box.exec();
    };
    h.modalWait = [](Form* form) {
        QEventLoop loop;
        QObject::connect(form, &Form::unloaded, &loop, &QEventLoop::quit);
        if (!form->isUnloaded())
            loop.exec();
    };
    h.showOpen = [](const QString& filter) {
        return QFileDialog::getOpenFileName(activeForm(), QString(), AppPath(),
                                            dialogFilter(filter));
    };
    h.showOpenMany = [](const QString& filter) {
        return QFileDialog::getOpenFileNames(activeForm(), QString(), AppPath(),
                                             dialogFilter(filter));
    };
    h.showSave = [](const QString& filter, const QString& suggestedName) {
        return QFileDialog::getSaveFileName(activeForm(), QString(),
                                            AppPath() + QLatin1Char('/') + suggestedName,
                                            dialogFilter(filter));
    };
    h.ask = [](const QString& text, const QStringList& buttons) {
        QMessageBox box(QMessageBox::Question, programName(), text, QMessageBox::NoButton,
                        activeForm());
        std::vector<QAbstractButton*> made;
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            const auto role = i + 1 == buttons.size() ? QMessageBox::RejectRole
                              : i == 0                ? QMessageBox::AcceptRole
                                                      : QMessageBox::ActionRole;
            made.push_back(box.addButton(buttons[i], role));
        }
        if (!made.empty()) {
            box.setDefaultButton(static_cast<QPushButton*>(made.front()));
            box.setEscapeButton(made.back());
        }
        box.exec();
        // By the button, not its text: a text may carry a shortcut's "&".
        const auto it = std::find(made.begin(), made.end(), box.clickedButton());
        return it == made.end() ? buttons.value(buttons.size() - 1)
                                : buttons[std::distance(made.begin(), it)];
    };
}

void MsgBox(const QString& text, int style) {
    actionEnded();
    if (hooks().msgBox)
        hooks().msgBox(text, style);
}

QString ShowOpen(const QString& filter) {
    actionEnded();
    return hooks().showOpen ? hooks().showOpen(filter) : QString();
}

QString Ask(const QString& text, const QStringList& buttons) {
    actionEnded();
    const QString closed = buttons.value(buttons.size() - 1);
    if (!hooks().ask || buttons.isEmpty())
        return closed;
    const QString chosen = hooks().ask(text, buttons);
    return buttons.contains(chosen) ? chosen : closed;
}

QString ShowSave(const QString& filter, const QString& suggestedName) {
    actionEnded();
    return hooks().showSave ? hooks().showSave(filter, suggestedName) : QString();
}

QStringList ShowOpenMany(const QString& filter) {
    actionEnded();
    return hooks().showOpenMany ? hooks().showOpenMany(filter) : QStringList();
}

void addActionEndHook(std::function<void()> hook) {
    g_actionEndHooks.push_back(std::move(hook));
}

void actionEnded() {
    if (g_inActionEnd)
        return;
    g_inActionEnd = true;
    for (auto& hook : g_actionEndHooks)
        hook();
    g_inActionEnd = false;
}

// ---- focus ------------------------------------------------------------------

namespace {
std::vector<QPointer<Form>>& formStack() {
    static std::vector<QPointer<Form>> stack;
    return stack;
}
bool g_movingFocus = false;
} // namespace

void raiseForm(Form* form) {
    auto& st = formStack();
    std::erase_if(st, [form](const QPointer<Form>& f) { return f.isNull() || f == form; });
    if (form && !form->isUnloaded())
        st.push_back(form);
}

void dropForm(Form* form) {
    std::erase_if(formStack(), [form](const QPointer<Form>& f) { return f.isNull() || f == form; });
}

Form* activeForm() {
    auto& st = formStack();
    for (auto it = st.rbegin(); it != st.rend(); ++it)
        if (!it->isNull() && !(*it)->isUnloaded() && (*it)->isVisible())
            return *it;
    return nullptr;
}

Control* focusedControl() {
    Form* f = activeForm();
    return f ? f->activeControl() : nullptr;
}

static void giveWidgetFocus(Control* target) {
    QWidget* w = target->widget();
    if (!w || !w->isVisible())
        return;
    g_movingFocus = true;
    w->setFocus(Qt::OtherFocusReason);
    g_movingFocus = false;
}

bool moveFocus(Control* target) {
    if (!target || !target->canFocus())
        return true;
    Form* form = target->form();
    Control* current = form->activeControl();
    if (current != target && current && current->Validate) {
        bool cancel = false;
        current->Validate(cancel);
        if (cancel) {
            giveWidgetFocus(current);
            return false;
        }
    }
    if (form->isUnloaded())
        return false;
    form->setActiveControl(target);
    raiseForm(form);
    giveWidgetFocus(target);
    return true;
}

void setFocusSilently(Control* target) {
    if (!target)
        return;
    target->form()->setActiveControl(target);
    raiseForm(target->form());
    giveWidgetFocus(target);
}

// ---- the interactive program -------------------------------------------------

namespace {

// The control a press on a window lands on: the widget under the pointer or
// the nearest of its parents that is a control.
Control* controlUnder(QWindow* window, const QPointF& pos) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->windowHandle() != window)
            continue;
        for (QWidget* w = top->childAt(pos.toPoint()); w; w = w->parentWidget()) {
            if (Control* c = controlOf(w))
                return c;
            if (w->isWindow())
                break;
        }
    }
    return nullptr;
}

// Validate runs before the focus leaves a control; a Cancel swallows the click
// or the Tab that would have moved it. A real press reaches the window before
// the widget, and Qt hands the focus to the widget on the way down, before any
// filter on the widget sees the press: so the press is judged at the window.
class FocusGuard : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (g_movingFocus)
            return false;
        if (event->type() == QEvent::MouseButtonPress ||
            event->type() == QEvent::MouseButtonDblClick) {
            Control* c = nullptr;
            if (watched->isWindowType())
                c = controlUnder(static_cast<QWindow*>(watched),
                                 static_cast<QMouseEvent*>(event)->position());
            else
                c = controlOf(watched);
            if (c && c->canFocus() && (c->widget()->focusPolicy() & Qt::ClickFocus) &&
                c->form()->activeControl() != c) {
                if (!moveFocus(c))
                    return true;
            }
        } else if (event->type() == QEvent::KeyPress) {
            auto* key = static_cast<QKeyEvent*>(event);
            if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
                Control* c = controlOf(watched);
                if (c && c->Validate && c->form()->activeControl() == c) {
                    bool cancel = false;
                    c->Validate(cancel);
                    if (cancel)
                        return true;
                }
            }
        }
        return false;
    }
};

} // namespace

void installInteractiveSupport() {
    // A second filter would see every click twice.
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    auto* app = qApp;
    app->installEventFilter(new FocusGuard(app));
    QObject::connect(app, &QApplication::focusChanged, app, [](QWidget*, QWidget* now) {
        if (g_movingFocus || !now)
            return;
        if (Control* c = controlOf(now)) {
            c->form()->setActiveControl(c);
            raiseForm(c->form());
        }
    });
    if (auto* dispatcher = QAbstractEventDispatcher::instance())
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, app,
                         [] { actionEnded(); });
    QObject::connect(app, &QCoreApplication::aboutToQuit, app, [] { actionEnded(); });
}

} // namespace rt
