#pragma once
// Module variables by their names, for tools that read or set them.

#include <QString>
#include <QVariant>

namespace wizard {

// `name` as "Globals.CurrentFrame", "HelpMgmt.HelpLines" (with index),
// "HelpMgmt.HelpLines.Count" or "TreeForm.TreeRefCount"; index -1 when none.
// Returns false for a name that is not a module variable (or a form variable
// of a form that is not loaded).
bool readVariable(const QString& name, int index, QVariant& out);
bool writeVariable(const QString& name, int index, const QVariant& value);
bool isVariableName(const QString& name);

} // namespace wizard
