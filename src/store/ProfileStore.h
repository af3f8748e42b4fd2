#pragma once

#include <QString>

#include <functional>

namespace store {

// One value of a profile (INI) file. Section and key names match in any case;
// a missing file, section or key gives "". At most 254 characters come back.
QString ReadProfileValue(const QString& section, const QString& key, const QString& file);

// Sets one key and keeps every other byte of the file. The change is held in
// memory (a read sees it at once) until FlushProfiles(). Nonzero when accepted;
// 0 when the file cannot be written, after the error handler has run.
int WriteProfileValue(const QString& section, const QString& key, const QString& value,
                      const QString& file);

// Writes out every pending change: one atomic replace per changed file.
void FlushProfiles();

// Called with the file's path and a short reason whenever a write fails.
void SetProfileWriteErrorHandler(
    std::function<void(const QString& file, const QString& reason)> handler);

// Forgets every parsed file and every pending change.
void DropProfileCache();

} // namespace store
