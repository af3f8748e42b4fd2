#include "sheet/Csv.h"

#include "store/AnsiCodec.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace sheet {

namespace {

struct Decoded {
    QString text;
    QString encoding;
    QString error;
};

// UTF-16 without a mark shows itself by its NUL bytes: in ASCII-heavy text
// every other byte is zero, on the odd side for little-endian.
QStringConverter::Encoding guessUtf16(const QByteArray& bytes, bool& found) {
    const qsizetype n = std::min<qsizetype>(bytes.size() & ~qsizetype(1), 4096);
    qsizetype evenNul = 0, oddNul = 0;
    for (qsizetype i = 0; i < n; i += 2) {
        evenNul += bytes[i] == 0;
        oddNul += bytes[i + 1] == 0;
    }
    const qsizetype pairs = n / 2;
    found = pairs > 0;
    if (evenNul == 0 && oddNul * 2 >= pairs && oddNul > 0)
        return QStringConverter::Utf16LE;
    if (oddNul == 0 && evenNul * 2 >= pairs && evenNul > 0)
        return QStringConverter::Utf16BE;
    found = false;
    return QStringConverter::Utf8;
}

Decoded decode(const QByteArray& bytes) {
    Decoded out;
    QByteArray body = bytes;
    std::optional<QStringConverter::Encoding> utf16;
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        QStringDecoder utf8(QStringConverter::Utf8);
        out.text = utf8(QByteArrayView(bytes.constData() + 3, bytes.size() - 3));
        out.encoding = QStringLiteral("UTF-8 with BOM");
        if (utf8.hasError())
            out.error = QStringLiteral("The file begins as UTF-8 text but holds bytes that are "
                                       "not UTF-8");
        return out;
    }
    if (bytes.startsWith("\xFF\xFE")) {
        utf16 = QStringConverter::Utf16LE;
        body = bytes.mid(2);
    } else if (bytes.startsWith("\xFE\xFF")) {
        utf16 = QStringConverter::Utf16BE;
        body = bytes.mid(2);
    } else {
        bool found = false;
        const auto guess = guessUtf16(bytes, found);
        if (found)
            utf16 = guess;
    }
    if (utf16) {
        out.encoding = *utf16 == QStringConverter::Utf16LE ? QStringLiteral("UTF-16LE")
                                                           : QStringLiteral("UTF-16BE");
        if (body.size() % 2 != 0) {
            out.error = QStringLiteral("The file is %1 text of an odd number of bytes: its last "
                                       "character is cut")
                            .arg(out.encoding);
            return out;
        }
        QStringDecoder decoder(*utf16);
        out.text = decoder(body);
        if (decoder.hasError())
            out.error = QStringLiteral("The file is %1 text with a broken character in it")
                            .arg(out.encoding);
        return out;
    }
    if (bytes.contains('\0')) {
        out.error = QStringLiteral("The file is not text: it holds NUL bytes");
        return out;
    }
    QStringDecoder utf8(QStringConverter::Utf8);
    out.text = utf8(bytes);
    out.encoding = QStringLiteral("UTF-8");
    if (utf8.hasError()) {
        out.text = store::detail::decodeText(bytes.constData(), bytes.size(),
                                             store::detail::FileEncoding::Ansi);
        out.encoding = QStringLiteral("Windows-1252");
    }
    return out;
}

bool isLineEnd(QChar c) {
    return c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

// The separator the header line uses outside quotes; ties go to TAB, then ";".
QChar detectSeparator(const QString& text) {
    std::array<int, 3> counts{}; // TAB, ";", ","
    bool quoted = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (!quoted && isLineEnd(c))
            break;
        else if (!quoted && c == QLatin1Char('\t'))
            ++counts[0];
        else if (!quoted && c == QLatin1Char(';'))
            ++counts[1];
        else if (!quoted && c == QLatin1Char(','))
            ++counts[2];
    }
    const std::array<QChar, 3> seps{QLatin1Char('\t'), QLatin1Char(';'), QLatin1Char(',')};
    std::size_t best = 2;
    for (std::size_t i = 0; i < 3; ++i) {
        if (counts[i] > counts[best] || (counts[i] == counts[best] && i < best && counts[i] > 0))
            best = i;
    }
    return seps[best];
}

class Parser {
public:
    Parser(const QString& text, QChar sep) : m_text(text), m_sep(sep) {}

