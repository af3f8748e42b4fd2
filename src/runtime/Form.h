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
    // The title's mark of unsaved work, beside the caption; Caption stays as set.
    void showModified(bool modified);
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

    // The window's own bars around the area the controls stand in: a menu bar
    // above, a status bar below. Lengths in twips never count them.
    void setBars(QWidget* top, QWidget* bottom);
    // The controls' area drawn larger or smaller; every length the program
    // reads or assigns stays in twips of the design.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    static constexpr double MinZoom = 0.5;
    static constexpr double MaxZoom = 3.0;
    // The widget the form's own controls stand in, between the bars.
    QWidget* client() const { return m_client; }
    // The area the controls stand in, in pixels of the design (zoom 1).
    QSize designClientPixels() const;

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
    // Takes the place, zoom and window state of `old`, which goes.
    void replace(Form* old);
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
    void layoutBars();
    void applyFont(Control& c); // the control's own font at the zoom
    int barsHeight() const;
    const FormSpec& m_spec;
    QWidget* m_client = nullptr; // the controls stand here
    QWidget* m_topBar = nullptr;
    QWidget* m_bottomBar = nullptr;
    double m_zoom = 1.0;
    std::map<const Control*, QFont> m_fonts; // each control's font at zoom 1
    QString m_caption;
    std::vector<std::unique_ptr<Control>> m_controls;
    std::map<std::pair<QString, int>, Control*> m_byName;
    Control* m_active = nullptr;
    bool m_unloaded = false;
    bool m_modal = false;
    bool m_shownOnce = false;
    bool m_markable = false;           // the title holds the place of the mark
    int m_clientWidth, m_clientHeight; // twips as last set
    int m_width = -1, m_height = -1;   // outer size in twips as last set, -1 for none
};

// The forms of the program by name.
using FormFactory = std::function<Form*()>;
void registerForm(const QString& name, FormFactory factory);
// Loads the form if it is not loaded (running its Form_Load) and returns it.
Form* Load(const QString& name);
// A fresh form of that name in the place of the loaded one, whose
// Form_Unload does not run: the window keeps its place, size and zoom.
Form* Reload(const QString& name);
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
