#include "tools/scenario/Script.h"

#include "tools/scenario/Lexer.h"

#include "runtime/FormSpec.h"
#include "store/AnsiCodec.h"
#include "testing/Variables.h"

#include <QKeySequence>
#include <QRegularExpression>
#include <QStringList>

namespace scenario {

Value Value::fromBytes(const QByteArray& bytes) {
    Value v;
    v.type = Text;
    v.bytes = bytes;
    // The same bytes in the game file would read as this text, so a scenario
    // string and a value from the file compare as the program sees them.
    v.text = store::detail::decodeText(bytes.constData(), bytes.size(),
                                       store::detail::FileEncoding::Ansi);
    return v;
}

QVariant Value::toVariant() const {
    switch (type) {
    case Text:
        return text;
    case Number:
        return QVariant::fromValue(number);
    case Boolean:
        return boolean;
    }
    return {};
}

QString quoted(const QString& text) {
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            out += QLatin1String("\\\"");
            break;
        case '\\':
            out += QLatin1String("\\\\");
            break;
        case '\r':
            out += QLatin1String("\\r");
            break;
        case '\n':
            out += QLatin1String("\\n");
            break;
        case '\t':
            out += QLatin1String("\\t");
            break;
        case '\b':
            out += QLatin1String("\\b");
            break;
        default:
            if (c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0))
                out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    return out + QLatin1Char('"');
}

QString Value::show() const {
    switch (type) {
    case Text:
        return quoted(text);
    case Number:
        return QString::number(number);
    case Boolean:
        return boolean ? QStringLiteral("True") : QStringLiteral("False");
    }
    return {};
}

