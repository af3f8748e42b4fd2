// A game packed and unpacked elsewhere comes back byte for byte; conflicts
// are asked about; a kill at any moment leaves the folder as before or complete.

#include "PackTestSupport.h"

#include "pack/Pack.h"
#include "pack/Staging.h"
#include "pack/Unpack.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace packtest;

namespace {

class RoundTrip : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(work.isValid());
        game = makeGame(work.path() + "/src");
        zip = work.path() + "/Duel.game.zip";
        target = work.path() + "/target";
        QDir().mkpath(target);
    }
    QTemporaryDir work;
    QString game, zip, target;
};

TEST_F(RoundTrip, NamedImagesComeBackByteForByte) {
    const pack::PackResult packed = pack::packGame(game, zip, false);
    ASSERT_TRUE(packed.ok) << packed.error;
    // The game spells QUEEN.JPG; the folder's queen.jpg is what goes in.
    EXPECT_EQ(packed.packed,
              QStringList({"Duel.game", "cards/table.bmp", "cards/back.jpg", "cards/pile.gif",
                           "cards/knight.bmp", "cards/queen.jpg"}));
    EXPECT_EQ(packed.missing, QStringList{"gone.bmp"});

    const pack::UnpackResult result = pack::unpackArchive(zip, target, {});
    ASSERT_EQ(result.status, pack::UnpackResult::Done) << result.error;
    QMap<QString, QByteArray> expected = snapshot(work.path() + "/src");
    expected.remove("cards/unused.bmp");
    EXPECT_EQ(snapshot(target), expected);

    // Every unzip tool reads it: compressed kinds stored, the rest deflated.
    QProcess unzip;
    unzip.start("unzip", {"-Z", "-v", zip});
    if (unzip.waitForFinished() && unzip.exitCode() == 0) {
        const QString listing = QString::fromLocal8Bit(unzip.readAllStandardOutput());
        EXPECT_EQ(listing.count("none (stored)"), 3) << listing;
    }
}

TEST_F(RoundTrip, AllImagesTakesTheWholeFolder) {
    ASSERT_TRUE(pack::packGame(game, zip, true).ok);
    ASSERT_EQ(pack::unpackArchive(zip, target, {}).status, pack::UnpackResult::Done);
    EXPECT_EQ(snapshot(target), snapshot(work.path() + "/src"));
}

TEST_F(RoundTrip, ConflictsAreAskedAndAnsweredAsChosen) {
    ASSERT_TRUE(pack::packGame(game, zip, false).ok);
    put(target + "/Duel.game", "[GAME]\r\ndirectory=cards\r\n");
    put(target + "/cards/back.jpg", "another back");
    put(target + "/cards/table.bmp", bytesOf(work.path() + "/src/cards/table.bmp"));
    const auto before = snapshot(target);

    pack::Conflicts asked;
    auto answer = [&asked](pack::Choice choice) {
        return [&asked, choice](const pack::Conflicts& c) {
            asked = c;
            return choice;
        };
    };
    EXPECT_EQ(pack::unpackArchive(zip, target, answer(pack::Choice::Cancel)).status,
              pack::UnpackResult::Cancelled);
    EXPECT_EQ(asked.names, QStringList({"Duel.game", "cards/back.jpg"}));
    EXPECT_EQ(snapshot(target), before);

    const pack::UnpackResult both =
        pack::unpackArchive(zip, target, answer(pack::Choice::KeepBoth));
    ASSERT_EQ(both.status, pack::UnpackResult::Done) << both.error;
    EXPECT_EQ(both.gameFile, target + "/Duel 2.game");
    EXPECT_TRUE(bytesOf(target + "/Duel 2.game").contains("directory=cards 2\r\n"));
    EXPECT_EQ(bytesOf(target + "/cards 2/back.jpg"), bytesOf(work.path() + "/src/cards/back.jpg"));
    EXPECT_EQ(bytesOf(target + "/cards/back.jpg"), "another back");

    const pack::UnpackResult replaced =
        pack::unpackArchive(zip, target, answer(pack::Choice::Replace));
    ASSERT_EQ(replaced.status, pack::UnpackResult::Done) << replaced.error;
    EXPECT_EQ(bytesOf(target + "/Duel.game"), bytesOf(game));
    EXPECT_EQ(bytesOf(target + "/cards/back.jpg"), bytesOf(work.path() + "/src/cards/back.jpg"));
    EXPECT_TRUE(replaced.unchanged.contains("cards/table.bmp"));
    EXPECT_FALSE(replaced.written.contains("cards/table.bmp"));
}

// A child unpacks; the parent kills it at a random moment. What the kill left
// is finished or removed by the next unpack's first step, and the folder is
// then either as it was or complete, never half of the game.
TEST_F(RoundTrip, KillAtAnyMomentLeavesBeforeOrComplete) {
    for (int i = 0; i < 200; ++i)
        put(work.path() + "/src/cards/x" + QString::number(i) + ".bmp", QByteArray(20000, char(i)));
    ASSERT_TRUE(pack::packGame(game, zip, true).ok);
    QTemporaryDir whole;
    ASSERT_EQ(pack::unpackArchive(zip, whole.path(), {}).status, pack::UnpackResult::Done);
    put(target + "/Other.game", "[GAME]\r\n");
    const auto before = snapshot(target);
    const auto complete = [&] {
        auto state = snapshot(whole.path());
        state.insert("Other.game", "[GAME]\r\n");
        return state;
    }();

    std::mt19937 random(20);
    int interrupted = 0;
    for (int round = 0; round < 12; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            pack::unpackArchive(zip, target, {});
            ::_exit(0);
        }
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 60000)(random));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        interrupted += WIFSIGNALED(status) ? 1 : 0;
        pack::recoverLeftovers(target);
        const auto after = snapshot(target);
        EXPECT_TRUE(after == before || after == complete) << "round " << round;
        QDir(target + "/cards").removeRecursively();
        QFile::remove(target + "/Duel.game");
    }
    EXPECT_GT(interrupted, 0);
}

} // namespace
