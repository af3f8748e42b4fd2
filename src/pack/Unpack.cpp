#include "pack/Unpack.h"

#include "pack/EntryCount.h"
#include "pack/EntryNames.h"
#include "pack/Staging.h"

#include "game/GameFile.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pack {
namespace {

constexpr int ReadBlock = 1 << 16;

QString label(const QByteArray& raw) {
    QString text = QString::fromUtf8(raw.left(80));
    return raw.size() > 80 ? text + QStringLiteral("...") : text;
}

struct Scan {
    QString error;
    QString game; // NAME.game
    QString folder;
    QStringList images; // file names in the folder
    qint64 bytes = 0;
};

bool writeAll(int fd, const char* data, size_t size) {
    while (size > 0) {
        const ssize_t done = ::write(fd, data, size);
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            return false;
        data += done;
        size -= static_cast<size_t>(done);
    }
    return true;
}

class Reader {
public:
    Reader(const Limits& limits, Staging* staging) : limits_(limits), staging_(staging) {}

    bool run(const QString& zip, Scan& out) {
        std::unique_ptr<archive, int (*)(archive*)> a(archive_read_new(), archive_read_free);
        // The central directory says what each entry is (a link, a device),
        // which the entries' own headers do not; its size is checked first.
        const std::optional<qint64> declared = declaredEntries(zip);
        if (declared && *declared > limits_.maxEntries)
            return fail(
                out, QDir::toNativeSeparators(zip),
                QStringLiteral("%1 entries, more than %2").arg(*declared).arg(limits_.maxEntries));
        archive_read_support_format_zip_seekable(a.get());
        if (archive_read_open_filename(a.get(), QFile::encodeName(zip).constData(), ReadBlock) !=
            ARCHIVE_OK)
            return fail(out, QDir::toNativeSeparators(zip),
                        QStringLiteral("not a ZIP archive, or a damaged one (%1)")
                            .arg(QString::fromLocal8Bit(archive_error_string(a.get()))));
        buffer_.resize(1 << 18);
        archive_entry* entry = nullptr;
        int count = 0;
        int status;
        while ((status = archive_read_next_header(a.get(), &entry)) == ARCHIVE_OK ||
               status == ARCHIVE_WARN) {
            if (++count > limits_.maxEntries)
                return fail(out, QDir::toNativeSeparators(zip),
                            QStringLiteral("more than %1 entries").arg(limits_.maxEntries));
            if (!takeEntry(a.get(), entry, out))
                return false;
        }
        if (status != ARCHIVE_EOF) {
            const QString why = QString::fromLocal8Bit(archive_error_string(a.get()));
            return fail(out, QDir::toNativeSeparators(zip),
                        count == 0 ? QStringLiteral("not a ZIP archive (%1)").arg(why)
                                   : QStringLiteral("a damaged archive (%1)").arg(why));
        }
        if (out.game.isEmpty())
            return fail(out, QDir::toNativeSeparators(zip),
                        QStringLiteral("no .game file at the top of the archive"));
        return true;
    }

private:
    bool fail(Scan& out, const QString& where, const QString& why) {
        out.error = QStringLiteral("%1: %2").arg(where, why);
        return false;
    }

    bool takeEntry(archive* a, archive_entry* entry, Scan& out) {
        const char* utf8 = archive_entry_pathname_utf8(entry);
        const char* bytes = utf8 ? utf8 : archive_entry_pathname(entry);
        const QByteArray raw = bytes ? QByteArray(bytes) : QByteArray();
        const QString name = label(raw);
        if (!bytes)
            return fail(out, QStringLiteral("(entry %1)").arg(seen_.size() + 1),
                        QStringLiteral("a name that is not valid UTF-8 text"));
        EntryPath path;
        QString why;
        if (!parseEntryName(raw, limits_.maxNameBytes, path, why))
            return fail(out, name, why);
        const auto type = archive_entry_filetype(entry);
        if (archive_entry_hardlink(entry))
            return fail(out, name, QStringLiteral("a hard link; only plain files are unpacked"));
        if (type == AE_IFLNK)
            return fail(out, name,
                        QStringLiteral("a symbolic link; only plain files are unpacked"));
        if (archive_entry_is_encrypted(entry))
            return fail(out, name, QStringLiteral("an encrypted entry"));
        if (path.file.isEmpty()) {
            if (type != AE_IFDIR)
                return fail(out, name, QStringLiteral("neither a file nor a folder"));
            return takeFolder(path.folder, name, out);
        }
        if (type != AE_IFREG)
            return fail(
                out, name,
                QStringLiteral("a device or other special file; only plain files are unpacked"));
        const QString key = foldedName(path.folder + QLatin1Char('/') + path.file);
        if (seen_.contains(key))
            return fail(out, name, QStringLiteral("a second entry of this name"));
        seen_.insert(key);
        if (path.folder.isEmpty()) {
            if (!path.file.endsWith(QLatin1String(".game"), Qt::CaseInsensitive) ||
                path.file.size() <= 5)
                return fail(out, name,
                            QStringLiteral("a file beside the game that is not a game; images go "
                                           "in the game's folder"));
            if (!out.game.isEmpty())
                return fail(out, name, QStringLiteral("a second game at the top of the archive"));
            out.game = path.file;
        } else {
            if (!takeFolder(path.folder, name, out))
                return false;
            out.images.append(path.file);
        }
        if (archive_entry_size_is_set(entry) && archive_entry_size(entry) > limits_.maxEntryBytes)
            return fail(out, name,
                        QStringLiteral("%1 bytes, more than %2")
                            .arg(archive_entry_size(entry))
                            .arg(limits_.maxEntryBytes));
        return copyData(a, path, name, out);
    }

