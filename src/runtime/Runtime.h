#pragma once
// The form run time that the wizard's handlers are written against: the
// application folder, lengths in twips, message boxes, the open-file dialog,
// the modal wait, the focus with its Validate, and the end of a user action.

#include <QString>
#include <QStringList>
#include <functional>

namespace rt {

class Control;
class Form;

// The program's folder, without a trailing separator.
QString AppPath();
void setAppPath(const QString& path);

// Twips per pixel: 1440 to the inch, so 15 at 96 DPI.
double twipsPerPixel();
void setTwipsPerPixel(double tpp);
int toPixels(double twips);
int toTwips(int pixels);

// The places where a test driver stands in for the user.
struct Hooks {
    std::function<void(const QString& text, int style)> msgBox;
    std::function<void(Form* form)> modalWait;              // returns once the form is unloaded
    std::function<QString(const QString& filter)> showOpen; // the chosen path, "" on cancel
    std::function<QString(const QString& text, const QStringList& buttons)> ask;
    std::function<QString(const QString& filter, const QString& suggestedName)> showSave;
    std::function<QStringList(const QString& filter)> showOpenMany;
};
Hooks& hooks();
void installDefaultHooks();

// A message box with OK only; style 64 adds the information icon.
void MsgBox(const QString& text, int style = 0);

// The open-file dialog: filter in the "Description|*.ext" form.
QString ShowOpen(const QString& filter);

// A question with several buttons (such as "Replace", "Keep both", "Skip",
// "Cancel"): the text of the button chosen; closing the box (Esc) gives the
// last button, and so does a question nobody can answer.
QString Ask(const QString& text, const QStringList& buttons);
// The save dialog: the chosen path, "" on cancel. Filter as ShowOpen's.
QString ShowSave(const QString& filter, const QString& suggestedName);
// An open dialog choosing several files; empty on cancel.
QStringList ShowOpenMany(const QString& filter);

// Work that waits for the end of the current user action (pending writes of
// the game file): it also runs before anything that blocks for the user.
void addActionEndHook(std::function<void()> hook);
void actionEnded();

// The focus, form by form, as the user sees it: each form remembers its active
// control, and the active form is the one shown last.
Control* focusedControl();
Form* activeForm();
// Moves the focus to `target` as a click or the Tab key would: the control
// that loses it runs Validate first, and a Cancel keeps the focus where it is.
bool moveFocus(Control* target);
// The form order behind the focus: a form shown comes to the top, an unloaded
// one leaves.
void raiseForm(Form* form);
void dropForm(Form* form);
// Moves the focus without Validate (a form coming up, a program's SetFocus).
void setFocusSilently(Control* target);

// For the interactive program: clicks and Tab run Validate before the focus
// moves, keys reach KeyPress, and pending work runs whenever the event loop
// has nothing left to do. The scenario driver does this itself, line by line.
// Once is enough: later calls change nothing.
void installInteractiveSupport();

// The program's name, the title of message boxes.
QString programName();

} // namespace rt
