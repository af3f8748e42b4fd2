#pragma once
// The file operations of the run time, with the rules of a Windows file system
// where the program relies on them: names come in case-insensitive alphabetical
// order, wildcards match without regard to case, and a file without any write
// permission bit counts as read-only.

#include <QImage>
#include <QString>
#include <QStringList>

namespace rt {

enum Attr : int {
    vbNormal = 0,
    vbReadOnly = 1,
    vbHidden = 2,
    vbSystem = 4,
    vbDirectory = 16,
    vbArchive = 32,
};

// The first name that matches `spec` (a folder and a pattern with * and ?),
// without its folder; "" when there is none. Attributes 0 give ordinary files
// only; vbDirectory adds folders, the entries "." and ".." among them.
QString Dir(const QString& spec, int attributes = vbNormal);
// The next match of the last Dir(spec); "" at the end.
QString Dir();

// Attribute bits of a path; -1 when it does not exist.
int GetAttr(const QString& path);

// Creates a folder; on failure returns false and says why.
bool MkDir(const QString& path, QString* reason = nullptr);

// The names in `folder` that match any of the patterns separated by ";",
// ordinary files only, in the order Dir gives.
QStringList listFiles(const QString& folder, const QString& patterns);

// Wildcard match of a whole name, * and ? with no regard to case.
bool matchesPattern(const QString& name, const QString& pattern);

// Orders names as a Windows file system lists them.
bool nameLess(const QString& a, const QString& b);

// An image file; a null image when it is missing or unreadable.
QImage LoadPicture(const QString& path);

} // namespace rt
