#include "StoreTestSupport.h"

#include "store/AtomicFile.h"

#include <QDir>

#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using store::FlushProfiles;
using store::WriteProfileValue;
using store::detail::replaceRefusal;
using store::detail::setSyncFunction;

namespace {

constexpr uid_t kNobody = 65534;

struct stat fileOf(uid_t owner, mode_t mode) {
    struct stat st {};
    st.st_mode = S_IFREG | mode;
    st.st_uid = owner;
    return st;
}

QStringList folderEntries(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace

TEST_F(StoreTest, OnlyTheOwnerOrRootReplacesAFile) {
    const uid_t user = 1000;
    EXPECT_EQ(replaceRefusal(fileOf(user, 0644), user), std::nullopt);
    EXPECT_EQ(replaceRefusal(fileOf(kNobody, 0644), 0), std::nullopt);
    EXPECT_EQ(replaceRefusal(fileOf(kNobody, 0644), user), "the file belongs to another user");
    EXPECT_EQ(replaceRefusal(fileOf(kNobody, 0666), user), "the file belongs to another user")
        << "a replace would take the file over even where its owner lets others write";
    EXPECT_EQ(replaceRefusal(fileOf(user, 0444), user), "the file is read-only");
    EXPECT_EQ(replaceRefusal(fileOf(0, 0444), 0), "the file is read-only");
    EXPECT_EQ(replaceRefusal(fileOf(user, 0200), user), std::nullopt);
}

TEST_F(StoreTest, AnotherUsersFileStaysTheirs) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root to act as another user";
    // A folder that "nobody" may write, holding root's file with mode 0644.
    ASSERT_EQ(::chmod(QFile::encodeName(dir.path()).constData(), 0755), 0);
    ASSERT_TRUE(QDir(dir.path()).mkdir("shared"));
    const QString folder = path("shared");
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0777), 0);
    const QString file = folder + "/root.game";
    const QByteArray original = "[GAME]\r\nname=Duel\r\n";
    put(file, original);
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0644), 0);

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
    const struct stat after = statOf(file);
    EXPECT_EQ(bytesOf(file), original);
    EXPECT_EQ(after.st_uid, 0u);
    EXPECT_EQ(after.st_mode & 07777, 0644u);
    EXPECT_EQ(folderEntries(folder), QStringList{"root.game"});
}

namespace {

QByteArray g_syncedBytes;
QByteArray g_targetAtSync;
QString g_target;

int recordingSync(int fd) {
    // The temporary file may be open for writing only.
    QFile synced(QStringLiteral("/proc/self/fd/%1").arg(fd));
    g_syncedBytes = synced.open(QIODevice::ReadOnly) ? synced.readAll() : QByteArray();
    QFile target(g_target);
    g_targetAtSync = target.open(QIODevice::ReadOnly) ? target.readAll() : QByteArray();
    return ::fsync(fd);
}

int failingSync(int) {
    errno = EIO;
    return -1;
}

} // namespace

TEST_F(StoreTest, TheNewTextReachesTheDiskBeforeItTakesTheName) {
    g_target = path("sync.game");
    put(g_target, "[GAME]\r\nname=Duel\r\n");
    setSyncFunction(recordingSync);
    ASSERT_EQ(save("GAME", "name", "Trio", g_target), 1);
    EXPECT_EQ(g_syncedBytes, "[GAME]\r\nname=Trio\r\n");
    EXPECT_EQ(g_targetAtSync, "[GAME]\r\nname=Duel\r\n") << "synced after the rename";

    // A disk that cannot take the data: the old file stays and the user is told.
    setSyncFunction(failingSync);
    ASSERT_EQ(save("GAME", "name", "Quad", g_target), 1);
    setSyncFunction(nullptr);
    EXPECT_EQ(bytesOf(g_target), "[GAME]\r\nname=Trio\r\n");
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].second, QString::fromLocal8Bit(std::strerror(EIO)));
    EXPECT_EQ(folderEntries(dir.path()), QStringList{"sync.game"});
}
