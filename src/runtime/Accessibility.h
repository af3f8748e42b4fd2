#pragma once
// What a screen reader and UI-automation tools see of a form: a name for every
// control a user reaches, and a Tab chain that reads the page as it is laid out.

#include <QString>
#include <memory>
#include <vector>

namespace rt {

class Control;
class Form;

// A caption as it is read aloud: "&&" is one ampersand, a single "&" only
// marks the access key, and line breaks are blanks.
QString spokenCaption(const QString& caption);

// A captioned control goes by its caption; a label also renames the field it
// names.
void captionChanged(Control& control, const QString& caption);

// Names each field after the label beside it (left of it on its line, else
// just above it) and orders the Tab chain page by page, line by line, left to
// right. Call once all controls of the form are built.
void describeForm(Form& form, const std::vector<std::unique_ptr<Control>>& controls);

} // namespace rt