namespace {

using lexer::Error;
using lexer::Token;
using lexer::tokenize;

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

enum class RefUse { Action, ActionOrForm, FormOnly, Value };

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

int integer(const Token& t, const char* what) {
    const auto v = asInteger(t);
    if (!v || *v < INT_MIN || *v > INT_MAX)
        throw Error{QStringLiteral("%1 expected, found %2").arg(QLatin1String(what), t.word())};
    return static_cast<int>(*v);
}

// Strings and heredocs are both texts; the heredoc's lines were joined already.
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

// Paths of the application folder stay inside it, so that a scenario cannot
// touch files of the machine it runs on.
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

Statement parseExpect(const std::vector<Token>& t) {
    Statement s;
    count(t, 2, 99);
    const QString what = t[1].kind == Token::Word ? t[1].word() : QString();
    if (what == QLatin1String("msgbox")) {
        count(t, 3, 4);
        s.op = Op::ExpectMsgBox;
        s.value = text(t[2]);
        if (t.size() == 4)
            s.style = integer(t[3], "a style");
    } else if (what == QLatin1String("no")) {
        count(t, 3, 3);
        expectWord(t[2], "msgbox");
        s.op = Op::ExpectNoMsgBox;
    } else if (what == QLatin1String("key")) {
        count(t, 7, 7);
        s.op = Op::ExpectKey;
        s.path = relativePath(t[2]);
        s.section = text(t[3]).text;
        s.key = text(t[4]).text;
        s.negate = comparison(t[5]);
        s.value = text(t[6]);
    } else if (what == QLatin1String("nokey")) {
        count(t, 5, 5);
        s.op = Op::ExpectNoKey;
        s.path = relativePath(t[2]);
        s.section = text(t[3]).text;
        s.key = text(t[4]).text;
    } else if (what == QLatin1String("file")) {
        count(t, 4, 5);
        s.path = relativePath(t[2]);
        const QString check = t[3].kind == Token::Word ? t[3].word() : QString();
        if (check == QLatin1String("exists") && t.size() == 4) {
            s.op = Op::ExpectFileExists;
        } else if (check == QLatin1String("absent") && t.size() == 4) {
            s.op = Op::ExpectFileAbsent;
        } else if (check == QLatin1String("==") && t.size() == 5) {
            s.op = Op::ExpectFileBytes;
            s.value = text(t[4]);
        } else if (t[3].kind == Token::String && t.size() == 4) {
            // The bytes may follow the path directly, a heredoc above all.
            s.op = Op::ExpectFileBytes;
            s.value = text(t[3]);
        } else {
            throw Error{QStringLiteral("expect file PATH exists, absent or == \"bytes\"")};
        }
    } else {
        count(t, 4, 4);
        s.op = Op::ExpectValue;
        s.ref = parseRef(t[1], RefUse::Value);
        s.negate = comparison(t[2]);
        s.value = value(t[3]);
    }
    return s;
}

Statement parseStatement(const std::vector<Token>& t) {
    if (t[0].kind != Token::Word)
        throw Error{QStringLiteral("a line starts with a statement, not a string")};
    const QByteArray op = t[0].bytes;
    Statement s;
    if (op == "expect")
        return parseExpect(t);
    if (op == "mkdir" || op == "remove") {
        count(t, 2, 2);
        s.op = op == "mkdir" ? Op::Mkdir : Op::Remove;
        s.path = relativePath(t[1]);
    } else if (op == "write") {
        count(t, 3, 3);
        s.op = Op::Write;
        s.path = relativePath(t[1]);
        s.value = text(t[2]);
    } else if (op == "image") {
        count(t, 4, 4);
        s.op = Op::Image;
        s.path = relativePath(t[1]);
        s.width = integer(t[2], "a width");
        s.height = integer(t[3], "a height");
        if (s.width <= 0 || s.height <= 0)
            throw Error{QStringLiteral("an image needs a positive width and height")};
    } else if (op == "files" || op == "images") {
        const bool images = op == "images";
        count(t, images ? 6 : 5, images ? 6 : 5);
        s.op = images ? Op::Images : Op::Files;
        s.path = relativePath(t[1]);
        if (!s.path.contains(QLatin1Char('#')))
            throw Error{QStringLiteral("the path needs a run of # for the number")};
        s.first = integer(t[2], "a first number");
        s.last = integer(t[3], "a last number");
        if (s.first < 0 || s.last < s.first || s.last - s.first >= 100000)
            throw Error{QStringLiteral("FIRST and LAST must be 0 <= FIRST <= LAST, at most "
                                       "100000 files")};
        if (images) {
            s.width = integer(t[4], "a width");
            s.height = integer(t[5], "a height");
            if (s.width <= 0 || s.height <= 0)
                throw Error{QStringLiteral("an image needs a positive width and height")};
        } else {
            s.value = text(t[4]);
        }
    } else if (op == "chmod") {
        count(t, 3, 3);
        s.op = Op::Chmod;
        s.path = relativePath(t[1]);
        bool ok = false;
        s.mode = t[2].word().toInt(&ok, 8);
        if (t[2].kind != Token::Word || !ok || s.mode < 0 || s.mode > 07777)
            throw Error{QStringLiteral("an octal mode such as 0444 expected")};
    } else if (op == "start") {
        count(t, 1, 1);
        s.op = Op::Start;
    } else if (op == "click" || op == "focus") {
        count(t, 2, 2);
        s.op = op == "click" ? Op::Click : Op::Focus;
        s.ref = parseRef(t[1], RefUse::Action);
    } else if (op == "pick") {
        count(t, 3, 3);
        s.op = Op::Pick;
        s.ref = parseRef(t[1], RefUse::Action);
        if (t[2].kind == Token::Word)
            s.row = integer(t[2], "a row or an item");
        else
            s.value = text(t[2]);
    } else if (op == "dblclick") {
        count(t, 2, 3);
        s.op = Op::DblClick;
        s.ref = parseRef(t[1], RefUse::Action);
        if (t.size() == 3)
            s.row = integer(t[2], "a row");
    } else if (op == "edit" && t.size() > 1 && t[1].kind == Token::Word &&
               t[1].word().count(QLatin1Char('.')) == 2) {
        count(t, 3, 3);
        s.op = Op::EditCell;
        s.ref = parseRef(t[1], RefUse::Value);
        if (s.ref.kind != Ref::ControlProp || s.ref.prop != QLatin1String("Cell") ||
            s.ref.propIndex2 < 0)
            throw Error{QStringLiteral("edit takes FORM.CONTROL or FORM.CONTROL.Cell(ROW,COL), "
                                       "not %1")
                            .arg(s.ref.written)};
        s.value = text(t[2]);
    } else if (op == "type" || op == "edit") {
        count(t, 3, 3);
        s.op = op == "type" ? Op::Type : Op::Edit;
        s.ref = parseRef(t[1], RefUse::Action);
        s.value = text(t[2]);
    } else if (op == "drop") {
        count(t, 3, 1000);
        s.op = Op::Drop;
        s.ref = parseRef(t[1], RefUse::Action);
        for (std::size_t k = 2; k < t.size(); ++k) {
            s.paths << decodePath(t[k]);
            if (s.paths.back().isEmpty())
                throw Error{QStringLiteral("an empty path")};
        }
    } else if (op == "drag") {
        count(t, 4, 4);
        s.op = Op::Drag;
        s.ref = parseRef(t[1], RefUse::Action);
        s.row = integer(t[2], "a row");
        s.target = parseRef(t[3], RefUse::Action);
    } else if (op == "answer") {
        count(t, 2, 2);
        s.op = Op::Answer;
        s.value = text(t[1]);
    } else if (op == "key") {
        count(t, 3, 3);
        s.op = Op::Key;
        s.ref = parseRef(t[1], RefUse::ActionOrForm);
        s.code = integer(t[2], "a key code");
        if (s.code < 0 || s.code > 255)
            throw Error{QStringLiteral("a key code is 0 to 255")};
    } else if (op == "close") {
        count(t, 2, 2);
        s.op = Op::Close;
        s.ref = parseRef(t[1], RefUse::FormOnly);
    } else if (op == "choose") {
        count(t, 2, 1000);
        s.op = Op::Choose;
        s.value = text(t[1]);
        for (std::size_t k = 1; k < t.size(); ++k)
            s.paths << text(t[k]).text;
        if (s.paths.size() > 1 && s.paths.contains(QString()))
            throw Error{QStringLiteral("choose \"\" cancels alone; it is no file among others")};
    } else if (op == "set") {
        count(t, 3, 3);
        s.op = Op::Set;
        s.ref = parseRef(t[1], RefUse::Value);
        s.value = value(t[2]);
        if (s.ref.kind == Ref::FormProp &&
            !(s.ref.prop == QLatin1String("Caption") || s.ref.prop == QLatin1String("Width") ||
              s.ref.prop == QLatin1String("Height")))
            throw Error{QStringLiteral("%1 cannot be set").arg(s.ref.written)};
    } else if (op == "shot") {
        count(t, 3, 3);
        s.op = Op::Shot;
        s.ref = parseRef(t[1], RefUse::FormOnly);
        s.value = text(t[2]);
        if (s.value.text.isEmpty())
            throw Error{QStringLiteral("shot needs a file name")};
    } else if (op == "shortcut") {
        count(t, 3, 3);
        s.op = Op::Shortcut;
        s.ref = parseRef(t[1], RefUse::FormOnly);
        s.value = text(t[2]);
        const QKeySequence keys(s.value.text, QKeySequence::PortableText);
        if (keys.isEmpty() || keys[0] == QKeyCombination(Qt::Key_unknown))
            throw Error{QStringLiteral("a key sequence such as \"Ctrl+S\" expected")};
    } else {
        throw Error{QStringLiteral("unknown statement %1").arg(t[0].word())};
    }
    return s;
}

} // namespace

