#pragma once

#include <QString>

#include <functional>

namespace store {

// One value of a profile (INI) file. Section and key names match in any case;
// a missing file, section or key gives "". At most 254 characters come back.
QString ReadProfileValue(const QString& section, const QString& key, const QString& file);

// Sets one key and keeps every other byte of the file. Outside a WriteBatch
// the file on disk has the change when the call returns; inside one, the
// change is held in memory (a read sees it at once) until the outermost batch
// ends. Nonzero when accepted; 0 when the file cannot be written, after the
// error handler has run.
int WriteProfileValue(const QString& section, const QString& key, const QString& value,
                      const QString& file);

// The writes of one save reach the disk together, one atomic replace for each
// file, when the outermost batch alive ends: a save of two hundred cards is
// one replace, and a kill leaves the file as it was before or after the save.
class WriteBatch {
public:
    WriteBatch();
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;
};

// Writes out every change still held: one atomic replace per changed file.
void FlushProfiles();

// Called with the file's path and a short reason whenever a write fails.
void SetProfileWriteErrorHandler(
    std::function<void(const QString& file, const QString& reason)> handler);

// Forgets every parsed file and every pending change.
void DropProfileCache();

} // namespace store
