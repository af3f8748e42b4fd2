#pragma once
// Bringing pictures of any kind into a game's image folder as the kinds the
// engine reads: BMP, JPEG and GIF.

#include <QColor>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace images {

enum class Conflict { Replace, KeepBoth, Skip, Cancel };

struct Imported {
    QString source;         // as given
    QString name;           // the file name in the folder ("" when skipped or refused; the
                            // file already there when skipped for holding the same bytes)
    bool converted = false; // decoded and written as another kind
    bool flattened = false; // transparency filled with `flattenColour()`
    bool renamed = false;   // characters the game file or the folder cannot hold taken out
    bool skipped = false;   // the user chose Skip, or the same file (same bytes) is already there
    QString message;        // the reason when refused (name + why); empty when fine
};

struct ImportOptions {
    // Asked when a file of the chosen name exists with different content. KeepBoth picks a free
    // name "base-2.ext", "base-3.ext"... Cancel stops the whole import: files already brought in
    // stay. Without it, KeepBoth.
    std::function<Conflict(const QString& existingName, const QString& source)> onConflict;
};

// White: what transparent parts become.
QColor flattenColour();

// Brings each source into `dir`, one result per source in order. BMP, JPEG and GIF, told by
// their content, are copied byte for byte (a JPEG gets ".jpg"); any other kind Qt reads is
// decoded and written as BMP, or as JPEG when the source itself is lossy (WebP VP8), with
// transparency flattened on flattenColour(). A refused file gets its reason; the others go on.
std::vector<Imported> importImages(const QStringList& sources, const QString& dir,
                                   const ImportOptions& options);

// One line per file for the user, e.g.
// "knight.png -> knight.bmp (converted; transparent parts filled with white)".
QString importReport(const std::vector<Imported>& results);

} // namespace images
