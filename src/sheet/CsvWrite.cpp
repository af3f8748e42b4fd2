#include "sheet/Csv.h"

namespace sheet {

namespace {

bool looksLikeFormula(const QString& cell) {
    if (cell.isEmpty())
        return false;
    const QChar c = cell.front();
    return c == QLatin1Char('=') || c == QLatin1Char('+') || c == QLatin1Char('-') ||
           c == QLatin1Char('@') || c == QLatin1Char('\'');
}

bool needsQuotes(const QString& cell) {
    if (cell.isEmpty())
        return false;
    for (const QChar c : cell) {
        if (c == QLatin1Char('"') || c == QLatin1Char(',') || c == QLatin1Char(';') ||
            c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n'))
            return true;
    }
    // A spreadsheet trims unquoted blanks away.
    return cell.front().isSpace() || cell.back().isSpace();
}

void appendCell(QString& out, const QString& raw) {
    const QString cell = looksLikeFormula(raw) ? QLatin1Char('\'') + raw : raw;
    if (!needsQuotes(cell)) {
        out += cell;
        return;
    }
    out += QLatin1Char('"');
    for (const QChar c : cell) {
        if (c == QLatin1Char('"'))
            out += QLatin1Char('"');
        out += c;
    }
    out += QLatin1Char('"');
}

void appendRow(QString& out, const QStringList& row) {
    for (qsizetype i = 0; i < row.size(); ++i) {
        if (i > 0)
            out += QLatin1Char(',');
        appendCell(out, row[i]);
    }
    out += QLatin1String("\r\n");
}

} // namespace

QByteArray writeCsv(const QStringList& header, const std::vector<QStringList>& rows) {
    QString text;
    appendRow(text, header);
    for (const QStringList& row : rows)
        appendRow(text, row);
    return QByteArray("\xEF\xBB\xBF") + text.toUtf8();
}

} // namespace sheet
