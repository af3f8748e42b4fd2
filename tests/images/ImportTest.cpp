#include "ImageFixture.h"
#include "images/ImageImport.h"
#include "tools/imagegen/ImageFiles.h"

#include <QElapsedTimer>
#include <QImageReader>

#include <unistd.h>

using namespace images;

namespace {

class Import : public ImageFolder {
protected:
    void SetUp() override { ASSERT_TRUE(QDir().mkpath(dest())); }
    QString dest() const { return path(QStringLiteral("game")); }
    QStringList destNames() const {
        return QDir(dest()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    Imported one(const QString& source, const ImportOptions& options = {}) {
        const auto results = importImages({source}, dest(), options);
        EXPECT_EQ(results.size(), 1u);
        return results.front();
    }
};

TEST_F(Import, KindsByContentCopiedOrConverted) {
    const QImage rgb = picture(64, 48);
    ASSERT_TRUE(writeImageFile(path("deck.gif"), 20, 10, qRgb(10, 200, 30)));
    struct Case {
        QString source;
        QString name;
        bool copied; // byte for byte
        bool flattened;
    };
    const Case cases[] = {
        {save("knight.png", picture(64, 48, true), "png"), "knight.bmp", false, true},
        {save("solid.png", rgb, "png"), "solid.bmp", false, false},
        {save("photo.jpeg", rgb, "jpeg"), "photo.jpg", true, false},
        {save("disguised.png", rgb, "jpeg"), "disguised.jpg", true, false},
        {save("CARD.BMP", rgb, "bmp"), "CARD.BMP", true, false},
        {save("real-bmp.jpg", rgb, "bmp"), "real-bmp.bmp", true, false},
        {path("deck.gif"), "deck.gif", true, false},
        {save("scan.tiff", rgb, "tiff"), "scan.bmp", false, false},
        {save("lossless.webp", rgb, "webp", 100), "lossless.bmp", false, false},
        {save("lossy.webp", rgb, "webp", 80), "lossy.jpg", false, false},
        {save("a.b.png", rgb, "png"), "a.b.bmp", false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source.toStdString());
        const Imported r = one(c.source);
        EXPECT_EQ(r.message, "");
        ASSERT_EQ(r.name, c.name);
        EXPECT_EQ(r.converted, !c.copied);
        EXPECT_EQ(r.flattened, c.flattened);
        EXPECT_FALSE(r.skipped || r.renamed);
        const QString written = dest() + "/" + r.name;
        if (c.copied) {
            EXPECT_EQ(bytesOf(written), bytesOf(c.source));
        }
        const QImage back(written);
        ASSERT_EQ(back.size(), QImage(c.source).size());
        if (!c.copied && c.name.endsWith("bmp")) {
            EXPECT_EQ(back.pixel(40, 30) & 0xFFFFFF, QImage(c.source).pixel(40, 30) & 0xFFFFFF);
        }
        if (c.flattened) {
            EXPECT_EQ(back.pixel(5, 5), flattenColour().rgb());
        }
    }
}

TEST_F(Import, ReportSaysWhatHappened) {
    const auto results = importImages({save("knight.png", picture(8, 8, true), "png"),
                                       save("a,b.bmp", picture(8, 8), "bmp"), path("gone.png")},
                                      dest(), {});
    EXPECT_EQ(importReport(results),
              "knight.png -> knight.bmp (converted; transparent parts filled with white)\n"
              "a,b.bmp -> ab.bmp (characters a game file cannot hold taken out of the name)\n"
              "gone.png: no such file");
}

TEST_F(Import, RefusalsLeaveNothingBehind) {
    const QByteArray jpeg = bytesOf(save("whole.jpg", picture(200, 150), "jpeg"));
    const QByteArray bmp = bytesOf(save("whole.bmp", picture(50, 50), "bmp"));
    const QByteArray png = bytesOf(save("whole.png", picture(200, 150, true), "png"));
    ASSERT_TRUE(writeImageFile(path("whole.gif"), 40, 40, qRgb(1, 2, 3)));
    const QByteArray gif = bytesOf(path("whole.gif"));
    ASSERT_EQ(::symlink("/nonexistent/card.bmp", path("dangling.bmp").toLocal8Bit()), 0);
    ASSERT_TRUE(QDir().mkpath(path("folder.bmp")));
    struct Case {
        QString source;
        const char* why;
    };
    const Case cases[] = {
        {path("absent.bmp"), "no such file"},
        {path("dangling.bmp"), "link to a file that does not exist"},
        {path("folder.bmp"), "a folder"},
        {write("notes.bmp", "just some words, no picture\n"), "not an image"},
        {write("empty.jpg", ""), "not an image"},
        {write("cut.jpg", jpeg.left(jpeg.size() * 2 / 3)), "cut short"},
        {write("cut.bmp", bmp.left(bmp.size() - 100)), "cut short"},
        {write("cut.png", png.left(png.size() / 2)), "damaged"},
        {write("cut.gif", gif.left(gif.size() - 1)), "cut short"},
        {write("huge.bmp", bmpHeaderOnly(30000, 30000)), "too large"},
        {write("wide.bmp", bmpHeaderOnly(16385, 1)), "at most 16384"},
        {write("hungry.bmp", bmpHeaderOnly(16000, 16000)), "MB to decode"},
        {save(",,,.png", picture(4, 4), "png"), "no usable name"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source.toStdString());
        QElapsedTimer timer;
        timer.start();
        const Imported r = one(c.source);
        EXPECT_LT(timer.elapsed(), 1000); // a huge header is refused without decoding
        EXPECT_TRUE(r.message.startsWith(QFileInfo(c.source).fileName() + ": ")) << r.message;
        EXPECT_TRUE(r.message.contains(c.why)) << r.message;
        EXPECT_EQ(r.name, "");
    }
    EXPECT_EQ(destNames(), QStringList());
}

TEST_F(Import, ConflictAnswers) {
    const QString existing = dest() + "/Knight.bmp";
    const QByteArray old = bytesOf(save("old.bmp", picture(10, 10), "bmp"));
    const QString knight = save("knight.bmp", picture(12, 12), "bmp");
    const QByteArray fresh = bytesOf(knight);
    const QString queen = save("queen.bmp", picture(14, 14), "bmp");
    for (Conflict answer :
         {Conflict::Replace, Conflict::KeepBoth, Conflict::Skip, Conflict::Cancel}) {
        SCOPED_TRACE(int(answer));
        for (const QString& n : destNames())
            QFile::remove(dest() + "/" + n);
        write("game/Knight.bmp", old);
        QStringList asked;
        ImportOptions options;
        options.onConflict = [&](const QString& name, const QString& source) {
            asked << name + " " + QFileInfo(source).fileName();
            return answer;
        };
        const auto r = importImages({knight, queen}, dest(), options);
        ASSERT_EQ(r.size(), 2u);
        // Windows does not tell the names apart, so the user is asked.
        EXPECT_EQ(asked, QStringList{"Knight.bmp knight.bmp"});
        const bool cancelled = answer == Conflict::Cancel;
        EXPECT_EQ(r[1].name, cancelled ? "" : "queen.bmp");
        EXPECT_EQ(r[1].skipped, cancelled);
        switch (answer) {
        case Conflict::Replace:
            EXPECT_EQ(r[0].name, "Knight.bmp");
            EXPECT_EQ(bytesOf(existing), fresh);
            break;
        case Conflict::KeepBoth:
            EXPECT_EQ(r[0].name, "knight-2.bmp");
            EXPECT_EQ(bytesOf(dest() + "/knight-2.bmp"), fresh);
            EXPECT_EQ(bytesOf(existing), old);
            break;
        default:
            EXPECT_TRUE(r[0].skipped);
            EXPECT_EQ(r[0].name, "");
            EXPECT_EQ(bytesOf(existing), old);
        }
    }
    // The same bytes under the name: nothing to ask, nothing written.
    EXPECT_EQ(one(queen).name, "queen.bmp");
    const Imported again = one(queen);
    EXPECT_TRUE(again.skipped);
    EXPECT_EQ(again.name, "queen.bmp");
}

TEST_F(Import, FolderThatCannotBeWritten) {
    const QString source = save("card.png", picture(8, 8), "png");
    // A folder under a file cannot be written by anyone, root included.
    write("plain.txt", "x");
    const Imported underFile = importImages({source}, path("plain.txt/game"), {}).front();
    EXPECT_TRUE(underFile.message.contains("does not exist")) << underFile.message;
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into read-only folders";
    write("game/card.bmp", "keep me");
    ASSERT_TRUE(QFile::setPermissions(dest(), QFile::ReadOwner | QFile::ExeOwner));
    const Imported r =
        one(source, {[](const QString&, const QString&) { return Conflict::Replace; }});
    QFile::setPermissions(dest(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(r.message.contains("cannot write")) << r.message;
    EXPECT_EQ(destNames(), QStringList{"card.bmp"});
    EXPECT_EQ(bytesOf(dest() + "/card.bmp"), "keep me");
}

} // namespace
