// A save replaces the file whole or not at all, keeps its link, owner and mode, or says why not.

#include "StoreTestSupport.h"

#include "store/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using store::detail::replaceRefusal;
using store::detail::setSyncFunction;

namespace {

constexpr uid_t kNobody = 65534;

// Moves the modification time on, as a second save by another program would.
void touchLater(const QString& file, int seconds) {
    struct stat st = {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &st), 0);
    struct timespec times[2] = {st.st_atim, st.st_mtim};
    times[1].tv_sec += seconds;
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times, 0), 0);
}

} // namespace

TEST_F(StoreTest, OnlyTheOwnerOrRootReplacesAFileAndAReadOnlyFileNobody) {
    const auto refusal = [](uid_t owner, mode_t mode, uid_t user) {
        struct stat st {};
        st.st_mode = S_IFREG | mode;
        st.st_uid = owner;
        return replaceRefusal(st, user).value_or("none");
    };
    EXPECT_EQ(refusal(1000, 0644, 1000), "none");
    EXPECT_EQ(refusal(kNobody, 0644, 0), "none");
    EXPECT_EQ(refusal(kNobody, 0644, 1000), "the file belongs to another user");
    EXPECT_EQ(refusal(kNobody, 0666, 1000), "the file belongs to another user")
        << "a replace would take the file over even where its owner lets others write";
    EXPECT_EQ(refusal(1000, 0444, 1000), "the file is read-only");
    EXPECT_EQ(refusal(0, 0444, 0), "the file is read-only");
    EXPECT_EQ(refusal(1000, 0200, 1000), "none");

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
    EXPECT_EQ(errors[0], std::make_pair(file, QStringLiteral("the file is read-only")));
}

TEST_F(StoreTest, AnotherUsersFileStaysTheirs) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root to act as another user";
    // A folder that "nobody" may write, holding root's file with mode 0644.
    setMode(dir.path(), 0755);
    ASSERT_TRUE(QDir(dir.path()).mkdir("shared"));
    const QString folder = path("shared");
    setMode(folder, 0777);
    const QString file = folder + "/root.game";
    const QByteArray original = "[GAME]\r\nname=Duel\r\n";
    put(file, original);
    setMode(file, 0644);

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)
            ::_exit(10);
        const int accepted = WriteProfileValue("GAME", "name", "Mine", file);
        FlushProfiles();
        const bool told = errors.size() == 1 && errors[0].first == file &&
                          errors[0].second == "the file belongs to another user";
        ::_exit(accepted == 0 && told ? 0 : 20 + accepted);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the write was accepted or not reported";
    EXPECT_EQ(bytesOf(file), original);
    EXPECT_EQ(statOf(file).st_uid, 0u);
    EXPECT_EQ(statOf(file).st_mode & 07777, 0644u);
    EXPECT_EQ(folderEntries(folder), QStringList{"root.game"});
}

TEST_F(StoreTest, AVanishedFolderLosesNothingAndChangesByAnotherProgramAreKept) {
    const QString file = path("nowhere/x.game");
    EXPECT_EQ(WriteProfileValue("GAME", "name", "Duel", file), 0);
    FlushProfiles();
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "");
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], std::make_pair(file, QStringLiteral("the folder does not exist")));

    // The folder goes before the flush: the write is dropped and reported, not pretended.
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

    const QString shared = path("shared.game");
    put(shared, "[GAME]\r\nname=Duel\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "name", shared), "Duel");

    // Same size, same inode: only the modification time tells.
    const ino_t inode = statOf(shared).st_ino;
    put(shared, "[GAME]\r\nname=Trio\r\n");
    ASSERT_EQ(statOf(shared).st_ino, inode);
    touchLater(shared, 5);
    EXPECT_EQ(ReadProfileValue("GAME", "name", shared), "Trio");

    // Another program saves between our write and our flush: ours goes on top of its version.
    ASSERT_EQ(WriteProfileValue("GAME", "players", "2", shared), 1);
    put(shared, "[GAME]\r\nname=Trio\r\nother=theirs\r\n");
    touchLater(shared, 10);
    FlushProfiles();
    EXPECT_EQ(bytesOf(shared), "[GAME]\r\nname=Trio\r\nother=theirs\r\nplayers=2\r\n");
}

namespace {

QByteArray g_syncedBytes;
QByteArray g_targetAtSync;
QString g_target;

int recordingSync(int fd) {
    // The temporary file may be open for writing only.
    g_syncedBytes = bytesOf(QStringLiteral("/proc/self/fd/%1").arg(fd));
    g_targetAtSync = bytesOf(g_target);
    return ::fsync(fd);
}

int failingSync(int) {
    errno = EIO;
    return -1;
}

} // namespace

TEST_F(StoreTest, TheNewTextReachesTheDiskBeforeItTakesTheNameKeepingLinksAndPermissions) {
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
    EXPECT_EQ(folderEntries(path("real")), QStringList{"target.game"});

    const mode_t mask = ::umask(022);
    ::umask(mask);
    const QString fresh = path("fresh.game");
    ASSERT_EQ(save("GAME", "name", "x", fresh), 1);
    EXPECT_EQ(statOf(fresh).st_mode & 07777, 0666u & ~mask);
    EXPECT_TRUE(errors.empty());

    g_target = fresh;
    setSyncFunction(recordingSync);
    ASSERT_EQ(save("GAME", "name", "Trio", fresh), 1);
    EXPECT_EQ(g_syncedBytes, "[GAME]\r\nname=Trio\r\n");
    EXPECT_EQ(g_targetAtSync, "[GAME]\r\nname=x\r\n") << "synced after the rename";
    // A disk that cannot take the data: the old file stays and the user is told.
    setSyncFunction(failingSync);
    ASSERT_EQ(save("GAME", "name", "Quad", fresh), 1);
    setSyncFunction(nullptr);
    EXPECT_EQ(bytesOf(fresh), "[GAME]\r\nname=Trio\r\n");
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].second, QString::fromLocal8Bit(std::strerror(EIO)));
    EXPECT_EQ(folderEntries(dir.path()), (QStringList{"fresh.game", "link.game"}));
}

TEST_F(StoreTest, LeftoversOfDeadSavesGoButLiveOnesStay) {
    const QString file = path("crash.game");
    put(file, "[GAME]\r\nname=Duel\r\n");
    // Without unnamed files a killed save leaves a named one; a live save holds its file locked.
    for (const char* name :
         {".crash.game.dead01", ".crash.game.live01", ".crash.game.toolong1", ".other.game.dead02"})
        put(path(name), "a copy");
    const int live = ::open(QFile::encodeName(path(".crash.game.live01")).constData(), O_RDONLY);
    ASSERT_GE(live, 0);
    ASSERT_EQ(::flock(live, LOCK_EX), 0);
    ASSERT_EQ(save("GAME", "name", "Trio", file), 1);
    ::close(live);
    EXPECT_EQ(folderEntries(dir.path()), (QStringList{".crash.game.live01", ".crash.game.toolong1",
                                                      ".other.game.dead02", "crash.game"}));
    EXPECT_EQ(bytesOf(file), "[GAME]\r\nname=Trio\r\n");
}
