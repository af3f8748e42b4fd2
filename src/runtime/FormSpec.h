#pragma once
// Forms as data: one table a form, one row a control, read like the
// catalogue of the wizard's forms. The run time builds the widgets from it.

#include <QRgb>
#include <QString>
#include <vector>

namespace rt {

enum class Kind {
    TextBox,
    ComboBox,
    ListBox,
    FileListBox,
    CheckBox,
    Label,
    CommandButton,
    Frame,
    PictureBox,
    CommonDialog,
    Table, // a grid of cells over a model the form's code supplies
};

enum Flag : unsigned {
    Hidden = 1u << 0,
    MultiLine = 1u << 1,
    ListOnly = 1u << 2,    // a combo box without an edit field
    MultiSelect = 1u << 3, // a click toggles one entry
    ArialBold = 1u << 4,   // Arial 8.25 bold
    SansBold = 1u << 5,    // MS Sans Serif 8.25 bold
    BorderSingle = 1u << 6,
    NoBorder = 1u << 7, // a frame whose caption does not show
    Centred = 1u << 8,
    AutoSize = 1u << 9,
    DefaultButton = 1u << 10,
    NoTabStop = 1u << 11,
};

struct ControlSpec {
    QString name; // catalogue name without index
    int index;    // element of a control array, -1 for a plain control
    Kind kind;
    QString text;                 // Caption or Text at start
    int left, top, width, height; // twips, relative to the parent
    QString parent;               // "" for the form, else a control name such as "Wiz(0)"
    unsigned flags = 0;
    QRgb back = 0;        // 0: the kind's default colour
    QString items = {};   // initial items of a list or combo, separated by "|"
    QString pattern = {}; // FileListBox
};

enum class Border { Sizable, FixedToolWindow };

struct FormSpec {
    QString name;
    QString caption;
    int clientWidth, clientHeight; // twips
    Border border;
    bool keyPreview;
    std::vector<ControlSpec> controls; // in tab order
};

// The catalogue: every form of the program, by name.
const FormSpec* findFormSpec(const QString& name);
const std::vector<const FormSpec*>& allFormSpecs();
void registerFormSpec(const FormSpec* spec);

} // namespace rt
