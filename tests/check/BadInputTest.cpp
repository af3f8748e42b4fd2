// Files that are no game at all: the check says what it can, never writes, crashes or hangs.

#include "CheckTestSupport.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRandomGenerator>

namespace {

using BadInput = checktest::GameFolder;

TEST_F(BadInput, UnreadableJunkAndHugeFilesAreSaidSoAndLeftAlone) {
    EXPECT_EQ(findings("none.game").substr(0, 13), "\nunreadable: ");
    QDir().mkpath(path("folder.game"));
    EXPECT_EQ(findings("folder.game"), "\nunreadable: it is a directory");
    write("locked.game", "[GAME]\r\nplayers=1\r\n");
    QFile::setPermissions(path("locked.game"), QFileDevice::Permissions());
    if (!QFile(path("locked.game")).open(QIODevice::ReadOnly)) { // root reads anything
        EXPECT_EQ(findings("locked.game").substr(0, 13), "\nunreadable: ");
    }

    QByteArray junk(200000, '\0');
    QRandomGenerator random(7);
    for (char& c : junk)
        c = static_cast<char>(random.bounded(256));
    write("junk.game", junk);
    const QDateTime modified = QFileInfo(path("junk.game")).lastModified();
    EXPECT_NE(
        findings("junk.game")
            .find("\n0: error: The number of players is empty, not a whole number from 1 to 6"),
        std::string::npos);
    QFile after(path("junk.game"));
    ASSERT_TRUE(after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), junk);
    EXPECT_EQ(QFileInfo(path("junk.game")).lastModified(), modified);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList({"folder.game", "junk.game", "locked.game"}))
        << "the check left a file behind";

    // 50 MB: a deck claiming more cards than a count holds, and a line of a million characters.
    QByteArray big =
        "[GAME]\r\nplayers=1\r\ndirectory=img\r\ncommon_decks=1\r\n[Player 1]\r\n"
        "name=A\r\n[COMMON 1]\r\ndecksize=99999\r\nimg_back=b.bmp\r\nimg_discard=b.bmp\r\n"
        "deal=0\r\n";
    for (int i = 1; big.size() < 49'000'000; ++i)
        big += "card" + QByteArray::number(i) + "=b.bmp,,V=" + QByteArray(1200, 'x') + "\r\n";
    big += "long=" + QByteArray(1'000'000, 'y') + "\r\n";
    images("img", {"b.bmp"});
    write("big.game", big);
    const std::string found = findings("big.game");
    EXPECT_NE(found.find("\n18: error: The value of card7 in [COMMON 1] has 1209 characters; "
                         "readers take only the first 254\n"),
              std::string::npos);
    EXPECT_NE(found.find(" has 1000000 characters; readers take only the first 254"),
              std::string::npos);
}

} // namespace
