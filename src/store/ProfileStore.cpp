#include "store/ProfileStore.h"

#include "store/AtomicFile.h"
#include "store/ProfileDocument.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMutex>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace store {

using namespace detail;

namespace {

// What tells us that somebody else changed the file since we parsed it.
struct Signature {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 mtimeSec = 0;
    qint64 mtimeNsec = 0;
    // A chmod touches neither size nor mtime, yet decides whether we may write.
    qint64 ctimeSec = 0;
    qint64 ctimeNsec = 0;
    mode_t mode = 0;

    static Signature of(const struct stat& st) {
        return {true,
                st.st_dev,
                st.st_ino,
                st.st_size,
                st.st_mtim.tv_sec,
                st.st_mtim.tv_nsec,
                st.st_ctim.tv_sec,
                st.st_ctim.tv_nsec,
                st.st_mode};
    }
    bool operator==(const Signature&) const = default;
};

struct PendingWrite {
    QString section;
    QString key;
    QString value;
};

struct Entry {
    QString path;
    QByteArray nativePath;
    Signature signature;
    bool parsed = false;
    int readError = 0; // errno of a file that exists but cannot be read
    struct stat status {};
    QByteArray diskBytes;
    ProfileDocument document;
    std::vector<PendingWrite> pending;
    bool writableChecked = false; // for the current signature
};

struct Failure {
    QString file;
    QString reason;
};

QRecursiveMutex g_mutex;
int g_batchDepth = 0; // WriteBatch objects alive
QHash<QString, std::shared_ptr<Entry>> g_entries;
std::function<void(const QString&, const QString&)> g_errorHandler;

Signature statSignature(const QByteArray& nativePath, struct stat* out = nullptr) {
    struct stat st {};
    if (::stat(nativePath.constData(), &st) != 0)
        return {};
    if (out)
        *out = st;
    return Signature::of(st);
}

void readFromDisk(Entry& entry) {
    entry.diskBytes.clear();
    entry.readError = 0;
    entry.signature = {};
    entry.status = {};
    const int fd = ::open(entry.nativePath.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno != ENOENT && errno != ENOTDIR) {
            entry.readError = errno;
            entry.signature = statSignature(entry.nativePath, &entry.status);
        }
    } else {
        struct stat st {};
        if (::fstat(fd, &st) == 0) {
            entry.status = st;
            entry.signature = Signature::of(st);
            if (S_ISDIR(st.st_mode)) {
                entry.readError = EISDIR;
            } else {
                QByteArray bytes;
                bytes.reserve(st.st_size > 0 ? st.st_size : 0);
                char chunk[65536];
                for (;;) {
                    const ssize_t n = ::read(fd, chunk, sizeof chunk);
                    if (n < 0 && errno == EINTR)
                        continue;
                    if (n < 0) {
                        entry.readError = errno;
                        bytes.clear();
                        break;
                    }
                    if (n == 0)
                        break;
                    bytes.append(chunk, n);
                }
                entry.diskBytes = std::move(bytes);
            }
        }
        ::close(fd);
    }
    entry.document.load(entry.diskBytes);
    entry.parsed = true;
    entry.writableChecked = false;
}

// Brings the parsed image up to date with the disk. Changes made here and not
// yet flushed go on top of what another program wrote, in their order.
void refresh(Entry& entry) {
    if (entry.parsed && statSignature(entry.nativePath) == entry.signature)
        return;
    readFromDisk(entry);
    std::vector<PendingWrite> replay;
    replay.swap(entry.pending);
    for (PendingWrite& write : replay) {
        if (entry.document.write(write.section, write.key, write.value))
            entry.pending.push_back(std::move(write));
    }
}

std::shared_ptr<Entry> entryFor(const QString& file) {
    auto it = g_entries.constFind(file);
    if (it != g_entries.cend())
        return *it;
    auto entry = std::make_shared<Entry>();
    entry->path = file;
    entry->nativePath = QFile::encodeName(
        QDir::isAbsolutePath(file) ? file : QDir::current().absoluteFilePath(file));
    g_entries.insert(file, entry);
    return entry;
}

