#include "tools/scenario/Runner.h"

#include "app/Program.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "testing/ControlProperties.h"
#include "testing/Variables.h"
#include "tools/imagegen/ImageFiles.h"
#include "tools/scenario/Compare.h"
#include "tools/scenario/ProfileLookup.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QPointer>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace scenario {
namespace {

Runner* g_current = nullptr;

// Images made by `image` are one plain colour; a mid green stands out in a shot.
constexpr QRgb kImageColour = qRgb(0, 160, 80);

QString controlName(const Ref& ref) {
    return ref.index >= 0 ? QStringLiteral("%1.%2(%3)").arg(ref.form, ref.control).arg(ref.index)
                          : QStringLiteral("%1.%2").arg(ref.form, ref.control);
}

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

// ---- the application folder ------------------------------------------------

QString Runner::appFile(const QString& relative) const {
    return m_appPath + QLatin1Char('/') + relative;
}

void Runner::setUp(const Statement& s) {
    const QString path = appFile(s.path);
    switch (s.op) {
    case Op::Mkdir:
        if (!QDir().mkpath(path))
            fail(s, QStringLiteral("cannot make the directory %1").arg(s.path));
        return;
    case Op::Write: {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(s.value.bytes) != s.value.bytes.size())
            fail(s, QStringLiteral("cannot write %1: %2").arg(s.path, file.errorString()));
        return;
    }
    case Op::Image: {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QString why;
        if (!writeImageFile(path, s.width, s.height, kImageColour, &why)) {
            fail(s, QStringLiteral("cannot make the image %1: %2").arg(s.path, why));
            return;
        }
        // Scenarios rely on these files being pictures the program can open.
        const QImage back(path);
        if (back.size() != QSize(s.width, s.height))
            fail(s, QStringLiteral("expected %1 to read back as a %2 x %3 image, found %4 x %5")
                        .arg(s.path)
                        .arg(s.width)
                        .arg(s.height)
                        .arg(back.width())
                        .arg(back.height()));
        return;
    }
    case Op::Files:
    case Op::Images: {
        // The first run of # takes the number, zero-padded to the run's length.
        const qsizetype at = s.path.indexOf(QLatin1Char('#'));
        qsizetype width = 0;
        while (at + width < s.path.size() && s.path[at + width] == QLatin1Char('#'))
            ++width;
        for (int n = s.first; n <= s.last; ++n) {
            Statement one = s;
            one.op = s.op == Op::Files ? Op::Write : Op::Image;
            one.path = QString(s.path).replace(
                at, width, QStringLiteral("%1").arg(n, int(width), 10, QLatin1Char('0')));
            setUp(one);
            if (m_failed)
                return;
        }
        return;
    }
    case Op::Remove: {
        const QFileInfo info(path);
        if (!info.exists() && !info.isSymLink()) {
            fail(s, QStringLiteral("cannot remove %1: it does not exist").arg(s.path));
            return;
        }
        const bool ok =
            info.isDir() && !info.isSymLink() ? QDir().rmdir(path) : QFile::remove(path);
        if (!ok)
            fail(s, QStringLiteral("cannot remove %1").arg(s.path));
        return;
    }
    case Op::Chmod:
        if (::chmod(QFile::encodeName(path).constData(), static_cast<mode_t>(s.mode)) != 0)
            fail(s, QStringLiteral("cannot chmod %1: %2")
                        .arg(s.path, QString::fromLocal8Bit(std::strerror(errno))));
        return;
    default:
        return;
    }
}

void Runner::checkFile(const Statement& s) {
    // Whatever the program has pending goes out before its file is looked at.
    store::FlushProfiles();
    const QString path = appFile(s.path);
    const QFileInfo info(path);
    switch (s.op) {
    case Op::ExpectFileExists:
        if (!info.exists())
            fail(s, QStringLiteral("expected %1 to exist, found no such file").arg(s.path));
        return;
    case Op::ExpectFileAbsent:
        if (info.exists())
            fail(s, QStringLiteral("expected %1 to be absent, found it there").arg(s.path));
        return;
    case Op::ExpectFileBytes: {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(s, QStringLiteral("expected %1 to hold %2, found no readable file (%3)")
                        .arg(s.path, s.value.show(), file.errorString()));
            return;
        }
        const QByteArray bytes = file.readAll();
        if (bytes != s.value.bytes) {
            qsizetype at = 0;
            while (at < bytes.size() && at < s.value.bytes.size() && bytes[at] == s.value.bytes[at])
                ++at;
            fail(s, QStringLiteral("expected %1 to hold %2, found %3 (they differ from byte %4)")
                        .arg(s.path, s.value.show(), Value::fromBytes(bytes).show())
                        .arg(at));
        }
        return;
    }
    case Op::ExpectKey: {
        const QString found = store::ReadProfileValue(s.section, s.key, path);
        if ((found == s.value.text) == s.negate)
            fail(s, QStringLiteral("expected key %1 [%2] %3 %4 %5, found %6")
                        .arg(s.path, s.section, s.key,
                             s.negate ? QStringLiteral("!=") : QStringLiteral("=="), s.value.show(),
                             quoted(found)));
        return;
    }
    case Op::ExpectNoKey: {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return; // no file, no key
        if (const auto v = findProfileKey(file.readAll(), s.section, s.key))
            fail(s, QStringLiteral("expected no key %1 [%2] %3, found %3=%4")
                        .arg(s.path, s.section, s.key, [&] {
                            Value shown;
                            shown.text = *v;
                            return shown.show();
                        }()));
        return;
    }
    default:
        return;
    }
}

