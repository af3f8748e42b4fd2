#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/stat.h>

namespace store::detail {

// The file a path finally names, following symbolic links, so that a link
// stays a link and its target gets the new text.
QByteArray resolveLinks(const QByteArray& path);

QByteArray parentFolder(const QByteArray& path);

// Why `user` may not replace the file `file` describes, if not. A file with no
// write bit is read-only for everyone, root too, as on Windows. A replace
// makes the new file its writer's, and only root can hand it back: so a file
// of another user is left alone, whatever its mode.
std::optional<QString> replaceRefusal(const struct stat& file, uid_t user);

// Replaces `path` by `bytes` so that a crash at any moment leaves either the
// old or the new file: a temporary file in the same folder, flushed to disk,
// renamed over the old one. The temporary file has no name until it is
// complete, where the file system allows; what a killed save of this file
// left behind otherwise goes at the next one. `existing` is the old file's
// status, whose permissions and owner the new file keeps. Gives the reason on
// failure; the old file is then untouched.
std::optional<QString> replaceFile(const QByteArray& path, const QByteArray& bytes,
                                   const struct stat* existing);

// What flushes a file's data to the disk (fsync unless a test says otherwise).
using SyncFunction = int (*)(int fd);
void setSyncFunction(SyncFunction sync);

QString errnoText(int error);

// The process's umask, which a new file's permissions answer to.
mode_t creationMask();

} // namespace store::detail
