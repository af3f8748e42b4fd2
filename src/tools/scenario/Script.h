#pragma once
// A scenario file read into statements. Reading checks the syntax and every
// name against the form catalogue and the module variables, so that a typing
// error in a name stops the file before anything runs.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <vector>

namespace scenario {

// A value of a line: a text (kept both as the bytes written in the file and as
// the program reads those bytes), a whole number or a boolean.
struct Value {
    enum Type { Text, Number, Boolean } type = Text;
    QByteArray bytes;
    QString text;
    qint64 number = 0;
    bool boolean = false;

    static Value fromBytes(const QByteArray& bytes);
    QVariant toVariant() const;
    // As a reader of the failure messages wants to see it: quoted with escapes.
    QString show() const;
};

// Shows a text as it would be written in a scenario string.
QString quoted(const QString& text);

struct Ref {
    enum Kind {
        Control,     // FORM.CONTROL or FORM.CONTROL(i): what an action works on
        Form,        // FORM alone
        ControlProp, // FORM.CONTROL.PROP
        FormProp,    // FORM.PROP
        Variable,    // Globals.X, HelpMgmt.X, TreeForm.TreeRefCount
    } kind = Control;
    QString form;
    QString control;
    int index = -1;
    QString prop; // the property, or the variable's full name
    int propIndex = -1;
    int propIndex2 = -1; // the column of a table's Cell(ROW,COL)
    QString written;     // as it stands in the file, for messages
    // "FORM.CONTROL" or "FORM.CONTROL(i)", for messages.
    QString controlName() const {
        return index >= 0 ? QStringLiteral("%1.%2(%3)").arg(form, control).arg(index)
                          : QStringLiteral("%1.%2").arg(form, control);
    }
};

enum class Op {
    Mkdir,
    Write,
    Image,
    Files,
    Images,
    Remove,
    Chmod,
    Start,
    Click,
    Pick,
    DblClick,
    Type,
    Edit,
    Key,
    Focus,
    Close,
    Choose,
    Set,
    Shot,
    Shortcut,
    Drop,
    Drag,
    Answer,
    EditCell,
    ExpectValue,
    ExpectMsgBox,
    ExpectNoMsgBox,
    ExpectKey,
    ExpectNoKey,
    ExpectFileExists,
    ExpectFileAbsent,
    ExpectFileBytes,
};

struct Statement {
    Op op = Op::Start;
    int line = 0;
    Ref ref;
    Value value;            // write, type, edit, choose, set, expect, shot, pick "item"
    std::optional<int> row; // pick, dblclick
    QString path;           // relative to App.Path
    QString section, key;
    int width = 0, height = 0, mode = 0, code = 0;
    int first = 0, last = 0; // files, images: the numbers put into the run of #
    std::optional<int> style;
    bool negate = false; // expect ... !=
    QStringList paths;   // drop, choose: as written, absolute or relative to App.Path
    Ref target;          // drag: the control the row is dropped on
};

struct Script {
    std::vector<Statement> statements;
    int lastLine = 0;
};

struct SyntaxError {
    int line = 0;
    QString message;
};

// Reads a whole scenario file. Names are checked against the catalogue, which
// must be registered by then.
std::optional<Script> parseScript(const QByteArray& source, SyntaxError& error);

} // namespace scenario
