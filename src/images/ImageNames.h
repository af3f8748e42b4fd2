#pragma once
// Names that images take in a game's folder.

#include <QByteArray>
#include <QString>

namespace images {

// `name` without what a card line, the single-byte game file or a Windows
// folder cannot hold: ",", control characters, \ / : * ? " < > |, characters
// outside Windows-1252, and blanks or dots at either end (Windows drops
// those). May be empty.
QString cleanBaseName(const QString& name);

// The extension a file of content `format` gets: the source's own when it
// already names that kind ("CARD.BMP" stays), otherwise bmp, jpg or gif.
QString extensionFor(const QByteArray& format, const QString& sourceSuffix);

// Whether a file name is of a kind the game and the engine read.
bool isGameImageName(const QString& name);

} // namespace images
