// Breaking a help note into lines. Positions count from 1 here, as the texts
// of help.dat are thought of; the helpers below do the counting.

#include "guidance/HelpWrap.h"

#include "runtime/Controls.h"
#include "runtime/Runtime.h"

#include <new>

namespace HelpMgmt {
namespace {

const RuntimeError InvalidArgument{5, QStringLiteral("Invalid procedure call or argument")};
const RuntimeError OutOfMemory{7, QStringLiteral("Out of memory")};

// `length` characters from position `start`; a negative length runs to the end.
QString mid(const QString& text, qsizetype start, qsizetype length = -1) {
    if (start < 1)
        throw InvalidArgument;
    return text.mid(start - 1, length);
}

// Position of the first blank at or after `from`, 0 when there is none.
qsizetype blankFrom(const QString& text, qsizetype from) {
    if (from < 1)
        throw InvalidArgument;
    return text.indexOf(QLatin1Char(' '), from - 1) + 1;
}

void setLine(QStringList& lines, qsizetype lineNo, const QString& text) {
    while (lines.size() <= lineNo)
        lines.append(QString());
    lines[lineNo] = text;
}

void tooSmall() {
    rt::MsgBox(QStringLiteral("Box Too Small For Words"), 0);
}

// Returns normally when the text is wrapped or the first word does not fit.
void wrap(const QString& text, double width, const TextMeasure& textWidth, QStringList& lines) {
    lines = QStringList{QString(), QString()};
    qsizetype lineNo = 0;
    qsizetype lineStart = 1;
    qsizetype wordStart = 1;
    qsizetype from = 1;
    for (;;) {
        const qsizetype p = blankFrom(text, from);
        if (p == 0)
            break;
        const QString piece = mid(text, lineStart, p - lineStart);
        if (textWidth(piece) < width) {
            setLine(lines, lineNo, piece);
            wordStart = p + 1;
        } else if (wordStart == 1) {
            tooSmall();
            return;
        } else {
            // The word that overflowed starts the next line; it is measured
            // only together with the words that follow it.
            ++lineNo;
            setLine(lines, lineNo, mid(text, wordStart, p - wordStart));
            lineStart = wordStart;
            wordStart = p + 1;
        }
        from = p + 1;
    }
    const QString rest = mid(text, lineStart);
    if (textWidth(rest) > width) {
        if (wordStart == 1) {
            tooSmall();
            return;
        }
        setLine(lines, lineNo, mid(text, lineStart, wordStart - lineStart));
        ++lineNo;
        setLine(lines, lineNo, mid(text, wordStart));
    } else {
        setLine(lines, lineNo, rest);
    }
}

} // namespace

void WrapHelpText(const QString& text, float width, const TextMeasure& textWidth,
                  QStringList& lines, rt::PictureBox* box) {
    // A failure here must not take the whole help down: the lines wrapped so
    // far stay, and the user learns what went wrong.
    RuntimeError error{0, QString()};
    try {
        wrap(text, width, textWidth, lines);
        return;
    } catch (const RuntimeError& e) {
        error = e;
    } catch (const std::bad_alloc&) {
        error = OutOfMemory;
    }
    if (error.number == InvalidArgument.number) {
        rt::MsgBox(QLatin1Char(' ') + QString::number(error.number) + error.description, 0);
        if (box)
            box->setVisible(false);
    } else {
        rt::MsgBox(QString::number(error.number), 0);
    }
}

void WrapHelpText(const QString& text, float width, rt::PictureBox& box, QStringList& lines) {
    WrapHelpText(
        text, width, [&box](const QString& piece) { return double(box.TextWidth(piece)); }, lines,
        &box);
}

} // namespace HelpMgmt
