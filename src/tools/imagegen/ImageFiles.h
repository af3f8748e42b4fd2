#pragma once
// Plain one-colour image files of a given size, for test folders and the
// sample game. Qt reads GIF but cannot write it, so GIF has an encoder here.

#include <QRgb>
#include <QString>

// Writes a W x H image filled with `colour`; the format follows the extension
// of `path` (.bmp, .jpg, .jpeg, .gif, .png, any case). On failure returns false
// and, when `error` is given, says why.
bool writeImageFile(const QString& path, int w, int h, QRgb colour, QString* error = nullptr);
