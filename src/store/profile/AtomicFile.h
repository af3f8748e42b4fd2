#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/stat.h>

namespace Globals::ProfileDetail {

// The file a path finally names, following symbolic links, so that a link
// stays a link and its target gets the new text.
QByteArray resolveLinks(const QByteArray& path);

QByteArray parentFolder(const QByteArray& path);

// Replaces `path` by `bytes` so that a crash at any moment leaves either the
// old or the new file: a temporary file in the same folder, flushed to disk,
// renamed over the old one. `existing` is the old file's status, whose
// permissions and owner the new file keeps. Gives the reason on failure; the
// old file is then untouched.
std::optional<QString> replaceFile(const QByteArray& path, const QByteArray& bytes,
                                   const struct stat* existing);

QString errnoText(int error);

} // namespace Globals::ProfileDetail
