// Archives that must be refused: each names the entry and the reason, and the
// target folder is left exactly as it was.

#include "PackTestSupport.h"

#include "pack/Unpack.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace packtest;

namespace {

const QByteArray Game = "[GAME]\r\ndirectory=d\r\n";

struct Hostile {
    std::vector<Item> items;
    const char* entry; // as the refusal names it
    const char* reason;
};

// A ZIP made on Unix whose central directory gives the first entry `mode`.
void setFirstMode(const QString& path, unsigned mode) {
    QByteArray bytes = bytesOf(path);
    const int at = bytes.indexOf("PK\x01\x02");
    ASSERT_GE(at, 0);
    bytes[at + 5] = 3; // made by Unix
    const quint32 external = mode << 16;
    for (int i = 0; i < 4; ++i)
        bytes[at + 38 + i] = static_cast<char>((external >> (8 * i)) & 0xFF);
    put(path, bytes);
}

class HostileArchive : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(work.isValid());
        target = work.path() + "/target";
        put(target + "/Old.game", "[GAME]\r\n");
        put(target + "/d/keep.jpg", "mine");
        zip = work.path() + "/in.zip";
        before = snapshot(target);
    }
    // Refused, naming `entry` and `reason`, with nothing changed.
    void expectRefused(const char* entry, const char* reason, const pack::Limits& limits = {}) {
        const pack::UnpackResult result = pack::unpackArchive(
            zip, target,
            [](const pack::Conflicts&) {
                ADD_FAILURE() << "a refused archive reached the conflict question";
                return pack::Choice::Replace;
            },
            limits);
        EXPECT_EQ(result.status, pack::UnpackResult::Refused) << result.error;
        EXPECT_TRUE(result.error.contains(QString::fromUtf8(entry))) << result.error;
        EXPECT_TRUE(result.error.contains(QString::fromUtf8(reason))) << result.error;
        EXPECT_EQ(snapshot(target), before);
        const pack::Preview preview = pack::previewArchive(zip, target, limits);
        EXPECT_FALSE(preview.ok);
        EXPECT_EQ(preview.error, result.error);
    }
    QTemporaryDir work;
    QString target, zip;
    QMap<QString, QByteArray> before;
};

TEST_F(HostileArchive, NamesAndKindsAreRefusedWithTheirReason) {
    // The reader turns a backslash into a folder separator, so "x\\..\\..\\y" is
    // refused for its "..".
    const std::vector<Hostile> cases = {
        {{{"G.game", Game}, {"../../x", "x"}}, "../../x", "\"..\""},
        {{{"G.game", Game}, {"/etc/x", "x"}}, "/etc/x", "absolute path"},
        {{{"G.game", Game}, {"C:\\x", "x"}}, "C:", "drive letter"},
        {{{"G.game", Game}, {"x\\..\\..\\y", "x"}}, "y", "\"..\""},
        {{{"G.game", Game}, {"d/l", {}, AE_IFLNK, "/tmp"}, {"d/l/x.jpg", "x"}},
         "d/l",
         "symbolic link"},
        {{{"G.game", Game}, {"d/a.jpg", "1"}, {"d/A.JPG", "2"}}, "d/A.JPG", "second entry"},
        {{{"G.game", Game}, {"d/" + QByteArray(5000, 'n'), "x"}}, "d/nnn", "5002 bytes"},
        {{{"G.game", Game}, {"d/\xff\xfe.jpg", "x"}}, "", "UTF-8"},
        {{{"d/a.jpg", "a"}}, "in.zip", "no .game"},
        {{{"G.game", Game}, {"H.game", Game}}, "H.game", "second game"},
        {{{"G.game", Game}, {"d/CON.jpg", "x"}}, "d/CON.jpg", "device name CON"},
        {{{"G.game", Game}, {"d/com7", "x"}}, "d/com7", "device name COM7"},
        {{{"G.game", Game}, {"d/a?.jpg", "x"}}, "d/a?.jpg", "character ?"},
        {{{"G.game", Game}, {"d/a.jpg.", "x"}}, "d/a.jpg.", "ending in a dot"},
        {{{"G.game", Game}, {"d/e/a.jpg", "x"}}, "d/e/a.jpg", "folder inside"},
        {{{"G.game", Game}, {"d/a.jpg", "x"}, {"e/b.jpg", "y"}}, "e/b.jpg", "second folder"},
        {{{"G.game", Game}, {"readme.txt", "x"}}, "readme.txt", "not a game"},
    };
    for (const Hostile& c : cases) {
        SCOPED_TRACE(c.reason);
        writeZip(zip, c.items);
        expectRefused(c.entry, c.reason);
    }
}

