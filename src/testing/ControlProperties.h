#pragma once
// The properties of a control by the names the scenario files use, for the
// driver and the tests. The program itself speaks to its controls through
// their typed members only, so none of this is linked into it.

#include <QString>
#include <QVariant>

namespace rt {
class Control;
}

namespace testsupport {

// False for a property that this kind of control does not have, or for an
// index out of its range.
bool getProperty(const rt::Control& control, const QString& prop, int index, QVariant& out);
// An assignment made by code, with the events the run time ties to it.
bool setProperty(rt::Control& control, const QString& prop, int index, const QVariant& value);
// The same for properties with two indices, a table's Cell(ROW,COL); index2
// is -1 for the others.
bool getProperty(const rt::Control& control, const QString& prop, int index, int index2,
                 QVariant& out);
bool setProperty(rt::Control& control, const QString& prop, int index, int index2,
                 const QVariant& value);

} // namespace testsupport
