// What the user does, and the three places where the program waits for the
// user: the message box, the modal form and the open-file dialog.

#include "tools/scenario/Runner.h"

#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"
#include "testing/ControlProperties.h"
#include "testing/Variables.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QPointer>
#include <QTest>

namespace scenario {
namespace {

rt::Form* loaded(const QString& name) {
    rt::Form* f = rt::loadedForm(name);
    return f && !f->isUnloaded() ? f : nullptr;
}

QVariant asProperty(const Value& v) {
    if (v.type == Value::Number && v.number >= INT_MIN && v.number <= INT_MAX)
        return static_cast<int>(v.number);
    return v.toVariant();
}

} // namespace

rt::Form* Runner::form(const Statement& s) {
    rt::Form* f = loaded(s.ref.form);
    if (!f)
        fail(s, QStringLiteral("%1 is not loaded").arg(s.ref.form));
    return f;
}

// The control as it is now: a handler may have unloaded its form since the
// last look, so pointers are never kept across program code.
rt::Control* Runner::control(const Statement& s, bool quiet) {
    rt::Form* f = loaded(s.ref.form);
    rt::Control* c = f ? f->control(s.ref.control, s.ref.index) : nullptr;
    if (!c && !quiet)
        fail(s, f ? QStringLiteral("%1 does not exist").arg(s.ref.controlName())
                  : QStringLiteral("%1 is not loaded, so %2 cannot be used")
                        .arg(s.ref.form, s.ref.controlName()));
    return c;
}

// The user cannot reach a form that stands behind a modal one.
bool Runner::reachable(const Statement& s) {
    if (m_modal.empty())
        return true;
    const Modal& top = m_modal.back();
    rt::Form* f = loaded(s.ref.form);
    if (!f || f == top.form)
        return true;
    for (const QPointer<rt::Form>& p : top.behind) {
        if (p == f) {
            fail(s, QStringLiteral("%1 is behind the modal %2 and takes no user action")
                        .arg(s.ref.form, top.name));
            return false;
        }
    }
    return true;
}

// A click or Tab first: the control losing the focus may refuse it, and then
// the action ends without its event. Labels and frames never take it.
rt::Control* Runner::focusFor(const Statement& s) {
    rt::Control* c = control(s);
    if (!c || !c->canFocus())
        return c;
    if (!rt::moveFocus(c))
        return nullptr;
    if (m_failed)
        return nullptr;
    c = control(s, true);
    return c;
}

void Runner::act(const Statement& s) {
    if (!reachable(s))
        return;
    if (s.op == Op::Focus) {
        rt::Control* c = control(s);
        if (c && !c->canFocus())
            fail(s, QStringLiteral("%1 cannot take the focus").arg(s.ref.controlName()));
        else if (c)
            rt::moveFocus(c);
        return;
    }
    rt::Control* c = focusFor(s);
    if (!c)
        return;
    switch (s.op) {
    case Op::Click:
        c->userClick();
        return;
    case Op::DblClick:
        c->userDblClick();
        return;
    case Op::Edit:
        c->userEdit(s.value.text);
        return;
    case Op::Type:
        for (qsizetype i = 0; i < s.value.bytes.size() && !m_failed; ++i) {
            if (i > 0 && !(c = control(s, true))) {
                fail(s, QStringLiteral("%1 went away after %2 of the characters")
                            .arg(s.ref.controlName())
                            .arg(i));
                return;
            }
            c->userKey(static_cast<unsigned char>(s.value.bytes[i]));
        }
        return;
    default:
        return;
    }
}

void Runner::pick(const Statement& s, bool doubleClick) {
    if (!reachable(s))
        return;
    rt::Control* c = control(s);
    if (!c)
        return;
    if (dynamic_cast<rt::Table*>(c) && !doubleClick) {
        pickTableRow(s);
        return;
    }
    if (!dynamic_cast<rt::ListControl*>(c)) {
        fail(s, QStringLiteral("%1 is no list").arg(s.ref.controlName()));
        return;
    }
    if (!(c = focusFor(s)))
        return;
    auto* list = dynamic_cast<rt::ListControl*>(c);
    int row = s.row.value_or(-1);
    if (!s.row) {
        for (int i = 0; i < list->ListCount() && row < 0; ++i)
            if (list->List(i) == s.value.text)
                row = i;
        if (row < 0) {
            fail(s, QStringLiteral("expected an item %1 in %2, found none")
                        .arg(s.value.show(), s.ref.controlName()));
            return;
        }
    } else if (row < 0 || row >= list->ListCount()) {
        fail(s, QStringLiteral("expected a row %1 in %2, found %3 rows")
                    .arg(row)
                    .arg(s.ref.controlName())
                    .arg(list->ListCount()));
        return;
    }
    auto* box = dynamic_cast<rt::ListBox*>(list);
    const bool toggles = doubleClick && box && box->multiSelect();
    const bool wasSelected = toggles && box->Selected(row);
    list->userPick(row);
    if (!doubleClick || m_failed || !(c = control(s, true)))
        return;
    // A double click leaves the selection of a multi-select list as it was.
    box = dynamic_cast<rt::ListBox*>(c);
    if (toggles && box && box->Selected(row) != wasSelected)
        box->setSelected(row, wasSelected);
    c->userDblClick();
}

void Runner::pressKey(const Statement& s) {
    if (!reachable(s))
        return;
    if (s.ref.kind == Ref::Control) {
        if (rt::Control* c = focusFor(s))
            c->userKey(s.code);
        return;
    }
    rt::Form* f = form(s);
    if (!f)
        return;
    rt::Control* target = f->activeControl();
    if (!target)
        target = f->firstTabControl();
    if (target) {
        if (target->canFocus() && !rt::moveFocus(target))
            return;
        // The focus move ran program code; the form may be gone.
        f = loaded(s.ref.form);
        if (!f || m_failed)
            return;
        const bool stillThere = std::any_of(f->controls().begin(), f->controls().end(),
                                            [&](const auto& c) { return c.get() == target; });
        if (stillThere) {
            target->userKey(s.code);
            return;
        }
    }
    if (!f->KeyPreview()) {
        fail(s, QStringLiteral("%1 has no control to take a key and does not preview keys")
                    .arg(s.ref.form));
        return;
    }
    int keyAscii = s.code;
    f->Form_KeyPress(keyAscii);
}

void Runner::closeForm(const Statement& s) {
    if (!reachable(s))
        return;
    rt::Form* f = form(s);
    if (!f)
        return;
    const QPointer<rt::Form> alive(f);
    // The close box: the same event the window system sends.
    QCloseEvent event;
    QCoreApplication::sendEvent(f, &event);
    if (alive && loaded(s.ref.form) == f && !m_failed)
        fail(s, QStringLiteral("expected %1 to close, found it still loaded").arg(s.ref.form));
}

void Runner::assign(const Statement& s) {
    const QVariant v = asProperty(s.value);
    if (s.ref.kind == Ref::Variable) {
        if (!wizard::writeVariable(s.ref.prop, s.ref.propIndex, v))
            fail(s, QStringLiteral("%1 cannot be set to %2").arg(s.ref.written, s.value.show()));
        return;
    }
    if (s.ref.kind == Ref::FormProp) {
        rt::Form* f = form(s);
        if (!f)
            return;
        if (s.ref.prop == QLatin1String("Caption") && s.value.type == Value::Text)
            f->setCaption(s.value.text);
        else if (s.ref.prop == QLatin1String("Width") && s.value.type == Value::Number)
            f->setWidth(v.toInt());
        else if (s.ref.prop == QLatin1String("Height") && s.value.type == Value::Number)
            f->setHeight(v.toInt());
        else
            fail(s, QStringLiteral("%1 cannot be set to %2").arg(s.ref.written, s.value.show()));
        return;
    }
    rt::Control* c = control(s);
    if (c && !testsupport::setProperty(*c, s.ref.prop, s.ref.propIndex, s.ref.propIndex2, v))
        fail(s, QStringLiteral("%1 cannot be set to %2").arg(s.ref.written, s.value.show()));
}

void Runner::shoot(const Statement& s) {
    rt::Form* f = form(s);
    if (!f)
        return;
    const QString path = QDir::current().absoluteFilePath(s.value.text);
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!f->grab().save(path))
        fail(s, QStringLiteral("cannot save a picture of %1 to %2").arg(s.ref.form, path));
}

