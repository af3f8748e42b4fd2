// Files that are no game at all: the check says what it can, never writes,
// never crashes and never hangs.

#include "CheckTestSupport.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRandomGenerator>

namespace {

using BadInput = checktest::GameFolder;

QByteArray digestOf(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

TEST_F(BadInput, FilesThatCannotBeReadAreSaidSo) {
    EXPECT_EQ(findings("none.game").value(0).left(12), "unreadable: ");
    QDir().mkpath(path("folder.game"));
    EXPECT_EQ(findings("folder.game"), QStringList({"unreadable: it is a directory"}));
    write("locked.game", "[GAME]\r\nplayers=1\r\n");
    QFile::setPermissions(path("locked.game"), QFileDevice::Permissions());
    if (!QFile(path("locked.game")).open(QIODevice::ReadOnly)) { // root reads anything
        EXPECT_EQ(findings("locked.game").value(0).left(12), "unreadable: ");
    }
}

TEST_F(BadInput, JunkAndHugeFilesAreCheckedAndLeftAlone) {
    QByteArray junk(200000, '\0');
    QRandomGenerator random(7);
    for (char& c : junk)
        c = static_cast<char>(random.bounded(256));
    write("junk.game", junk);
    const QByteArray before = digestOf(path("junk.game"));
    const QDateTime modified = QFileInfo(path("junk.game")).lastModified();
    const QStringList junkFindings = findings("junk.game");
    EXPECT_TRUE(junkFindings.contains(
        "0: error: The number of players is empty, not a whole number from 1 to 6"));
    EXPECT_EQ(digestOf(path("junk.game")), before);
    EXPECT_EQ(QFileInfo(path("junk.game")).lastModified(), modified);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList({"junk.game"}))
        << "the check left a file behind";

    // 50 MB: one deck that claims the most cards a count can hold, and a
    // single line of a million characters.
    QByteArray big =
        "[GAME]\r\nplayers=1\r\ndirectory=img\r\ncommon_decks=1\r\n[Player 1]\r\n"
        "name=A\r\n[COMMON 1]\r\ndecksize=99999\r\nimg_back=b.bmp\r\nimg_discard=b.bmp\r\n"
        "deal=0\r\n";
    for (int i = 1; big.size() < 49'000'000; ++i)
        big += "card" + QByteArray::number(i) + "=b.bmp,,V=" + QByteArray(1200, 'x') + "\r\n";
    big += "long=" + QByteArray(1'000'000, 'y') + "\r\n";
    images("img", {"b.bmp"});
    write("big.game", big);
    const QStringList bigFindings = findings("big.game");
    EXPECT_TRUE(bigFindings.contains(
        "18: error: The value of card7 in [COMMON 1] has 1209 characters; readers take only the "
        "first 254"));
    EXPECT_TRUE(std::any_of(bigFindings.begin(), bigFindings.end(), [](const QString& f) {
        return f.contains("readers take only the first 254") && f.contains("1000000 characters");
    }));
}

} // namespace
