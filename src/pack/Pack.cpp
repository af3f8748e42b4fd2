#include "pack/Pack.h"

#include "pack/EntryNames.h"
#include "pack/GameImages.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace pack {
namespace {

QString errnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

struct ArchiveCloser {
    void operator()(archive* a) const { archive_write_free(a); }
};

struct Source {
    QString path;      // on disk
    QString entryName; // in the archive
};

// The name on disk of the image `name` in `listing`: Windows finds a file in
// any letter case, so the game may spell it differently from the folder.
QString onDisk(const QHash<QString, QString>& listing, const QString& name) {
    return listing.value(foldedName(name));
}

class Writer {
public:
    explicit Writer(int fd) : a_(archive_write_new()) {
        archive_write_set_format_zip(a_.get());
        // The blocks are the archive's own; nothing pads its end.
        archive_write_set_bytes_per_block(a_.get(), 1 << 16);
        archive_write_set_bytes_in_last_block(a_.get(), 1);
        archive_write_set_options(a_.get(), "zip:hdrcharset=UTF-8");
        ok_ = archive_write_open_fd(a_.get(), fd) == ARCHIVE_OK;
    }
    bool ok() const { return ok_; }
    QString error() const { return QString::fromLocal8Bit(archive_error_string(a_.get())); }

    // False with `error` set when the file could not be read or written.
    bool add(const Source& source, QString& error) {
        const QByteArray path = QFile::encodeName(source.path);
        const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        struct stat st {};
        if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
            error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(source.path),
                                                 fd < 0 ? errnoText(errno)
                                                        : QStringLiteral("not a regular file"));
            if (fd >= 0)
                ::close(fd);
            return false;
        }
        buffer_.resize(1 << 18);
        const ssize_t first = ::read(fd, buffer_.data(), buffer_.size());
        if (first < 0) {
            error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(source.path),
                                                 errnoText(errno));
            ::close(fd);
            return false;
        }
        const QByteArray head(buffer_.data(), static_cast<int>(std::min<ssize_t>(first, 16)));
        if (alreadyCompressed(source.entryName, head))
            archive_write_zip_set_compression_store(a_.get());
        else
            archive_write_zip_set_compression_deflate(a_.get());
        std::unique_ptr<archive_entry, void (*)(archive_entry*)> entry(archive_entry_new(),
                                                                       archive_entry_free);
        archive_entry_set_pathname_utf8(entry.get(), source.entryName.toUtf8().constData());
        archive_entry_set_filetype(entry.get(), AE_IFREG);
        archive_entry_set_perm(entry.get(), 0644);
        archive_entry_set_size(entry.get(), st.st_size);
        archive_entry_set_mtime(entry.get(), st.st_mtime, 0);
        bool good = archive_write_header(a_.get(), entry.get()) == ARCHIVE_OK;
        ssize_t got = first;
        while (good && got > 0) {
            good = archive_write_data(a_.get(), buffer_.data(), static_cast<size_t>(got)) == got;
            if (good)
                got = ::read(fd, buffer_.data(), buffer_.size());
        }
        const int readError = got < 0 ? errno : 0;
        ::close(fd);
        if (readError != 0) {
            error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(source.path),
                                                 errnoText(readError));
            return false;
        }
        if (!good || archive_write_finish_entry(a_.get()) != ARCHIVE_OK) {
            error = this->error();
            return false;
        }
        return true;
    }

    bool close() { return archive_write_close(a_.get()) == ARCHIVE_OK; }

private:
    std::unique_ptr<archive, ArchiveCloser> a_;
    std::vector<char> buffer_;
    bool ok_ = false;
};

// What goes in: the game, then its images in the order the game names them.
std::vector<Source> sources(const QString& gameFile, bool allImages, PackResult& result) {
    const QFileInfo game(gameFile);
    std::vector<Source> list{{gameFile, game.fileName()}};
    const GameImages images = namedImages(gameFile);
    if (images.folder.isEmpty()) {
        result.missing = images.names;
        return list;
    }
    const QString folderRefusal =
        images.folder.contains(QLatin1Char('/')) || images.folder.contains(QLatin1Char('\\'))
            ? QStringLiteral("a folder name with a separator")
            : windowsRefusal(images.folder);
    if (!folderRefusal.isEmpty()) {
        result.skipped.append(QStringLiteral("%1: %2").arg(images.folder, folderRefusal));
        result.missing = images.names;
        return list;
    }
    const QDir dir(game.absolutePath() + QLatin1Char('/') + images.folder);
    QHash<QString, QString> listing;
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Name))
        listing.insert(foldedName(name), name);
    auto take = [&](const QString& name) {
        const QString refusal = windowsRefusal(name);
        if (!refusal.isEmpty())
            result.skipped.append(QStringLiteral("%1: %2").arg(name, refusal));
        else
            list.push_back({dir.filePath(name), images.folder + QLatin1Char('/') + name});
    };
    if (allImages) {
        for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Name))
            take(name);
    }
    for (const QString& name : images.names) {
        const QString found = onDisk(listing, name);
        if (found.isEmpty())
            result.missing.append(name);
        else if (!allImages)
            take(found);
    }
    return list;
}

} // namespace

PackResult packGame(const QString& gameFile, const QString& outZip, bool allImages) {
    PackResult result;
    const QFileInfo game(gameFile);
    if (!game.isFile()) {
        result.error =
            QStringLiteral("%1: no such game file").arg(QDir::toNativeSeparators(gameFile));
        return result;
    }
    const QString gameRefusal = windowsRefusal(game.fileName());
    if (!gameRefusal.isEmpty()) {
        result.error = QStringLiteral("%1: %2").arg(game.fileName(), gameRefusal);
        return result;
    }
    const std::vector<Source> list = sources(gameFile, allImages, result);

    // The new archive gets its name only when whole: a failure leaves an
    // older archive of that name as it was.
    const QFileInfo out(outZip);
    QByteArray temp = QFile::encodeName(out.absolutePath() + QStringLiteral("/.") + out.fileName() +
                                        QStringLiteral(".zavik-pack-XXXXXX"));
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        result.error = QStringLiteral("cannot write in %1: %2")
                           .arg(QDir::toNativeSeparators(out.absolutePath()), errnoText(errno));
        return result;
    }
    bool good = true;
    {
        Writer writer(fd);
        good = writer.ok();
        if (!good)
            result.error = writer.error();
        for (const Source& source : list) {
            if (!good)
                break;
            good = writer.add(source, result.error);
            if (good)
                result.packed.append(source.entryName);
        }
        if (good && !writer.close()) {
            good = false;
            result.error = writer.error();
        }
    }
    struct stat st {};
    if (good && (::fsync(fd) != 0 || ::fstat(fd, &st) != 0)) {
        good = false;
        result.error = errnoText(errno);
    }
    ::fchmod(
        fd, 0644 & ~[] {
            mode_t m = ::umask(0);
            ::umask(m);
            return m;
        }());
    ::close(fd);
    if (good && ::rename(temp.constData(), QFile::encodeName(outZip).constData()) != 0) {
        good = false;
        result.error =
            QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(outZip), errnoText(errno));
    }
    if (!good) {
        ::unlink(temp.constData());
        result.packed.clear();
        return result;
    }
    result.bytes = st.st_size;
    result.ok = true;
    return result;
}

} // namespace pack
