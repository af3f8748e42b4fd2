// Previews of card pictures: one large photo shown in the preview popup, and
// what the preview cache holds after a user has looked at 2,000 images.
#include "GuiBenchMain.h"
#include "images/Preview.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QImage photo(int w, int h) {
    QImage img(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < w; ++x)
            line[x] = qRgb((x * 7 + y) & 255, (y * 3) & 255, (x ^ y) & 255);
    }
    return img;
}

struct Folder {
    QTemporaryDir dir;
    QString path(const QString& name) const { return dir.filePath(name); }
};

void PreviewOf4000x3000Jpeg(benchmark::State& state) {
    Folder folder;
    const QString path = folder.path(QStringLiteral("photo.jpg"));
    if (!photo(4000, 3000).save(path, "jpeg", 90)) {
        state.SkipWithError("cannot write the photo");
        return;
    }
    QString error;
    for (auto _ : state) {
        const QImage shown = images::decodeScaled(path, {400, 560}, &error);
        if (shown.size() != QSize(400, 300))
            state.SkipWithError(qPrintable(QStringLiteral("wrong preview: ") + error));
    }
    state.SetLabel("goal: 30 ms");
}
BENCHMARK(PreviewOf4000x3000Jpeg)->Unit(benchmark::kMillisecond);

void CacheAfter2000Previews(benchmark::State& state) {
    Folder folder;
    // One card picture under 2,000 names: each is a key of its own to the cache.
    const QString first = folder.path(QStringLiteral("card0.jpg"));
    if (!photo(800, 1120).save(first, "jpeg", 90)) {
        state.SkipWithError("cannot write the card");
        return;
    }
    QStringList paths{first};
    for (int i = 1; i < 2000; ++i) {
        paths << folder.path(QStringLiteral("card%1.jpg").arg(i));
        QFile::copy(first, paths.back());
    }
    images::PreviewCache cache;
    for (auto _ : state) {
        cache.clear();
        for (qsizetype i = 0; i < paths.size(); ++i) {
            cache.request(paths[i], {400, 560});
            if (i % 16 == 15)
                cache.waitIdle();
        }
        cache.waitIdle();
    }
    const double mb = double(cache.costBytes()) / (1024 * 1024);
    state.counters["cache_MB"] = mb;
    if (mb <= 0 || mb >= 64)
        state.SkipWithError("the cache is empty or over its goal");
    state.SetLabel("goal: cache < 64 MB");
}
BENCHMARK(CacheAfter2000Previews)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

ZAVIK_GUI_BENCHMARK_MAIN()
