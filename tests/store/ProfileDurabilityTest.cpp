#include "StoreTestSupport.h"

#include <QDir>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using store::FlushProfiles;
using store::ReadProfileValue;
using store::WriteProfileValue;

namespace {

void setMode(const QString& file, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), mode), 0);
}

// Moves the modification time on, as a second save by another program would.
void touchLater(const QString& file, int seconds) {
    struct stat st = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &st), 0);
    struct timespec times[2] = {st.st_atim, st.st_mtim};
    times[1].tv_sec += seconds;
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times, 0), 0);
}

} // namespace

TEST_F(StoreTest, ReadOnlyFileRefusesEveryWriteEvenForRoot) {
    const QString file = path("ro.game");
    const QByteArray original = "[GAME]\r\nname=Duel\r\n";
    put(file, original);
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Duel"); // parsed while still writable
    setMode(file, 0444);

    EXPECT_EQ(WriteProfileValue("GAME", "name", "Trio", file), 0);
    EXPECT_EQ(WriteProfileValue("NEW", "key", "v", file), 0);
    FlushProfiles();
    EXPECT_EQ(bytesOf(file), original);
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Duel");
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0].first, file);
    EXPECT_EQ(errors[0].second, "the file is read-only");
}

TEST_F(StoreTest, MissingFolderOrVanishedFolderLosesNothingAndSaysWhy) {
    const QString file = path("nowhere/x.game");
    EXPECT_EQ(WriteProfileValue("GAME", "name", "Duel", file), 0);
    FlushProfiles();
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "");
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], std::make_pair(file, QStringLiteral("the folder does not exist")));

    // The folder goes away between the write and the flush: the write is
    // dropped and reported, and the store does not pretend it happened.
    ASSERT_TRUE(QDir(dir.path()).mkdir("later"));
    const QString later = path("later/y.game");
    ASSERT_EQ(WriteProfileValue("GAME", "name", "Duel", later), 1);
    ASSERT_TRUE(QDir(path("later")).removeRecursively());
    FlushProfiles();
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[1].first, later);
    EXPECT_EQ(ReadProfileValue("GAME", "name", later), "");
    FlushProfiles();
    EXPECT_EQ(errors.size(), 2u) << "a failed flush leaves nothing pending";
}

TEST_F(StoreTest, ChangesByAnotherProgramAreSeenAndKept) {
    const QString file = path("shared.game");
    put(file, "[GAME]\r\nname=Duel\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Duel");

    // Same size, same inode: only the modification time tells.
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.seek(13));
        ASSERT_EQ(f.write("Trio"), 4);
    }
    touchLater(file, 5);
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Trio");

    // Another program saves between our write and our flush: our change goes
    // on top of its version, not over it.
    ASSERT_EQ(WriteProfileValue("GAME", "players", "2", file), 1);
    put(file, "[GAME]\r\nname=Trio\r\nother=theirs\r\n");
    touchLater(file, 10);
    FlushProfiles();
    EXPECT_EQ(bytesOf(file), "[GAME]\r\nname=Trio\r\nother=theirs\r\nplayers=2\r\n");
}

TEST_F(StoreTest, ReplaceKeepsLinksAndPermissions) {
    ASSERT_TRUE(QDir(dir.path()).mkdir("real"));
    const QString target = path("real/target.game");
    const QString link = path("link.game");
    put(target, "[GAME]\r\nname=Duel\r\n");
    setMode(target, 0640);
    ASSERT_TRUE(QFile::link("real/target.game", link));

    ASSERT_EQ(save("GAME", "name", "Trio", link), 1);
    EXPECT_TRUE(S_ISLNK(statOf(link).st_mode));
    EXPECT_EQ(bytesOf(target), "[GAME]\r\nname=Trio\r\n");
    EXPECT_EQ(statOf(target).st_mode & 07777, 0640u);
    EXPECT_EQ(QDir(path("real")).entryList(QDir::Files | QDir::Hidden), QStringList{"target.game"})
        << "no temporary file is left behind";

    const mode_t mask = ::umask(022);
    ::umask(mask);
    const QString fresh = path("fresh.game");
    ASSERT_EQ(save("GAME", "name", "x", fresh), 1);
    EXPECT_EQ(statOf(fresh).st_mode & 07777, 0666u & ~mask);
    EXPECT_TRUE(errors.empty());
}

