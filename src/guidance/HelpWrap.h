#pragma once
// The word wrap of a help note: the text broken at blanks into lines that fit
// a box, by the measured width of the box's font.

#include <QString>
#include <QStringList>

#include <functional>

namespace rt {
class PictureBox;
}

namespace HelpMgmt {

// The width of a piece of text, in the unit of the box's ScaleWidth.
using TextMeasure = std::function<double(const QString&)>;

// A failure of the run time inside the wrap: its number and its own text.
struct RuntimeError {
    int number;
    QString description;
};

// Fills `lines` anew, at least two entries. A first word that does not fit
// brings up "Box Too Small For Words" and leaves the two entries empty.
void WrapHelpText(const QString& text, float width, rt::PictureBox& box, QStringList& lines);
// The same with any measure; `box`, when given, is hidden after error 5.
void WrapHelpText(const QString& text, float width, const TextMeasure& textWidth,
                  QStringList& lines, rt::PictureBox* box);

} // namespace HelpMgmt
