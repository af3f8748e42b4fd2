#include "tools/scenario/Lexer.h"

namespace scenario::lexer {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::vector<Token> tokenize(const QByteArray& line) {
    std::vector<Token> out;
    qsizetype i = 0;
    const qsizetype n = line.size();
    while (true) {
        while (i < n && isBlank(line[i]))
            ++i;
        if (i >= n)
            break;
        Token t;
        if (line[i] == '"') {
            t.kind = Token::String;
            ++i;
            bool closed = false;
            while (i < n) {
                const char c = line[i++];
                if (c == '"') {
                    closed = true;
                    break;
                }
                if (c != '\\') {
                    t.bytes.append(c);
                    continue;
                }
                if (i >= n)
                    break;
                const char e = line[i++];
                switch (e) {
                case '"':
                case '\\':
                    t.bytes.append(e);
                    break;
                case 'r':
                    t.bytes.append('\r');
                    break;
                case 'n':
                    t.bytes.append('\n');
                    break;
                case 't':
                    t.bytes.append('\t');
                    break;
                case 'b':
                    t.bytes.append('\b');
                    break;
                case 'x': {
                    const int hi = i < n ? hexDigit(line[i]) : -1;
                    const int lo = i + 1 < n ? hexDigit(line[i + 1]) : -1;
                    if (hi < 0 || lo < 0)
                        throw Error{QStringLiteral("\\x needs two hex digits")};
                    t.bytes.append(static_cast<char>(hi * 16 + lo));
                    i += 2;
                    break;
                }
                default:
                    throw Error{QStringLiteral("unknown escape \\%1").arg(QLatin1Char(e))};
                }
            }
            if (!closed)
                throw Error{QStringLiteral("string without its closing quote")};
            if (i < n && !isBlank(line[i]))
                throw Error{QStringLiteral("a blank must follow a string")};
        } else {
            const qsizetype start = i;
            while (i < n && !isBlank(line[i]))
                ++i;
            t.bytes = line.mid(start, i - start);
            if (t.bytes.startsWith("<<")) {
                t.kind = Token::Heredoc;
                t.bytes = t.bytes.mid(2);
                if (t.bytes.isEmpty())
                    throw Error{QStringLiteral("<< needs an end word, such as <<END")};
            } else if (t.bytes.contains('"')) {
                throw Error{QStringLiteral("a quote inside a word")};
            }
        }
        out.push_back(std::move(t));
    }
    return out;
}

} // namespace scenario::lexer