// ---- checks of the program's state ----------------------------------------

bool Runner::read(const Ref& ref, QVariant& out, QString& why) const {
    if (ref.kind == Ref::Variable) {
        if (wizard::readVariable(ref.prop, ref.propIndex, out))
            return true;
        why = QStringLiteral("%1 cannot be read now").arg(ref.written);
        return false;
    }
    rt::Form* f = rt::loadedForm(ref.form);
    if (f && f->isUnloaded())
        f = nullptr;
    if (ref.kind == Ref::FormProp && ref.prop == QLatin1String("Loaded")) {
        out = f != nullptr;
        return true;
    }
    if (!f) {
        why = QStringLiteral("%1 is not loaded").arg(ref.form);
        return false;
    }
    if (ref.kind == Ref::FormProp) {
        if (ref.prop == QLatin1String("Caption"))
            out = f->Caption();
        else if (ref.prop == QLatin1String("Visible"))
            out = f->isVisible();
        else if (ref.prop == QLatin1String("Width"))
            out = f->Width();
        else if (ref.prop == QLatin1String("Height"))
            out = f->Height();
        else if (ref.prop == QLatin1String("Left"))
            out = f->Left();
        else if (ref.prop == QLatin1String("Top"))
            out = f->Top();
        return true;
    }
    rt::Control* c = f->control(ref.control, ref.index);
    if (!c) {
        why = QStringLiteral("%1 has no %2(%3) now").arg(ref.form, ref.control).arg(ref.index);
        return false;
    }
    if (ref.prop == QLatin1String("Focused")) {
        out = rt::focusedControl() == c;
        return true;
    }
    if (!testsupport::getProperty(*c, ref.prop, ref.propIndex, ref.propIndex2, out)) {
        why = ref.propIndex2 >= 0 ? QStringLiteral("%1 has no %2(%3,%4)")
                                        .arg(controlName(ref), ref.prop)
                                        .arg(ref.propIndex)
                                        .arg(ref.propIndex2)
              : ref.propIndex >= 0
                  ? QStringLiteral("%1 has no %2(%3)")
                        .arg(controlName(ref), ref.prop)
                        .arg(ref.propIndex)
                  : QStringLiteral("%1 has no property %2").arg(controlName(ref), ref.prop);
        return false;
    }
    return true;
}

void Runner::checkValue(const Statement& s) {
    QVariant actual;
    QString why;
    const QString wanted =
        QStringLiteral("%1 %2 %3")
            .arg(s.ref.written, s.negate ? QStringLiteral("!=") : QStringLiteral("=="),
                 s.value.show());
    if (!read(s.ref, actual, why)) {
        fail(s, QStringLiteral("expected %1, found that %2").arg(wanted, why));
        return;
    }
    if (sameValue(actual, s.value) == s.negate)
        fail(s, QStringLiteral("expected %1, found %2").arg(wanted, showVariant(actual)));
}

void Runner::checkMessage(const Statement& s) {
    if (s.op == Op::ExpectNoMsgBox) {
        if (!m_messages.empty())
            fail(s, QStringLiteral("expected no msgbox, found msgbox %1 %2 (from line %3)")
                        .arg(quoted(m_messages.front().text))
                        .arg(m_messages.front().style)
                        .arg(m_messages.front().line));
        return;
    }
    const QString wanted = s.style
                               ? QStringLiteral("msgbox %1 %2").arg(s.value.show()).arg(*s.style)
                               : QStringLiteral("msgbox %1").arg(s.value.show());
    if (m_messages.empty()) {
        fail(s, QStringLiteral("expected %1, found no message").arg(wanted));
        return;
    }
    const Message m = m_messages.front();
    if (m.text != s.value.text || (s.style && *s.style != m.style)) {
        fail(s, QStringLiteral("expected %1, found msgbox %2 %3 (from line %4)")
                    .arg(wanted, quoted(m.text))
                    .arg(m.style)
                    .arg(m.line));
        return;
    }
    m_messages.pop_front();
}

} // namespace scenario
