// zavik-scenario: runs scenario files against the wizard's own forms,
// handlers and store, and reports which pass.

#include "app/Program.h"
#include "runtime/FormSpec.h"
#include "runtime/Runtime.h"
#include "tools/scenario/Runner.h"
#include "tools/scenario/Script.h"
#include "tools/scenario/Watchdog.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <iterator>

namespace {

constexpr int kTimeLimitMs = 30000;
// A line that never comes back is cut off this long after the limit.
constexpr int kHangGraceMs = 5000;

const char* const kUsage = R"(usage: zavik-scenario [--app-dir DIR] [--keep] FILE.scn...

Runs each scenario file against the wizard's own forms, handlers and store on
Qt's offscreen platform (unless QT_QPA_PLATFORM is set), with 15 twips to the
pixel. Prints "ok FILE" or "FILE:LINE: " and what was expected and found for
each file, then "N passed, N failed".

Options:
  --app-dir DIR  use the existing directory DIR as App.Path and leave it in
                 place; only one FILE may be given
  --keep         keep each file's temporary App.Path and print its path
  --help         this text

Exit status: 0 every file passed; 1 a line failed; 2 a syntax error, a name
that the form catalogue or the module variables do not have, a file that
cannot be read, or wrong options. A file with a syntax error runs no line.

Choices where the contract is silent:
  * Texts: a string's bytes read as the game file's bytes would
    (Windows-1252), so "\x80" is the euro sign the program would read from a
    file holding byte 0x80; bytes 0xA0..0xFF are Latin-1 alike. File names
    made from strings go to the disk as UTF-8.
  * Keywords (start, click, expect...) are lower case; True and False in any
    case. Form, control, property and variable names are spelled exactly.
  * A heredoc may stand wherever a string may; it must end its line, and it
    ends at the first line that holds its end word alone (blanks around it
    allowed). The file's own line ends (LF or CR LF) do not count: every
    heredoc line ends in CR LF.
  * An element of a control array past the catalogue's table (helpLabel(3))
    passes the name check; if it does not exist when used, the line fails.
  * Paths of mkdir, write, image, files, images, remove, chmod, expect key/nokey/file are
    relative to App.Path; an absolute path is a syntax error. write and image
    make missing parent directories. `choose` may be absolute.
  * files PATH FIRST LAST "bytes" and images PATH FIRST LAST W H: the first
    run of # in PATH takes each number from FIRST to LAST, zero-padded to the
    run's length (a longer number stands whole); at most 100000 files.
  * image: the picture is one plain colour (RGB 0,160,80); .jpeg counts as
    .jpg. GIFs are written by the driver's own encoder.
  * remove of a path that does not exist fails the line.
  * expect file PATH exists: any directory entry counts, a folder too.
  * expect key also takes != ; expect nokey counts a line without "=" in the
    section as a key (the rule of Wine's profile code).
  * Before expect key/nokey/file the store's pending writes go out. Every line
    is one user action: pending writes go out at its end, also for lines run
    inside a modal form's wait.
  * Comparison: a text never equals a number (write "2" for a Text). Focused
    is True for the control that has the focus in the run time's view.
  * An action on a control moves the focus there first (not for controls that
    cannot take it: labels, frames, the common dialog). `focus` on such a
    control fails the line.
  * type sends the string's bytes one by one as key codes to the named
    control, even if a handler moves the focus meanwhile; if the control goes
    away before the last one, the line fails. \n is key 10.
  * key CODE: codes 0 to 255; the key's own effect follows KeyPress as in
    type. key FORM sends the key to the form's active control, else its first
    control in tab order; with no control at all the form's own KeyPress
    runs if it previews keys, otherwise the line fails.
  * dblclick LIST ROW: the row becomes current and Click runs as with pick; a
    multi-select list keeps its selection as it was; then DblClick.
    dblclick REF without a row: DblClick alone, whatever the kind.
  * pick "item": the first row holding exactly that text. A row that is not
    there fails the line.
  * While a form shown modal is up, user actions (click, pick, dblclick,
    type, edit, key, focus, close) on the forms that stood behind it fail
    the line, as the user could not reach them; forms opened later, and
    set and expect, are not limited.
  * close FORM sends the window's close event; if the form is still loaded
    afterwards the line fails.
  * set FORM.Caption/Width/Height sets the form; Visible, Left, Top and
    Loaded of a form cannot be set (syntax error). set of a pseudo-property
    (Focused, Printed, Picture) fails the line.
  * shortcut FORM "KEYS" makes FORM the active window and sends the keys
    (Qt's portable text: "Ctrl+S", "Ctrl+Shift+Z", "F7") to its focused
    widget, as the keyboard does; the window's menu entries take them. A form
    behind a modal one, or not shown, fails the line.
  * shot saves a PNG (or what the extension says) relative to the current
    working directory, not App.Path; missing folders are made.
  * A choose that no ShowOpen took fails the file at its end, as does a
    message not checked off.
  * drop REF "PATH"...: the files (relative to App.Path unless absolute,
    words or strings, existing or not) are let go over REF as from a file
    manager. The focus moves to REF first, as for any action. A control
    without a handler for dropped files fails the line.
  * drag REF ROW REF2: row ROW of the list or table REF is carried onto
    REF2, alone, whatever the selection of REF; REF's selection and focus
    stay as they are and the focus moves to REF2, as the drop does in the
    program. A row that is not there, or a REF2 that takes no rows, fails
    the line.
  * answer "BUTTON": answers the next question box (oldest answer first). A
    question is recorded like a MsgBox with style 32 and must be checked
    off with expect msgbox. A question with no answer waiting, or an answer
    that names no button of it, fails the line that asked; the program then
    gets the last button, as if the box were closed. An answer no question
    took fails the file at its end.
  * choose "PATH": one file for the open-file dialog or the save dialog;
    choose "P1" "P2" ... answers an open dialog of several files (which a
    single choose answers with one file); choose "" cancels any of them.
    A choose of several files for a dialog of one fails the line.
  * Table (a grid): properties Rows, Cols, Cell(ROW,COL) (the text shown),
    Header(COL) and Selected(ROW) (True when the row holds a selected cell;
    set selects or deselects the whole row), all from 0, written without
    blanks. edit REF.Cell(ROW,COL) "text" moves the focus to the table,
    makes the cell current (the selection stays) and commits the text as
    Enter does: the table's handler hears of it when the text differs from
    the cell's or other rows are selected with the cell's row, the
    model keeps what the handler leaves, and the current cell moves one row
    down. A cell outside the grid or one that takes no typing fails the
    line. pick TABLE ROW is a click on the row's header: that row alone is
    selected, then Click.
  * start while the program runs fails the line. At the end of each file
    the program is stopped: every form unloaded, module state reset.
  * Time: a file that has run 30 s fails at its next line. A line that
    hangs is cut off 5 s after that: the run then reports the file, counts
    it and every file after it as failed, and ends with status 1.
)";

struct Options {
    QString appDir;
    bool keep = false;
    QStringList files;
};

int usageError(const QString& message) {
    std::fprintf(stderr, "zavik-scenario: %s\n(try --help)\n", qPrintable(message));
    return 2;
}

QtMessageHandler g_qtMessages = nullptr;

// The offscreen platform warns of what it cannot do (raise a window, find a
// runtime folder); that says nothing about the scenario and would bury the
// report, so those warnings are dropped and all else goes through.
void filterQtMessages(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtWarningMsg && (text.startsWith(QLatin1String("This plugin does not support")) ||
                                 text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))))
        return;
    if (g_qtMessages)
        g_qtMessages(type, context, text);
}