    bool takeFolder(const QString& folder, const QString& name, Scan& out) {
        if (out.folder.isEmpty())
            out.folder = folder;
        else if (foldedName(out.folder) != foldedName(folder))
            return fail(out, name,
                        QStringLiteral("a second folder; a game has one folder of images"));
        return true;
    }

    // Reads the entry's data, into the staging folder when there is one,
    // counting as it goes so that a bomb stops at the limit, not at its end.
    bool copyData(archive* a, const EntryPath& path, const QString& name, Scan& out) {
        int fd = -1;
        if (staging_) {
            QString error;
            fd = staging_->createFile(!path.folder.isEmpty(), path.file, error);
            if (fd < 0)
                return fail(out, name, error);
        }
        const qint64 packedStart = archive_filter_bytes(a, -1);
        qint64 written = 0;
        QString refusal;
        for (;;) {
            const la_ssize_t got = archive_read_data(a, buffer_.data(), buffer_.size());
            if (got < 0) {
                refusal = QStringLiteral("cannot be read (%1)")
                              .arg(QString::fromLocal8Bit(archive_error_string(a)));
                break;
            }
            if (got == 0)
                break;
            written += got;
            out.bytes += got;
            const qint64 packed = archive_filter_bytes(a, -1) - packedStart + ReadBlock;
            if (written > limits_.maxEntryBytes)
                refusal = QStringLiteral("expands past %1 bytes").arg(limits_.maxEntryBytes);
            else if (out.bytes > limits_.maxTotalBytes)
                refusal = QStringLiteral("the archive expands past %1 bytes in all")
                              .arg(limits_.maxTotalBytes);
            else if (written > limits_.ratioFrom && written > limits_.maxRatio * double(packed))
                refusal = QStringLiteral("expands more than %1 times its packed size")
                              .arg(limits_.maxRatio);
            else if (fd >= 0 && !writeAll(fd, buffer_.data(), static_cast<size_t>(got)))
                refusal = QStringLiteral("cannot be written: %1")
                              .arg(QString::fromLocal8Bit(std::strerror(errno)));
            if (!refusal.isEmpty())
                break;
        }
        if (fd >= 0 && ::close(fd) != 0 && refusal.isEmpty())
            refusal = QStringLiteral("cannot be written: %1")
                          .arg(QString::fromLocal8Bit(std::strerror(errno)));
        return refusal.isEmpty() || fail(out, name, refusal);
    }

    const Limits& limits_;
    Staging* staging_;
    QSet<QString> seen_;
    std::vector<char> buffer_;
};

QStringList planned(const Scan& scan, const QString& game, const QString& folder) {
    QStringList files{game};
    for (const QString& image : scan.images)
        files.append(folder + QLatin1Char('/') + image);
    return files;
}

bool existsIn(int dirFd, const QString& name) {
    struct stat st {};
    return ::fstatat(dirFd, QFile::encodeName(name).constData(), &st, AT_SYMLINK_NOFOLLOW) == 0;
}

// The first "NAME n" whose game and folder are both new in the target.
void keepBothNames(int target, const Scan& scan, Conflicts& conflicts) {
    const QString base = scan.game.chopped(5);
    for (int n = 2;; ++n) {
        const QString game = QStringLiteral("%1 %2").arg(base).arg(n);
        const QString folder =
            scan.folder.isEmpty() ? QString() : QStringLiteral("%1 %2").arg(scan.folder).arg(n);
        if (!existsIn(target, game + QStringLiteral(".game")) &&
            (folder.isEmpty() || !existsIn(target, folder))) {
            conflicts.keepBothGame = game;
            conflicts.keepBothFolder = folder;
            return;
        }
    }
}

} // namespace

