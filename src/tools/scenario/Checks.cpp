// The checks of a scenario: what the program wrote to its folder, the state
// of its forms and variables, and the messages it showed.

#include "tools/scenario/Runner.h"

#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "testing/ControlProperties.h"
#include "testing/Variables.h"
#include "tools/scenario/Compare.h"
#include "tools/scenario/ProfileLookup.h"

#include <QFile>
#include <QFileInfo>

namespace scenario {
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
                                        .arg(ref.controlName(), ref.prop)
                                        .arg(ref.propIndex)
                                        .arg(ref.propIndex2)
              : ref.propIndex >= 0
                  ? QStringLiteral("%1 has no %2(%3)")
                        .arg(ref.controlName(), ref.prop)
                        .arg(ref.propIndex)
                  : QStringLiteral("%1 has no property %2").arg(ref.controlName(), ref.prop);
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
