// The title's mark of edits that Save has not written. Finding them means a
// save into a scratch copy, so it runs once the user pauses, not at each key.

#include "desktop/UnsavedMark.h"
#include "desktop/Desktop.h"

#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

#include <QEvent>

namespace desktop {

void refreshUnsavedMark(MainForm* form) {
    if (!form || form->isUnloaded())
        return;
    form->showModified(form->hasUnsavedEdits());
}

UnsavedMark::UnsavedMark(MainForm* form) : QObject(form), m_form(form) {
    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseMs);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        // A form waiting for an answer may hold the page half done.
        for (rt::Form* f : rt::loadedForms())
            if (f->isModal()) {
                m_pause.start();
                return;
            }
        refreshUnsavedMark(m_form);
    });
}

bool UnsavedMark::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
    case QEvent::Drop:
    case QEvent::Shortcut:
        m_pause.start();
        break;
    default:
        break;
    }
    return false;
}

} // namespace desktop
