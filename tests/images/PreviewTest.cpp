#include "images/Preview.h"
#include "ImageFixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QImageReader>
#include <QThread>
#include <QTimer>

using namespace images;

namespace {

class Preview : public ImageFolder {};

TEST_F(Preview, FitsTheBoxKeepingTheAspect) {
    const QString jpeg = save("big.jpg", picture(4000, 3000), "jpeg");
    const QString small = save("small.png", picture(50, 40), "png");
    struct Case {
        QString path;
        QSize box;
        QSize expected;
    };
    const Case cases[] = {
        {jpeg, {400, 560}, {400, 300}},     {jpeg, {100, 100}, {100, 75}},
        {jpeg, {4000, 3000}, {4000, 3000}}, {small, {400, 560}, {50, 40}}, // never enlarged
        {small, {10, 1000}, {10, 8}},
    };
    for (const Case& c : cases) {
        QString error = "stale";
        EXPECT_EQ(decodeScaled(c.path, c.box, &error).size(), c.expected)
            << c.path << c.box.width();
        EXPECT_EQ(error, "");
    }
}

TEST_F(Preview, DecodesAJpegAtTheReducedSize) {
    const QString jpeg = save("big.jpg", picture(4000, 3000), "jpeg");
    // 4000 x 3000 needs 46 MB whole; the limit lets only a reduced decode through.
    const int before = QImageReader::allocationLimit();
    QImageReader::setAllocationLimit(8);
    const bool wholeFails = QImageReader(jpeg).read().isNull();
    QString error;
    const QImage shown = decodeScaled(jpeg, {400, 560}, &error);
    QImageReader::setAllocationLimit(before);
    EXPECT_TRUE(wholeFails);
    EXPECT_EQ(shown.size(), QSize(400, 300)) << error;
}

TEST_F(Preview, SaysWhyNot) {
    const struct {
        QString path;
        const char* why;
    } cases[] = {
        {path("absent.jpg"), "missing"},
        {write("words.bmp", "no picture"), "not an image"},
        {write("huge.bmp", bmpHeaderOnly(30000, 30000)), "too large"},
        {temp.path(), "not a file"},
    };
    for (const auto& c : cases) {
        QString error;
        EXPECT_TRUE(decodeScaled(c.path, {100, 100}, &error).isNull());
        EXPECT_TRUE(error.contains(c.why)) << c.path << ": " << error;
    }
}

TEST_F(Preview, CacheDeliversOnTheGuiThreadWithinItsBudget) {
    PreviewCache cache;
    QStringList delivered;
    QObject::connect(&cache, &PreviewCache::ready, [&](const QString& p, QSize) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        delivered << QFileInfo(p).fileName();
    });
    const QString card = save("card.png", picture(300, 200), "png");
    const QSize box(150, 150);
    EXPECT_TRUE(cache.request(card, box).isNull());
    EXPECT_TRUE(cache.request(card, box).isNull()); // queued once
    QEventLoop loop;
    QObject::connect(&cache, &PreviewCache::ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(delivered, QStringList{"card.png"});
    EXPECT_EQ(cache.request(card, box).size(), QSize(150, 100));
    EXPECT_EQ(cache.costBytes(), QImage(150, 100, QImage::Format_RGB32).sizeInBytes());

    // A failed decode says why and is not tried again for the same file.
    const QString words = write("words.jpg", "no picture");
    cache.request(words, box);
    cache.waitIdle();
    cache.request(words, box);
    cache.waitIdle();
    EXPECT_EQ(delivered.count("words.jpg"), 1);
    EXPECT_EQ(cache.error(words, box), "not an image");

    const qint64 one = 100 * 100 * 4;
    cache.setBudget(3 * one);
    for (int i = 0; i < 8; ++i) {
        cache.request(save(QString("c%1.bmp").arg(i), picture(100, 100), "bmp"), {100, 100});
        cache.waitIdle();
    }
    EXPECT_LE(cache.costBytes(), 3 * one);
    EXPECT_FALSE(cache.request(path("c7.bmp"), {100, 100}).isNull()); // the newest stay
    cache.clear();
    EXPECT_EQ(cache.costBytes(), 0);
}

TEST_F(Preview, NewerBoxSupersedesQueuedOlder) {
    PreviewCache cache;
    QList<QSize> boxes;
    QObject::connect(&cache, &PreviewCache::ready, [&](const QString&, QSize b) { boxes << b; });
    // Keep both threads busy so that the later requests wait in the queue.
    const QImage big = picture(3000, 3000);
    const QString card = save("card.png", picture(300, 300), "png");
    cache.request(save("big1.png", big, "png"), {64, 64});
    cache.request(save("big2.png", big, "png"), {64, 64});
    // The newest request is taken first, so both threads must have theirs
    // before the card's requests come.
    QThread::msleep(50);
    for (int side = 100; side <= 140; side += 10)
        cache.request(card, {side, side});
    cache.waitIdle();
    EXPECT_TRUE(boxes.contains(QSize(140, 140)));
    for (int side = 100; side < 140; side += 10)
        EXPECT_FALSE(boxes.contains(QSize(side, side))) << side;
}

} // namespace
