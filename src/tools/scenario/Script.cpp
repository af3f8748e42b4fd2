#include "tools/scenario/Script.h"

#include "tools/scenario/Lexer.h"
#include "tools/scenario/Operands.h"

#include <QKeySequence>

namespace scenario {
namespace {

using lexer::Error;
using lexer::Token;
using lexer::tokenize;
using operands::comparison;
using operands::count;
using operands::decodePath;
using operands::expectWord;
using operands::integer;
using operands::parseRef;
using operands::RefUse;
using operands::relativePath;
using operands::text;
using operands::value;

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
