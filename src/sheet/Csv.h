#pragma once
// Comma-separated text as spreadsheets write it, read with the encodings and
// separators they use and with firm limits, so that a hostile or mistaken
// file is refused with a reason instead of filling memory.

#include <QByteArray>
#include <QChar>
#include <QString>
#include <QStringList>

#include <vector>

namespace sheet {

inline constexpr qsizetype MaxCsvBytes = 16 * 1024 * 1024;
inline constexpr qsizetype MaxCsvCell = 64 * 1024; // characters
inline constexpr int MaxCsvRows = 10000;

struct CsvTable {
    QStringList header;
    std::vector<QStringList> rows;
    std::vector<int> lines; // 1-based source line where each row starts
    int headerLine = 0;
};

struct CsvRead {
    bool ok = false;
    QString error;
    CsvTable table;
    QString encoding; // "UTF-8", "UTF-8 with BOM", "UTF-16LE", "UTF-16BE", "Windows-1252"
    QChar separator;
};

// UTF-8 (BOM or not), UTF-16 LE/BE (BOM or detected from its NUL bytes) or
// else Windows-1252; separator ",", ";" or TAB as the header line uses it;
// quoting as RFC 4180 has it. Blank lines are skipped.
CsvRead readCsv(const QByteArray& bytes);

// UTF-8 with BOM and CRLF. A cell that a spreadsheet would take for a formula
// (it begins with "=", "+", "-", "@" or "'") is written behind a "'".
QByteArray writeCsv(const QStringList& header, const std::vector<QStringList>& rows);

} // namespace sheet
