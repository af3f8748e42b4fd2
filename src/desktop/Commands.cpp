// What the menu's entries do: they press the page's buttons, so that every rule
// of a click holds for them as well, Validate of the field being left included.

#include "desktop/Desktop.h"

#include "desktop/AboutForm.h"
#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

namespace desktop {

void press(MainForm* form, const char* button) {
    rt::Control* c = form ? form->control(QString::fromLatin1(button)) : nullptr;
    if (!c || form->isUnloaded())
        return;
    // The hidden Load button is the way to the open dialog, so Open presses it
    // unseen; every other button must be there to be pressed.
    const bool hiddenOnPurpose = c == form->Command10;
    if (!hiddenOnPurpose && !(c->widget()->isVisibleTo(form) && c->widget()->isEnabled()))
        return;
    if (!rt::moveFocus(c))
        return;
    c->userClick();
}

bool newGame() {
    MainForm* old = mainForm();
    if (!old)
        return false;
    for (rt::Form* form : rt::loadedForms())
        if (form->isModal() && form != old)
            return false;
    for (rt::Form* form : rt::loadedForms())
        if (form != old)
            form->Unload();
    Globals::resetState();
    const QSize size = old->size();
    auto* fresh = static_cast<MainForm*>(rt::Reload(QString::fromLatin1(MainForm::Name)));
    dress(fresh);
    if (!fresh->isMaximized())
        fresh->resize(size);
    fresh->Show();
    return true;
}

void showAbout() {
    rt::Load<AboutForm>()->Show(1);
}

} // namespace desktop
