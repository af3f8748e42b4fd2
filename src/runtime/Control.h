#pragma once
// The controls of a form with the event rules the handlers rely on:
// assignments fire their events before they return, KeyPress sees a key before
// it lands, and Validate can keep the focus.

#include "runtime/FormSpec.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace rt {

class Form;

class Control {
public:
    Control(Form* form, const ControlSpec& spec, QWidget* widget);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Kind kind() const { return m_kind; }
    const QString& baseName() const { return m_base; }
    int index() const { return m_index; }
    QString name() const; // "PLname(2)" or "PlNum"
    Form* form() const { return m_form; }
    QWidget* widget() const { return m_widget; }

    // Events; a handler that is not set is not called.
    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void()> Change;
    std::function<void(int& KeyAscii)> KeyPress;
    std::function<void(bool& Cancel)> Validate;
    // Files dropped from a file manager (local paths). While set, the widget
    // takes such drops.
    std::function<void(const QStringList& paths)> FilesDropped;
    // Rows of another list of the program dropped here: the list they came
    // from and the rows it carried, in row order.
    std::function<void(Control* from, const std::vector<int>& rows)> RowsDropped;

    bool Visible() const { return m_visible; }
    void setVisible(bool visible);
    int Left() const { return m_left; }
    int Top() const { return m_top; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    void setLeft(int twips);
    void setTop(int twips);
    void setWidth(int twips);
    void setHeight(int twips);
    void ZOrder();
    // Places the widget by its lengths in twips, at the form's zoom.
    void applyGeometry();

    // Whether a click or the Tab key can put the focus here.
    virtual bool canFocus() const { return true; }

    // What the user does. The program's widgets and the test driver both come
    // through here, so that the two see the same events.
    virtual void userClick();
    virtual void userDblClick();
    // One key: KeyPress (the form first where it previews keys), then the
    // key's own effect unless a handler set KeyAscii to 0.
    void userKey(int ascii);
    // The whole text replaced at once, as by pasting over it.
    virtual void userEdit(const QString& text);
    // Files or rows let go over the control: the handler, then the end of the
    // action. Nothing happens where no handler is set.
    virtual void userDropFiles(const QStringList& paths);
    virtual void userDropRows(Control* from, const std::vector<int>& rows);
    // This list starts drags of its rows: the selected rows when the press
    // was on a selected one, else the row pressed.
    void setDragRows(bool on);
    bool dragRows() const { return m_dragRows; }

protected:
    // What a key does once KeyPress has let it through.
    virtual void applyKey(int ascii);
    // Runs KeyPress (form preview first); returns the key as the handlers left it.
    int dispatchKeyPress(int ascii);
    void fire(const std::function<void()>& event) const;
    QObject* context() { return &m_context; }

private:
    Form* m_form;
    Kind m_kind;
    QString m_base;
    int m_index;
    QWidget* m_widget;
    bool m_visible;
    int m_left, m_top, m_width, m_height;
    bool m_dragRows = false;
    QObject m_context; // owns the signal connections of this control
};

// The control whose widget is this object or holds it, or nullptr.
Control* controlOf(const QObject* object);
// Every control's widget, for controlOf; a control enters at its birth and
// leaves at its end.
QHash<const QObject*, Control*>& controlsByWidget();

} // namespace rt
