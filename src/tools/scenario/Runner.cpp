#include "tools/scenario/Runner.h"

#include "app/Program.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QCoreApplication>

namespace scenario {
namespace {

Runner* g_current = nullptr;

} // namespace

Runner::Runner(const Script& script, const QString& appPath, int timeLimitMs)
    : m_script(script), m_appPath(appPath), m_timeLimitMs(timeLimitMs) {}

Runner::~Runner() {
    if (g_current == this)
        g_current = nullptr;
}

void Runner::installHooks() {
    rt::Hooks& h = rt::hooks();
    h.msgBox = [](const QString& text, int style) {
        if (g_current)
            g_current->onMsgBox(text, style);
    };
    h.modalWait = [](rt::Form* form) {
        if (g_current) {
            g_current->onModalWait(form);
            return;
        }
        // Nobody is there to answer: the form goes at once.
        if (form && !form->isUnloaded())
            form->Unload();
    };
    h.showOpen = [](const QString& filter) {
        return g_current ? g_current->onShowOpen(filter) : QString();
    };
    // Nobody there: the question is closed, the dialogs cancelled.
    h.ask = [](const QString& text, const QStringList& buttons) {
        return g_current ? g_current->onAsk(text, buttons) : buttons.value(buttons.size() - 1);
    };
    h.showSave = [](const QString& filter, const QString& suggestedName) {
        return g_current ? g_current->onShowSave(filter, suggestedName) : QString();
    };
    h.showOpenMany = [](const QString& filter) {
        return g_current ? g_current->onShowOpenMany(filter) : QStringList();
    };
}

bool Runner::run() {
    g_current = this;
    m_clock.start();
    while (!m_failed && m_cursor < m_script.statements.size())
        step();
    if (!m_failed && !m_messages.empty()) {
        const Message& m = m_messages.front();
        fail(m.line, QStringLiteral("a message was never checked off: msgbox %1 %2")
                         .arg(quoted(m.text))
                         .arg(m.style));
    }
    if (!m_failed && !m_choices.empty()) {
        QStringList shown;
        for (const QString& path : m_choices.front())
            shown << quoted(path);
        fail(m_script.lastLine,
             QStringLiteral("no file dialog took choose %1").arg(shown.join(QLatin1Char(' '))));
    }
    if (!m_failed && !m_answers.empty())
        fail(m_script.lastLine,
             QStringLiteral("no question took answer %1").arg(quoted(m_answers.front())));
    if (!m_failed && m_clock.elapsed() > m_timeLimitMs)
        fail(m_script.lastLine,
             QStringLiteral("the file ran longer than %1 s").arg(m_timeLimitMs / 1000));
    g_current = nullptr;
    return !m_failed;
}

int Runner::currentLine() const {
    return m_running.empty() ? m_script.lastLine : m_running.back();
}

void Runner::fail(int line, const QString& message) {
    if (m_failed)
        return;
    m_failed = true;
    m_failLine = line;
    m_failMessage = message;
}

void Runner::step() {
    const Statement& s = m_script.statements[m_cursor++];
    if (m_clock.elapsed() > m_timeLimitMs) {
        fail(s, QStringLiteral("the file ran longer than %1 s").arg(m_timeLimitMs / 1000));
        return;
    }
    m_running.push_back(s.line);
    execute(s);
    m_running.pop_back();
    // Each line is one user action: its pending writes go out at its end, as
    // they do when the program's own event comes back to the event loop.
    rt::actionEnded();
    if (m_running.empty())
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Runner::execute(const Statement& s) {
    switch (s.op) {
    case Op::Mkdir:
    case Op::Write:
    case Op::Image:
    case Op::Files:
    case Op::Images:
    case Op::Remove:
    case Op::Chmod:
        setUp(s);
        return;
    case Op::Start:
        if (rt::loadedForm(QStringLiteral("MainForm"))) {
            fail(s, QStringLiteral("the program runs already"));
            return;
        }
        wizard::startProgram();
        return;
    case Op::Click:
    case Op::DblClick:
    case Op::Type:
    case Op::Edit:
    case Op::Focus:
        if (s.op == Op::DblClick && s.row)
            pick(s, true);
        else
            act(s);
        return;
    case Op::Pick:
        pick(s, false);
        return;
    case Op::Key:
        pressKey(s);
        return;
    case Op::Close:
        closeForm(s);
        return;
    case Op::Choose:
        m_choices.push_back(s.paths);
        return;
    case Op::Answer:
        m_answers.push_back(s.value.text);
        return;
    case Op::Drop:
        dropFiles(s);
        return;
    case Op::Drag:
        dragRow(s);
        return;
    case Op::EditCell:
        editCell(s);
        return;
    case Op::Set:
        assign(s);
        return;
    case Op::Shot:
        shoot(s);
        return;
    case Op::Shortcut:
        pressShortcut(s);
        return;
    case Op::ExpectValue:
        checkValue(s);
        return;
    case Op::ExpectMsgBox:
    case Op::ExpectNoMsgBox:
        checkMessage(s);
        return;
    case Op::ExpectKey:
    case Op::ExpectNoKey:
    case Op::ExpectFileExists:
    case Op::ExpectFileAbsent:
    case Op::ExpectFileBytes:
        checkFile(s);
        return;
    }
}

} // namespace scenario