TEST_F(HostileArchive, DevicesEncryptionAndBrokenFilesAreRefused) {
    writeZip(zip, {{"d/dev.jpg", "x"}, {"G.game", Game}});
    setFirstMode(zip, S_IFCHR | 0644);
    expectRefused("d/dev.jpg", "device");

    writeZip(zip, {{"G.game", Game}, {"d/a.jpg", "secret"}}, true, "pass");
    expectRefused("G.game", "encrypted");

    put(zip, "this is no archive at all");
    expectRefused("in.zip", "not a ZIP");

    writeZip(zip, {{"G.game", Game}, {"d/a.bmp", QByteArray(300000, 'a')}}, false);
    QByteArray cut = bytesOf(zip);
    put(zip, cut.left(cut.size() / 2));
    expectRefused("in.zip", "");
}

TEST_F(HostileArchive, LimitsStopWhileReading) {
    // 256 MB of one byte deflates to a quarter of a megabyte; the reader
    // stops long before the end.
    {
        archive* a = archive_write_new();
        archive_write_set_format_zip(a);
        archive_write_open_filename(a, QFile::encodeName(zip).constData());
        for (const char* name : {"G.game", "d/bomb.bmp"}) {
            archive_entry* e = archive_entry_new();
            archive_entry_copy_pathname(e, name);
            archive_entry_set_filetype(e, AE_IFREG);
            archive_entry_set_perm(e, 0644);
            const bool bomb = name[0] == 'd';
            archive_entry_set_size(e, bomb ? qint64(256) << 20 : Game.size());
            archive_write_zip_set_compression_deflate(a);
            archive_write_header(a, e);
            if (!bomb)
                archive_write_data(a, Game.constData(), static_cast<size_t>(Game.size()));
            const QByteArray zeros(1 << 20, '\0');
            for (int i = 0; bomb && i < 256; ++i)
                archive_write_data(a, zeros.constData(), static_cast<size_t>(zeros.size()));
            archive_entry_free(e);
        }
        archive_write_close(a);
        archive_write_free(a);
    }
    expectRefused("d/bomb.bmp", "times its packed size");

    pack::Limits small;
    small.maxTotalBytes = 1000000;
    std::vector<Item> items{{"G.game", Game}};
    for (int i = 0; i < 3; ++i)
        items.push_back({"d/" + QByteArray::number(i) + ".bmp", QByteArray(400000, 'a' + i)});
    writeZip(zip, items);
    expectRefused("d/2.bmp", "in all", small);

    items.assign(1, {"G.game", Game});
    for (int i = 0; i < 25000; ++i)
        items.push_back({"d/" + QByteArray::number(i) + ".jpg", {}});
    writeZip(zip, items, false);
    expectRefused("in.zip", "more than 20000");
}

TEST_F(HostileArchive, TargetThatCannotTakeTheGame) {
    // A link where the image folder goes would carry the images out of the target.
    writeZip(zip, {{"G.game", Game}, {"e/a.jpg", "a"}});
    ASSERT_EQ(::symlink(QFile::encodeName(work.path()).constData(),
                        QFile::encodeName(target + "/e").constData()),
              0);
    before = snapshot(target);
    const pack::UnpackResult linked = pack::unpackArchive(zip, target, {});
    EXPECT_EQ(linked.status, pack::UnpackResult::Refused);
    EXPECT_TRUE(linked.error.contains("not a folder")) << linked.error;
    EXPECT_EQ(snapshot(target), before);
    EXPECT_FALSE(QFile::exists(work.path() + "/a.jpg"));

    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into a read-only folder";
    ASSERT_EQ(::chmod(QFile::encodeName(target).constData(), 0555), 0);
    const pack::UnpackResult readOnly = pack::unpackArchive(zip, target, {});
    ::chmod(QFile::encodeName(target).constData(), 0755);
    EXPECT_EQ(readOnly.status, pack::UnpackResult::Failed);
    EXPECT_TRUE(readOnly.error.contains("cannot write")) << readOnly.error;
    EXPECT_EQ(snapshot(target), before);
}

} // namespace