    QString run(CsvTable& table) {
        const qsizetype n = m_text.size();
        qsizetype i = 0;
        while (i < n) {
            QStringList row;
            const int rowLine = m_line;
            bool blank = true;
            for (;;) {
                QString cell;
                bool quotedCell = false;
                if (i < n && m_text[i] == QLatin1Char('"')) {
                    quotedCell = true;
                    blank = false;
                    const int openLine = m_line;
                    ++i;
                    for (;;) {
                        if (i >= n)
                            return QStringLiteral("The quote that opens a cell on line %1 is "
                                                  "never closed")
                                .arg(openLine);
                        const QChar c = m_text[i];
                        if (c == QLatin1Char('"')) {
                            if (i + 1 < n && m_text[i + 1] == QLatin1Char('"')) {
                                cell += c;
                                i += 2;
                                continue;
                            }
                            ++i;
                            break;
                        }
                        i = lineEndAware(i, cell);
                        if (cell.size() > MaxCsvCell)
                            return tooLong(openLine, row.size());
                    }
                }
                // Unquoted text, or what follows a closing quote, up to the cell's end.
                while (i < n && m_text[i] != m_sep && !isLineEnd(m_text[i])) {
                    cell += m_text[i++];
                    if (cell.size() > MaxCsvCell)
                        return tooLong(rowLine, row.size());
                }
                if (!cell.isEmpty() || quotedCell)
                    blank = false;
                row.append(cell);
                if (i < n && m_text[i] == m_sep) {
                    blank = false;
                    ++i;
                    continue;
                }
                break;
            }
            if (i < n)
                i = skipLineEnd(i);
            if (blank)
                continue;
            if (table.header.isEmpty() && m_headerSeen == false) {
                table.header = row;
                table.headerLine = rowLine;
                m_headerSeen = true;
                continue;
            }
            if (static_cast<int>(table.rows.size()) >= MaxCsvRows)
                return QStringLiteral("The file holds more than %1 rows; a deck has far fewer")
                    .arg(MaxCsvRows);
            table.rows.push_back(std::move(row));
            table.lines.push_back(rowLine);
        }
        if (!m_headerSeen)
            return QStringLiteral("The file holds no header line");
        return {};
    }

private:
    // Appends a character of a quoted cell; a line end in it counts as one
    // line and keeps its form.
    qsizetype lineEndAware(qsizetype i, QString& cell) {
        const QChar c = m_text[i];
        if (!isLineEnd(c)) {
            cell += c;
            return i + 1;
        }
        const qsizetype next = skipLineEnd(i);
        cell += QStringView(m_text).mid(i, next - i);
        return next;
    }

    qsizetype skipLineEnd(qsizetype i) {
        ++m_line;
        if (m_text[i] == QLatin1Char('\r') && i + 1 < m_text.size() &&
            m_text[i + 1] == QLatin1Char('\n'))
            return i + 2;
        return i + 1;
    }

    QString tooLong(int line, qsizetype column) const {
        return QStringLiteral("The cell on line %1, column %2 is longer than %3 characters")
            .arg(line)
            .arg(column + 1)
            .arg(MaxCsvCell);
    }

    const QString& m_text;
    QChar m_sep;
    int m_line = 1;
    bool m_headerSeen = false;
};

// A control character other than TAB and the line ends means the file is no
// text, whatever its encoding claims.
QString controlRefusal(const QString& text) {
    int line = 1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'\n' || (c == u'\r' && !(i + 1 < text.size() && text[i + 1] == u'\n')))
            ++line;
        else if ((c < 0x20 && c != u'\t' && c != u'\r') || c == 0x7F)
            return QStringLiteral("The file is not text: line %1 holds the control character "
                                  "0x%2")
                .arg(line)
                .arg(static_cast<uint>(c), 2, 16, QLatin1Char('0'));
    }
    return {};
}

} // namespace

CsvRead readCsv(const QByteArray& bytes) {
    CsvRead read;
    if (bytes.isEmpty()) {
        read.error = QStringLiteral("The file is empty");
        return read;
    }
    if (bytes.size() > MaxCsvBytes) {
        read.error = QStringLiteral("The file is %1 bytes; a deck sheet is at most %2 bytes")
                         .arg(bytes.size())
                         .arg(MaxCsvBytes);
        return read;
    }
    const Decoded decoded = decode(bytes);
    read.encoding = decoded.encoding;
    read.error = decoded.error;
    if (read.error.isEmpty())
        read.error = controlRefusal(decoded.text);
    if (!read.error.isEmpty())
        return read;
    read.separator = detectSeparator(decoded.text);
    read.error = Parser(decoded.text, read.separator).run(read.table);
    if (!read.error.isEmpty()) {
        read.table = {};
        return read;
    }
    read.ok = true;
    return read;
}

} // namespace sheet