namespace {

constexpr int kCards = 7000; // a file of some 400 KB, as a large game has

QByteArray deckVersion(int version) {
    QByteArray text = "[GAME]\r\nname=Crash\r\n[COMMON 1]\r\n";
    for (int card = 1; card <= kCards; ++card)
        text += "card" + QByteArray::number(card) + "=v" + QByteArray::number(version) +
                "-(x2)card.bmp,,Value=3|Colour=red|Power=12\r\n";
    return text;
}

QStringList folderEntries(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace

TEST_F(StoreTest, KillAtAnyMomentLeavesTheOldOrTheNewFileAndNothingElse) {
    const QString file = path("crash.game");
    std::mt19937 rng(20261123);
    int newest = 0;
    for (int kill = 0; kill < 60; ++kill) {
        put(file, deckVersion(0));
        store::DropProfileCache();
        const ino_t original = statOf(file).st_ino;
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int version = 1;; ++version) {
                for (int card = 1; card <= kCards; ++card)
                    WriteProfileValue(
                        "COMMON 1", QStringLiteral("card%1").arg(card),
                        QStringLiteral("v%1-(x2)card.bmp,,Value=3|Colour=red|Power=12")
                            .arg(version),
                        file);
                FlushProfiles();
            }
        }
        // Now and then the kill waits for a first save to land, so that kills
        // in later saves happen however slow the machine is.
        for (int waited = 0; kill % 10 == 9 && waited < 20000 && statOf(file).st_ino == original;
             ++waited)
            ::usleep(1000);
        ::usleep(static_cast<useconds_t>(rng() % 60000));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);

        const QByteArray after = bytesOf(file);
        const qsizetype mark = after.indexOf("card1=v");
        ASSERT_GE(mark, 0) << "torn file at kill " << kill;
        const int version = after.mid(mark + 7, after.indexOf('-', mark) - mark - 7).toInt();
        ASSERT_EQ(after, deckVersion(version)) << "torn file at kill " << kill;
        newest = std::max(newest, version);

        // Whatever the killed save left is gone after the next save.
        store::DropProfileCache();
        ASSERT_EQ(save("GAME", "name", "After", file), 1);
        EXPECT_EQ(ReadProfileValue("GAME", "name", file), "After");
        ASSERT_EQ(folderEntries(dir.path()), QStringList{"crash.game"}) << "at kill " << kill;
    }
    EXPECT_GT(newest, 0) << "the saves never got under way, so nothing was tested";
    EXPECT_TRUE(errors.empty());
}

TEST_F(StoreTest, LeftoversOfDeadSavesGoButLiveOnesStay) {
    // Where the file system has no unnamed files, a save works on a named one;
    // a save killed then leaves it. A save still at work holds its file locked.
    const QString file = path("game.game");
    put(file, "[GAME]\r\nname=Duel\r\n");
    put(path(".game.game.dead01"), "whole copy");
    put(path(".game.game.live01"), "in progress");
    put(path(".game.game.toolong1"), "not ours");
    put(path(".other.game.dead02"), "another file's");
    const int live = ::open(QFile::encodeName(path(".game.game.live01")).constData(), O_RDONLY);
    ASSERT_GE(live, 0);
    ASSERT_EQ(::flock(live, LOCK_EX), 0);

    ASSERT_EQ(save("GAME", "name", "Trio", file), 1);
    ::close(live);
    EXPECT_EQ(folderEntries(dir.path()), (QStringList{".game.game.live01", ".game.game.toolong1",
                                                      ".other.game.dead02", "game.game"}));
    EXPECT_EQ(bytesOf(file), "[GAME]\r\nname=Trio\r\n");
}