void say(const QString& line) {
    std::fputs(line.toLocal8Bit().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// The kinds by their names in the catalogue, in the order of rt::Kind.
constexpr const char* kKindNames[] = {"TextBox",    "ComboBox",     "ListBox",       "FileListBox",
                                      "CheckBox",   "Label",        "CommandButton", "Frame",
                                      "PictureBox", "CommonDialog", "Table"};
static_assert(std::size(kKindNames) == static_cast<std::size_t>(rt::Kind::Table) + 1);

// Every form the driver reaches, the catalogue's and the program's own windows
// alike, with each control (an array once, with its highest index) and kind.
void listForms(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    wizard::registerForms();
    std::fputs("\nForms and their controls:\n", stdout);
    for (const rt::FormSpec* form : rt::allFormSpecs()) {
        QStringList names;
        for (const rt::ControlSpec& c : form->controls) {
            const QString kind = QString::fromLatin1(kKindNames[static_cast<int>(c.kind)]);
            const QString one = c.index < 0 ? c.name : c.name + QStringLiteral("()");
            const QString entry = one + QLatin1Char(' ') + kind;
            if (!names.contains(entry))
                names << entry;
        }
        say(QStringLiteral("  %1 (\"%2\"): %3")
                .arg(form->name, form->caption, names.join(QStringLiteral(", "))));
    }
}

} // namespace

int main(int argc, char** argv) {
    Options opt;
    for (int i = 1; i < argc; ++i) {
        const QString a = QString::fromLocal8Bit(argv[i]);
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            std::fputs(kUsage, stdout);
            listForms(argc, argv);
            return 0;
        }
        if (a == QLatin1String("--keep")) {
            opt.keep = true;
        } else if (a == QLatin1String("--app-dir")) {
            if (++i >= argc)
                return usageError(QStringLiteral("--app-dir needs a directory"));
            opt.appDir = QString::fromLocal8Bit(argv[i]);
        } else if (a.startsWith(QLatin1String("--"))) {
            return usageError(QStringLiteral("unknown option %1").arg(a));
        } else {
            opt.files << a;
        }
    }
    if (opt.files.isEmpty())
        return usageError(QStringLiteral("no scenario file given"));
    if (!opt.appDir.isEmpty()) {
        if (opt.files.size() != 1)
            return usageError(QStringLiteral("--app-dir takes one scenario file only"));
        if (!QFileInfo(opt.appDir).isDir())
            return usageError(QStringLiteral("%1 is no directory").arg(opt.appDir));
        opt.appDir = QDir(opt.appDir).absolutePath();
    }

    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    g_qtMessages = qInstallMessageHandler(filterQtMessages);
    QApplication app(argc, argv);
    rt::setTwipsPerPixel(15);
    rt::installDefaultHooks();
    wizard::registerForms();
    wizard::installStoreHooks();
    scenario::Runner::installHooks();

    scenario::Watchdog watchdog(kTimeLimitMs, kHangGraceMs);
    int passed = 0, failed = 0, status = 0;
    for (qsizetype n = 0; n < opt.files.size(); ++n) {
        const QString& file = opt.files[n];
        QFile in(file);
        if (!in.open(QIODevice::ReadOnly)) {
            say(QStringLiteral("%1: cannot read: %2").arg(file, in.errorString()));
            ++failed;
            status = 2;
            continue;
        }
        scenario::SyntaxError error;
        const auto script = scenario::parseScript(in.readAll(), error);
        if (!script) {
            say(QStringLiteral("%1:%2: syntax error: %3")
                    .arg(file)
                    .arg(error.line)
                    .arg(error.message));
            ++failed;
            status = 2;
            continue;
        }

        QTemporaryDir temp(QDir::tempPath() + QStringLiteral("/zavik-scenario-XXXXXX"));
        QString appPath = opt.appDir;
        if (appPath.isEmpty()) {
            if (!temp.isValid()) {
                say(QStringLiteral("%1: cannot make a temporary folder: %2")
                        .arg(file, temp.errorString()));
                ++failed;
                status = 2;
                continue;
            }
            temp.setAutoRemove(!opt.keep);
            appPath = temp.path();
        }
        rt::setAppPath(appPath);

        watchdog.arm(file, passed, failed + static_cast<int>(opt.files.size() - n));
        scenario::Runner runner(*script, appPath, kTimeLimitMs);
        const bool ok = runner.run();
        wizard::stopProgram();
        rt::actionEnded();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        watchdog.disarm();

        if (ok) {
            ++passed;
            say(QStringLiteral("ok %1").arg(file));
        } else {
            ++failed;
            status = std::max(status, 1);
            say(QStringLiteral("%1:%2: %3")
                    .arg(file)
                    .arg(runner.failedLine())
                    .arg(runner.failure()));
        }
        if (opt.keep && opt.appDir.isEmpty())
            say(QStringLiteral("kept App.Path of %1: %2").arg(file, appPath));
    }
    say(QStringLiteral("%1 passed, %2 failed").arg(passed).arg(failed));
    return status;
}
