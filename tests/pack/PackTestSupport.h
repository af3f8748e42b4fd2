#pragma once
// Archives made in the test with libarchive's writer, hostile ones included,
// and the state of a folder to compare before and after.

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

#include <archive.h>
#include <archive_entry.h>
#include <vector>

namespace packtest {

struct Item {
    Item(QByteArray n, QByteArray d = {}, int t = AE_IFREG, QByteArray l = {}, bool h = false)
        : name(std::move(n)), data(std::move(d)), type(t), link(std::move(l)), hardlink(h) {}
    QByteArray name;
    QByteArray data;
    int type = AE_IFREG; // AE_IFLNK with `link` as target
    QByteArray link;
    bool hardlink = false; // `link` names the entry it links to
};

// Writes `items` as a ZIP; `passphrase` encrypts every entry.
inline void writeZip(const QString& path, const std::vector<Item>& items, bool deflate = true,
                     const char* passphrase = nullptr) {
    archive* a = archive_write_new();
    archive_write_set_format_zip(a);
    if (passphrase) {
        archive_write_set_options(a, "zip:encryption=zipcrypt");
        archive_write_set_passphrase(a, passphrase);
    }
    archive_write_open_filename(a, QFile::encodeName(path).constData());
    for (const Item& item : items) {
        archive_entry* e = archive_entry_new();
        archive_entry_copy_pathname(e, item.name.constData());
        archive_entry_set_filetype(e, static_cast<unsigned>(item.type));
        archive_entry_set_perm(e, 0644);
        if (item.type == AE_IFLNK)
            archive_entry_copy_symlink(e, item.link.constData());
        if (item.hardlink)
            archive_entry_copy_hardlink(e, item.link.constData());
        archive_entry_set_size(e, item.type == AE_IFREG ? item.data.size() : 0);
        if (deflate)
            archive_write_zip_set_compression_deflate(a);
        else
            archive_write_zip_set_compression_store(a);
        archive_write_header(a, e);
        if (!item.data.isEmpty())
            archive_write_data(a, item.data.constData(), static_cast<size_t>(item.data.size()));
        archive_entry_free(e);
    }
    archive_write_close(a);
    archive_write_free(a);
}

// Every file and folder below `dir`, hidden ones too, with the files' bytes.
inline QMap<QString, QByteArray> snapshot(const QString& dir) {
    QMap<QString, QByteArray> state;
    QDirIterator it(dir, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        const QString rel = QDir(dir).relativeFilePath(path);
        state[rel] = it.fileInfo().isDir() || !file.open(QIODevice::ReadOnly)
                         ? QByteArrayLiteral("<dir>")
                         : file.readAll();
    }
    return state;
}

inline QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void put(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

// A small game in `dir`: one common deck of three named images, one of which
// the folder lacks, and a file there that the game does not name.
inline QString makeGame(const QString& dir) {
    put(dir + "/Duel.game",
        "[GAME]\r\nname=Duel\r\nplayers=1\r\ndirectory=cards\r\ncommon_decks=1\r\n"
        "desktop=table.bmp\r\n[Player 1]\r\nname=Ann\r\ndecks=1\r\n"
        "[COMMON 1]\r\ndecksize=2\r\nimg_back=back.jpg\r\nimg_discard=pile.gif\r\n"
        "card1=(x3)knight.bmp,,Value=3\r\ncard2=QUEEN.JPG\r\n"
        "[DECK 1 PLAYER 1]\r\ndecksize=1\r\nimg_back=back.jpg\r\ncard1=gone.bmp\r\n");
    put(dir + "/cards/table.bmp", QByteArray(40000, 'T'));
    put(dir + "/cards/back.jpg", QByteArray("\xFF\xD8\xFF\xE0") + QByteArray(3000, 'b'));
    put(dir + "/cards/pile.gif", QByteArray("GIF89a") + QByteArray(100, 'p'));
    put(dir + "/cards/knight.bmp", QByteArray(9000, 'k'));
    put(dir + "/cards/queen.jpg", QByteArray("\xFF\xD8\xFF\xE1") + QByteArray(2000, 'q'));
    put(dir + "/cards/unused.bmp", QByteArray(10, 'u'));
    return dir + "/Duel.game";
}

} // namespace packtest