Preview previewArchive(const QString& zip, const QString& target, const Limits& limits) {
    Preview preview;
    Scan scan;
    Reader reader(limits, nullptr);
    if (!reader.run(zip, scan)) {
        preview.error = scan.error;
        return preview;
    }
    preview.ok = true;
    preview.gameName = scan.game.chopped(5);
    preview.folder = scan.folder;
    preview.files = planned(scan, scan.game, scan.folder);
    preview.bytes = scan.bytes;
    for (const QString& file : preview.files)
        if (QFileInfo::exists(target + QLatin1Char('/') + file))
            preview.existing.append(file);
    return preview;
}

UnpackResult unpackArchive(const QString& zip, const QString& target,
                           const ConflictHandler& onConflict, const Limits& limits) {
    UnpackResult result;
    recoverLeftovers(target);
    QString error;
    std::unique_ptr<Staging> staging(Staging::create(target, error));
    if (!staging) {
        result.error = error;
        return result;
    }
    Scan scan;
    if (!Reader(limits, staging.get()).run(zip, scan)) {
        result.status = scan.error.contains(QLatin1String("cannot be written"))
                            ? UnpackResult::Failed
                            : UnpackResult::Refused;
        result.error = scan.error;
        return result;
    }
    const int targetFd = staging->targetFd();
    // The image folder must be a real folder of the target, never a link out of it.
    struct stat st {};
    const QByteArray folderBytes = QFile::encodeName(scan.folder);
    const bool folderThere = !scan.folder.isEmpty() && ::fstatat(targetFd, folderBytes.constData(),
                                                                 &st, AT_SYMLINK_NOFOLLOW) == 0;
    if (folderThere && !S_ISDIR(st.st_mode)) {
        result.status = UnpackResult::Refused;
        result.error = QStringLiteral("%1: already in the target and not a folder (a link or a "
                                      "file); the images cannot go there")
                           .arg(scan.folder);
        return result;
    }
    Conflicts conflicts;
    const int folderFd = folderThere ? ::openat(targetFd, folderBytes.constData(),
                                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)
                                     : -1;
    auto compare = [&](int dir, const QString& name, const QString& staged, const QString& shown) {
        const int old = ::openat(dir, QFile::encodeName(name).constData(),
                                 O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (old < 0 && errno == ENOENT)
            return;
        const int fresh = staging->openStaged(staged);
        const bool same = old >= 0 && fresh >= 0 && sameContent(old, fresh);
        if (old >= 0)
            ::close(old);
        if (fresh >= 0)
            ::close(fresh);
        if (!same)
            conflicts.names.append(shown);
        else if (!staged.isEmpty())
            result.unchanged.append(shown);
    };
    compare(targetFd, scan.game, QString(), scan.game);
    const bool gameSame = conflicts.names.isEmpty() && existsIn(targetFd, scan.game);
    for (const QString& image : scan.images)
        if (folderFd >= 0)
            compare(folderFd, image, image, scan.folder + QLatin1Char('/') + image);
    if (folderFd >= 0)
        ::close(folderFd);

    QString game = scan.game;
    QString folder = scan.folder;
    if (!conflicts.names.isEmpty()) {
        keepBothNames(targetFd, scan, conflicts);
        const Choice choice = onConflict ? onConflict(conflicts) : Choice::Cancel;
        if (choice == Choice::Cancel) {
            result.status = UnpackResult::Cancelled;
            result.error = QStringLiteral("cancelled: %1 would replace a different file")
                               .arg(conflicts.names.join(QStringLiteral(", ")));
            return result;
        }
        if (choice == Choice::KeepBoth) {
            game = conflicts.keepBothGame + QStringLiteral(".game");
            folder = conflicts.keepBothFolder;
            result.unchanged.clear();
            // The copy names its own folder, so neither game sees the other's images.
            const QString staged = staging->gamePath();
            if (!folder.isEmpty() &&
                store::WriteProfileValue(game::section::game(),
                                         QString::fromLatin1(game::key::directory), folder,
                                         staged) == 0) {
                result.error =
                    QStringLiteral("%1: the copy's folder could not be named in it").arg(game);
                return result;
            }
            store::WriteProfileValue(game::section::game(), QString::fromLatin1(game::key::name),
                                     conflicts.keepBothGame, staged);
        }
    }
    if (!result.unchanged.isEmpty())
        for (const QString& image : scan.images)
            if (result.unchanged.contains(scan.folder + QLatin1Char('/') + image))
                staging->drop(image);
    const QStringList all = planned(scan, game, folder);
    for (const QString& file : all)
        if (!result.unchanged.contains(file) && !(gameSame && file == game && game == scan.game))
            result.written.append(file);
    if (gameSame && game == scan.game)
        result.unchanged.prepend(game);
    const QString failed = staging->commit(game, folder);
    if (!failed.isEmpty()) {
        result.error = failed;
        result.written.clear();
        return result;
    }
    result.status = UnpackResult::Done;
    result.gameFile = target + QLatin1Char('/') + game;
    return result;
}

} // namespace pack
