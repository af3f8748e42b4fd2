#pragma once
// A form: a window built from its catalogue table, loaded and unloaded as a
// whole. Forms are made when they open and keep nothing when they close.

#include "runtime/Controls.h"
#include "runtime/FormSpec.h"

#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace rt {

class Form : public QWidget {
    Q_OBJECT
public:
    explicit Form(const FormSpec& spec);
    ~Form() override;

    const QString& formName() const { return m_spec.name; }
    const FormSpec& spec() const { return m_spec; }

    // A control by its catalogue name and index (-1 for a plain control).
    Control* control(const QString& name, int index = -1) const;
    const std::vector<std::unique_ptr<Control>>& controls() const { return m_controls; }
    template <class T> T* get(const QString& name, int index = -1) const {
        return dynamic_cast<T*>(control(name, index));
    }

    virtual void Form_Load() {}
    virtual void Form_Unload() {}
    virtual void Form_KeyPress(int& KeyAscii) { (void)KeyAscii; }
    bool KeyPreview() const { return m_spec.keyPreview; }

    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // Outer size and place, in twips.
    int Width() const;
    int Height() const;
    void setWidth(int twips);
    void setHeight(int twips);
    int Left() const;
    int Top() const;
    // Inner width, in twips.
    int ScaleWidth() const;
    int ScaleHeight() const;

    // A key pressed on the form itself: it reaches Form_KeyPress where the
    // form previews keys.
    void userKey(int ascii);
    // Adds element `index` of a control array, a hidden copy of element 0.
    Control* LoadElement(const QString& name, int index);

    // Shows the form; with modal 1 it returns once the form is unloaded.
    void Show(int modal = 0);
    // Runs Form_Unload and drops the form; its controls are gone after this.
    void Unload();
    bool isUnloaded() const { return m_unloaded; }
    bool isModal() const { return m_modal; }

    // The control that has the focus while this form is active.
    Control* activeControl() const { return m_active; }
    void setActiveControl(Control* control) { m_active = control; }
    // The first control in tab order that can take the focus.
    Control* firstTabControl() const;

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void build();
    Control* makeControl(const ControlSpec& spec);
    void centre();
    const FormSpec& m_spec;
    QString m_caption;
    std::vector<std::unique_ptr<Control>> m_controls;
    std::map<std::pair<QString, int>, Control*> m_byName;
    Control* m_active = nullptr;
    bool m_unloaded = false;
    bool m_modal = false;
    bool m_shownOnce = false;
    int m_clientWidth, m_clientHeight; // twips as last set
    int m_width = -1, m_height = -1;   // outer size in twips as last set, -1 for none
};

// The forms of the program by name.
using FormFactory = std::function<Form*()>;
void registerForm(const QString& name, FormFactory factory);
// Loads the form if it is not loaded (running its Form_Load) and returns it.
Form* Load(const QString& name);
// The loaded form of that name, or nullptr.
Form* loadedForm(const QString& name);
std::vector<Form*> loadedForms();

template <class F> F* Load() {
    return static_cast<F*>(Load(QString::fromLatin1(F::Name)));
}
template <class F> F* loaded() {
    return static_cast<F*>(loadedForm(QString::fromLatin1(F::Name)));
}

} // namespace rt