// The keys go where the keyboard sends them: to the widget with the focus in
// the form's window, made the active window first as the user's click would.
void Runner::pressShortcut(const Statement& s) {
    rt::Form* f = form(s);
    if (!f || !reachable(s))
        return;
    if (!f->isVisible()) {
        fail(s, QStringLiteral("%1 is not shown and takes no keys").arg(s.ref.form));
        return;
    }
    QApplication::setActiveWindow(f);
    QWidget* target = f->focusWidget() ? f->focusWidget() : f;
    QTest::keySequence(target, QKeySequence(s.value.text, QKeySequence::PortableText));
}

// ---- the seams --------------------------------------------------------------

void Runner::onMsgBox(const QString& text, int style) {
    m_messages.push_back({text, style, currentLine()});
}

QString Runner::onShowOpen(const QString& filter) {
    const auto choice = takeChoice(QStringLiteral("open-file dialog"), filter);
    if (!choice)
        return {};
    if (choice->size() > 1) {
        fail(currentLine(), QStringLiteral("expected a choose of one file for the open-file dialog "
                                           "(filter %1), found %2 files")
                                .arg(quoted(filter))
                                .arg(choice->size()));
        return {};
    }
    return choice->front();
}

// The lines after the one that showed the form run here, as the user's actions
// on the modal form, until it is gone.
void Runner::onModalWait(rt::Form* form) {
    const QPointer<rt::Form> alive(form);
    const QString name = form->formName();
    const int shownAt = currentLine();
    auto up = [&] { return alive && !alive->isUnloaded() && rt::loadedForm(name) == form; };
    Modal modal{form, name, {}};
    for (rt::Form* f : rt::loadedForms())
        if (f != form)
            modal.behind.emplace_back(f);
    m_modal.push_back(std::move(modal));
    while (up()) {
        if (m_failed) {
            // The file stops here; the program's code behind Show 1 goes on
            // and returns, with nothing more done on its forms.
            alive->Unload();
            break;
        }
        if (m_cursor >= m_script.statements.size()) {
            fail(shownAt, QStringLiteral("the file ended while %1 was up (shown modal)").arg(name));
            continue;
        }
        step();
    }
    m_modal.pop_back();
}

} // namespace scenario