std::optional<Script> parseScript(const QByteArray& source, SyntaxError& error) {
    QList<QByteArray> lines = source.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& l : lines)
        if (l.endsWith('\r'))
            l.chop(1);
    Script script;
    script.lastLine = static_cast<int>(lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const int lineNo = static_cast<int>(i + 1);
        const QByteArray trimmed = lines[i].trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith('#'))
            continue;
        try {
            std::vector<Token> tokens = tokenize(lines[i]);
            for (std::size_t k = 0; k < tokens.size(); ++k) {
                if (tokens[k].kind != Token::Heredoc)
                    continue;
                if (k + 1 != tokens.size())
                    throw Error{QStringLiteral("a heredoc ends its line")};
                const QByteArray tag = tokens[k].bytes;
                QByteArray body;
                qsizetype j = i + 1;
                while (j < lines.size() && lines[j].trimmed() != tag) {
                    body += lines[j];
                    body += "\r\n";
                    ++j;
                }
                if (j >= lines.size())
                    throw Error{QStringLiteral("no line %1 ends the heredoc")
                                    .arg(QString::fromLatin1(tag))};
                tokens[k].kind = Token::String;
                tokens[k].bytes = body;
                i = j;
            }
            Statement s = parseStatement(tokens);
            s.line = lineNo;
            script.statements.push_back(std::move(s));
        } catch (const Error& e) {
            error.line = lineNo;
            error.message = e.message;
            return std::nullopt;
        }
    }
    return script;
}

} // namespace scenario
