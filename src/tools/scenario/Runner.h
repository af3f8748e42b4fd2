#pragma once
// Runs one scenario file against the program. The lines of the file form one
// sequence that nested calls share: a form shown modal runs the following lines
// inside its wait, so the cursor belongs to the runner, not to a loop.

#include "runtime/Form.h"
#include "tools/scenario/Script.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <deque>
#include <optional>

namespace rt {
class Control;
} // namespace rt

namespace scenario {

class Runner {
public:
    Runner(const Script& script, const QString& appPath, int timeLimitMs);
    ~Runner();
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    // Runs the file to its end or its first failure; true when it passed.
    bool run();
    int failedLine() const { return m_failLine; }
    const QString& failure() const { return m_failMessage; }

    // The run time's seams while a file runs; without a runner they answer
    // as a user who is not there would.
    static void installHooks();

private:
    struct Message {
        QString text;
        int style;
        int line;
    };

    void step();
    void execute(const Statement& s);
    void fail(int line, const QString& message);
    void fail(const Statement& s, const QString& message) { fail(s.line, message); }
    int currentLine() const;

    // Setting up the folder and checking what the program wrote.
    QString appFile(const QString& relative) const;
    void setUp(const Statement& s);
    void checkFile(const Statement& s);
    void checkValue(const Statement& s);
    void checkMessage(const Statement& s);

    // Acting as the user.
    rt::Form* form(const Statement& s);
    rt::Control* control(const Statement& s, bool quiet = false);
    rt::Control* focusFor(const Statement& s);
    bool reachable(const Statement& s);
    void act(const Statement& s);
    void pick(const Statement& s, bool doubleClick);
    void pressKey(const Statement& s);
    void closeForm(const Statement& s);
    void assign(const Statement& s);
    void shoot(const Statement& s);
    void pressShortcut(const Statement& s);
    // Tables and drag and drop.
    void pickTableRow(const Statement& s);
    void editCell(const Statement& s);
    void dropFiles(const Statement& s);
    void dragRow(const Statement& s);

    bool read(const Ref& ref, QVariant& out, QString& why) const;

    void onMsgBox(const QString& text, int style);
    void onModalWait(rt::Form* form);
    QString onShowOpen(const QString& filter);
    QString onAsk(const QString& text, const QStringList& buttons);
    QString onShowSave(const QString& filter, const QString& suggestedName);
    QStringList onShowOpenMany(const QString& filter);
    // The oldest choose, its paths made absolute; nullopt (the line failed)
    // when none is waiting.
    std::optional<QStringList> takeChoice(const QString& dialog, const QString& filter);

    const Script& m_script;
    QString m_appPath;
    int m_timeLimitMs;
    QElapsedTimer m_clock;
    std::size_t m_cursor = 0;
    std::vector<int> m_running; // lines in progress, innermost last
    bool m_failed = false;
    int m_failLine = 0;
    QString m_failMessage;
    std::deque<Message> m_messages;
    std::deque<QStringList> m_choices; // one entry a choose, {""} for a cancel
    std::deque<QString> m_answers;
    // Forms shown modal, innermost last, each with the forms that stood
    // behind it when it came up: those take no user action until it goes.
    struct Modal {
        rt::Form* form;
        QString name;
        std::vector<QPointer<rt::Form>> behind;
    };
    std::vector<Modal> m_modal;
};

} // namespace scenario