// Why the file cannot be replaced, if it cannot.
std::optional<QString> unwritableReason(const Entry& entry) {
    if (entry.signature.exists) {
        if (auto refusal = replaceRefusal(entry.status, ::geteuid()))
            return refusal;
    }
    if (entry.document.isBroken())
        return QStringLiteral("the file's text ends inside a character");
    if (entry.readError != 0)
        return QStringLiteral("the file cannot be read: ") + errnoText(entry.readError);
    const QByteArray folder = parentFolder(resolveLinks(entry.nativePath));
    struct stat st {};
    if (::stat(folder.constData(), &st) != 0 || !S_ISDIR(st.st_mode))
        return QStringLiteral("the folder does not exist");
    if (::access(folder.constData(), W_OK | X_OK) != 0)
        return QStringLiteral("the folder is not writable");
    return std::nullopt;
}

void report(const std::vector<Failure>& failures) {
    std::function<void(const QString&, const QString&)> handler;
    {
        QMutexLocker lock(&g_mutex);
        handler = g_errorHandler;
    }
    if (!handler)
        return;
    for (const Failure& failure : failures)
        handler(failure.file, failure.reason);
}

std::optional<QString> flushEntry(Entry& entry) {
    refresh(entry);
    if (entry.pending.empty())
        return std::nullopt;
    const QByteArray bytes = entry.document.serialize();
    if (bytes == entry.diskBytes) {
        entry.pending.clear();
        return std::nullopt;
    }
    if (auto reason = unwritableReason(entry))
        return reason;
    const QByteArray target = resolveLinks(entry.nativePath);
    if (auto reason = replaceFile(target, bytes, entry.signature.exists ? &entry.status : nullptr))
        return reason;
    entry.pending.clear();
    entry.diskBytes = bytes;
    entry.signature = statSignature(entry.nativePath, &entry.status);
    entry.writableChecked = false;
    return std::nullopt;
}

} // namespace

QString ReadProfileValue(const QString& section, const QString& key, const QString& file) {
    QMutexLocker lock(&g_mutex);
    const auto entry = entryFor(file);
    refresh(*entry);
    return entry->document.read(section, key);
}

int WriteProfileValue(const QString& section, const QString& key, const QString& value,
                      const QString& file) {
    std::vector<Failure> failures;
    {
        QMutexLocker lock(&g_mutex);
        const auto entry = entryFor(file);
        refresh(*entry);
        std::optional<QString> reason;
        if (!entry->writableChecked)
            reason = unwritableReason(*entry);
        if (!reason) {
            entry->writableChecked = true;
            if (entry->document.write(section, key, value))
                entry->pending.push_back({section, key, value});
            if (g_batchDepth > 0)
                return 1;
            reason = flushEntry(*entry);
            if (!reason)
                return 1;
            g_entries.remove(entry->path); // the next read sees the disk
        }
        failures.push_back({file, *reason});
    }
    report(failures);
    return 0;
}

void FlushProfiles() {
    std::vector<Failure> failures;
    {
        QMutexLocker lock(&g_mutex);
        std::vector<std::shared_ptr<Entry>> dirty;
        for (const auto& entry : std::as_const(g_entries)) {
            if (!entry->pending.empty())
                dirty.push_back(entry);
        }
        for (const auto& entry : dirty) {
            if (auto reason = flushEntry(*entry)) {
                // What could not be saved is gone; the next read sees the disk.
                failures.push_back({entry->path, *reason});
                g_entries.remove(entry->path);
            }
        }
    }
    report(failures);
}

WriteBatch::WriteBatch() {
    QMutexLocker lock(&g_mutex);
    ++g_batchDepth;
}

WriteBatch::~WriteBatch() {
    {
        QMutexLocker lock(&g_mutex);
        if (--g_batchDepth > 0)
            return;
    }
    FlushProfiles();
}

void SetProfileWriteErrorHandler(
    std::function<void(const QString& file, const QString& reason)> handler) {
    QMutexLocker lock(&g_mutex);
    g_errorHandler = std::move(handler);
}

void DropProfileCache() {
    QMutexLocker lock(&g_mutex);
    g_entries.clear();
}

} // namespace store
