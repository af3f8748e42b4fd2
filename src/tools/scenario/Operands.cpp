#include "tools/scenario/Operands.h"

#include "runtime/FormSpec.h"
#include "testing/Variables.h"

#include <QRegularExpression>
#include <QStringList>
#include <climits>

namespace scenario::operands {

using lexer::Error;
using lexer::Token;

namespace {

struct Part {
    QString name;
    int index = -1;
    int index2 = -1; // Cell(ROW,COL)
};

const QRegularExpression& partPattern() {
    static const QRegularExpression re(
        QStringLiteral("^([A-Za-z_][A-Za-z0-9_]*)(?:\\(([0-9]+)(?:,([0-9]+))?\\))?$"));
    return re;
}

std::vector<Part> splitRef(const QString& word) {
    std::vector<Part> parts;
    for (const QString& piece : word.split(QLatin1Char('.'))) {
        const auto m = partPattern().match(piece);
        if (!m.hasMatch())
            throw Error{QStringLiteral("\"%1\" is no reference").arg(word)};
        Part p{m.captured(1), -1, -1};
        if (m.hasCaptured(2))
            p.index = m.captured(2).toInt();
        if (m.hasCaptured(3))
            p.index2 = m.captured(3).toInt();
        parts.push_back(p);
    }
    return parts;
}

const rt::FormSpec& formSpec(const Part& part) {
    if (part.index >= 0)
        throw Error{QStringLiteral("a form takes no index: %1").arg(part.name)};
    const rt::FormSpec* spec = rt::findFormSpec(part.name);
    if (!spec)
        throw Error{QStringLiteral("no form %1 in the catalogue").arg(part.name)};
    return *spec;
}

void checkControl(const rt::FormSpec& spec, const Part& part) {
    bool plain = false, array = false;
    for (const rt::ControlSpec& c : spec.controls) {
        if (c.name == part.name)
            (c.index < 0 ? plain : array) = true;
    }
    if (!plain && !array)
        throw Error{QStringLiteral("%1 has no control %2").arg(spec.name, part.name)};
    if (array && part.index < 0)
        throw Error{
            QStringLiteral("%1.%2 is a control array: give an index").arg(spec.name, part.name)};
    if (plain && part.index >= 0)
        throw Error{QStringLiteral("%1.%2 is no control array").arg(spec.name, part.name)};
    // Any element of an array passes here: elements past the table are made
    // at run time (helpLabel), and one that does not exist fails when used.
}

bool isFormProperty(const QString& name) {
    static const QStringList props = {QStringLiteral("Caption"), QStringLiteral("Visible"),
                                      QStringLiteral("Width"),   QStringLiteral("Height"),
                                      QStringLiteral("Left"),    QStringLiteral("Top"),
                                      QStringLiteral("Loaded")};
    return props.contains(name);
}

std::optional<qint64> asInteger(const Token& t) {
    static const QRegularExpression re(QStringLiteral("^-?[0-9]+$"));
    if (t.kind != Token::Word || !re.match(t.word()).hasMatch())
        return std::nullopt;
    bool ok = false;
    const qint64 v = t.word().toLongLong(&ok);
    if (!ok)
        throw Error{QStringLiteral("number out of range: %1").arg(t.word())};
    return v;
}

} // namespace

Ref parseRef(const Token& token, RefUse use) {
    if (token.kind != Token::Word)
        throw Error{QStringLiteral("a reference is expected, not a string")};
    Ref ref;
    ref.written = token.word();
    const std::vector<Part> parts = splitRef(ref.written);

    if (use == RefUse::Value) {
        QStringList names;
        for (const Part& p : parts)
            names << p.name;
        const QString plain = names.join(QLatin1Char('.'));
        const bool module =
            parts[0].name == QLatin1String("Globals") || parts[0].name == QLatin1String("HelpMgmt");
        if (module || wizard::isVariableName(plain)) {
            for (const Part& p : parts)
                if (p.index2 >= 0)
                    throw Error{QStringLiteral("%1 takes one index at most").arg(ref.written)};
            for (std::size_t i = 0; i + 1 < parts.size(); ++i)
                if (parts[i].index >= 0)
                    throw Error{
                        QStringLiteral("only the last part of %1 takes an index").arg(ref.written)};
            if (!wizard::isVariableName(plain))
                throw Error{QStringLiteral("no module variable %1").arg(plain)};
            ref.kind = Ref::Variable;
            ref.prop = plain;
            ref.propIndex = parts.back().index;
            return ref;
        }
    }

    const rt::FormSpec& spec = formSpec(parts[0]);
    ref.form = spec.name;
    if (parts.size() == 1) {
        if (use == RefUse::ActionOrForm || use == RefUse::FormOnly) {
            ref.kind = Ref::Form;
            return ref;
        }
        throw Error{
            QStringLiteral("%1 names a form; a control or property is expected").arg(ref.written)};
    }
    if (use == RefUse::FormOnly)
        throw Error{QStringLiteral("a form name is expected, not %1").arg(ref.written)};
    if (use == RefUse::Value && parts.size() == 2) {
        if (parts[1].index >= 0 || !isFormProperty(parts[1].name))
            throw Error{QStringLiteral("%1 is no property of a form").arg(ref.written)};
        ref.kind = Ref::FormProp;
        ref.prop = parts[1].name;
        return ref;
    }
    const std::size_t wanted = use == RefUse::Value ? 3 : 2;
    if (parts.size() != wanted)
        throw Error{use == RefUse::Value
                        ? QStringLiteral("%1: FORM.CONTROL.PROPERTY expected").arg(ref.written)
                        : QStringLiteral("%1: FORM.CONTROL expected").arg(ref.written)};
    if (parts[1].index2 >= 0)
        throw Error{QStringLiteral("a control takes one index: %1").arg(ref.written)};
    checkControl(spec, parts[1]);
    ref.control = parts[1].name;
    ref.index = parts[1].index;
    if (use == RefUse::Value) {
        ref.kind = Ref::ControlProp;
        ref.prop = parts[2].name;
        ref.propIndex = parts[2].index;
        ref.propIndex2 = parts[2].index2;
    } else {
        ref.kind = Ref::Control;
    }
    return ref;
}

int integer(const Token& t, const char* what) {
    const auto v = asInteger(t);
    if (!v || *v < INT_MIN || *v > INT_MAX)
        throw Error{QStringLiteral("%1 expected, found %2").arg(QLatin1String(what), t.word())};
    return static_cast<int>(*v);
}

Value value(const Token& t) {
    if (t.kind != Token::Word)
        return Value::fromBytes(t.bytes);
    const QString w = t.word();
    Value v;
    if (w.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
        w.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) {
        v.type = Value::Boolean;
        v.boolean = w.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
        return v;
    }
    if (const auto n = asInteger(t)) {
        v.type = Value::Number;
        v.number = *n;
        return v;
    }
    throw Error{QStringLiteral("a value is expected (a string, a number, True or False), "
                               "not %1")
                    .arg(w)};
}

Value text(const Token& t) {
    if (t.kind == Token::Word)
        throw Error{QStringLiteral("a string in double quotes is expected, not %1").arg(t.word())};
    return Value::fromBytes(t.bytes);
}

QString decodePath(const Token& t) {
    return t.kind == Token::Word ? t.word() : Value::fromBytes(t.bytes).text;
}

QString relativePath(const Token& t) {
    const QString p = decodePath(t);
    if (p.isEmpty())
        throw Error{QStringLiteral("an empty path")};
    if (p.startsWith(QLatin1Char('/')))
        throw Error{QStringLiteral("paths are relative to App.Path: %1").arg(p)};
    return p;
}

void expectWord(const Token& t, const char* word) {
    if (t.kind != Token::Word || t.bytes != word)
        throw Error{QStringLiteral("%1 expected").arg(QLatin1String(word))};
}

bool comparison(const Token& t) {
    if (t.kind == Token::Word && t.bytes == "==")
        return false;
    if (t.kind == Token::Word && t.bytes == "!=")
        return true;
    throw Error{QStringLiteral("== or != expected")};
}

void count(const std::vector<Token>& t, std::size_t low, std::size_t high) {
    if (t.size() < low)
        throw Error{QStringLiteral("too few words for %1").arg(t[0].word())};
    if (t.size() > high)
        throw Error{QStringLiteral("too many words for %1").arg(t[0].word())};
}

} // namespace scenario::operands
