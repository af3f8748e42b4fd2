// Page 4 at the format's limits: Forward and Back between 200-card decks with
// a folder of 2,000 images (at zoom 1 and 2), File1 on 10,000 images, the viewer on a large
// JPEG, and a deck whose file claims 99,999 cards.

#include "LargestGame.h"
#include "WizardBenchMain.h"
#include "app/Program.h"
#include "decks/ShowCrdForm.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>

namespace {

// Names only: File1 lists a folder and never opens its files.
void emptyImages(const QString& folder, int count) {
    QDir().mkpath(folder);
    const char* kinds[] = {".bmp", ".JPG", ".gif", ".Bmp"};
    for (int i = 0; i < count; ++i) {
        QFile f(folder + QStringLiteral("/card%1%2")
                             .arg(i, 5, 10, QLatin1Char('0'))
                             .arg(QLatin1String(kinds[i % 4])));
        if (!f.open(QIODevice::WriteOnly))
            std::fprintf(stderr, "cannot write %s\n", qPrintable(f.fileName()));
    }
}

MainForm* openGame(const QString& folder, const QString& name) {
    rt::setAppPath(folder);
    rt::hooks().msgBox = [](const QString&, int) {};
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(name);
    form->DirName->setText(QStringLiteral("cards"));
    return form;
}

// The largest game with `images` pictures in its folder, on its third common deck.
MainForm* openLargestOnDeck(const GameFile& game, int images) {
    store::DropProfileCache();
    const QString folder = QFileInfo(game.path).absolutePath();
    emptyImages(folder + QStringLiteral("/cards"), images);
    MainForm* form = openGame(folder, QStringLiteral("largest"));
    form->CommDecksNum->setText(QStringLiteral("6"));
    form->ShowCommonDeck_Click(2);
    return form;
}

void ForwardAndBackBetween200CardDecks(benchmark::State& state) {
    GameFile game;
    MainForm* form = openLargestOnDeck(game, 2000);
    // The page drawn at the zoom, in hundredths: the lists' fonts grow with it.
    const double zoom = state.range(0) / 100.0;
    form->setZoom(zoom);
    bool forward = true;
    for (auto _ : state) {
        // Each step saves the deck it leaves, loads the next, lists File1
        // anew and sets the caption; the write reaches the disk at its end.
        if (forward)
            form->NextStep_Click();
        else
            form->PrevStep_Click();
        rt::actionEnded();
        forward = !forward;
    }
    if (form->commonList->ListCount() != 200 || form->File1->ListCount() != 2000)
        state.SkipWithError("the page did not come up whole");
    state.SetLabel(QStringLiteral("zoom %1, goal: 16 ms").arg(zoom).toStdString());
    wizard::stopProgram();
}
BENCHMARK(ForwardAndBackBetween200CardDecks)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);

// What the title's mark costs when the user pauses: a save of the largest game
// into a scratch copy and a comparison of the two texts.
void UnsavedEditsOfTheLargestGame(benchmark::State& state) {
    GameFile game;
    MainForm* form = openLargestOnDeck(game, 200);
    bool unsaved = false;
    for (auto _ : state)
        unsaved = form->hasUnsavedEdits();
    benchmark::DoNotOptimize(unsaved);
    state.SetLabel("goal: 16 ms");
    wizard::stopProgram();
}
BENCHMARK(UnsavedEditsOfTheLargestGame)->Unit(benchmark::kMillisecond);

void File1On10000Images(benchmark::State& state) {
    QTemporaryDir dir;
    emptyImages(dir.filePath(QStringLiteral("cards")), 10000);
    MainForm* form = openGame(dir.path(), QStringLiteral("big"));
    for (auto _ : state)
        form->File1->setPath(dir.filePath(QStringLiteral("cards")));
    if (form->File1->ListCount() != 10000)
        state.SkipWithError("not every image was listed");
    state.SetLabel("goal: 50 ms");
    wizard::stopProgram();
}
BENCHMARK(File1On10000Images)->Unit(benchmark::kMillisecond);

void ViewerOn4000x3000Jpeg(benchmark::State& state) {
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath(QStringLiteral("cards")));
    {
        // Noise over a gradient, so that the decoder has a photograph's work.
        QImage image(4000, 3000, QImage::Format_RGB32);
        QPainter p(&image);
        QLinearGradient g(0, 0, 4000, 3000);
        g.setColorAt(0, Qt::darkBlue);
        g.setColorAt(1, Qt::yellow);
        p.fillRect(image.rect(), g);
        p.end();
        auto* rng = QRandomGenerator::global();
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x)
                line[x] ^= rng->bounded(32u) * 0x010101u;
        }
        image.save(dir.filePath(QStringLiteral("cards/photo.jpg")), "JPG", 90);
    }
    openGame(dir.path(), QStringLiteral("big"));
    for (auto _ : state) {
        showCardImage(QStringLiteral("photo.jpg"), false);
        state.PauseTiming();
        if (auto* viewer = rt::loaded<ShowCrdForm>())
            viewer->Unload();
        state.ResumeTiming();
    }
    state.SetLabel("goal: 150 ms");
    wizard::stopProgram();
}
BENCHMARK(ViewerOn4000x3000Jpeg)->Unit(benchmark::kMillisecond);

struct HugeDeck {
    QTemporaryDir dir;
    HugeDeck() {
        QByteArray text =
            "[GAME]\r\nname=Huge\r\ncommon_decks=1\r\n[COMMON 1]\r\ndecksize=99999\r\n"
            "img_back=back.bmp\r\nimg_discard=pile.bmp\r\ndeal=5\r\n";
        for (int c = 1; c <= 99999; ++c)
            text += "card" + QByteArray::number(c) + "=(x2)card" + QByteArray::number(c) +
                    ".bmp,,Value=" + QByteArray::number(c % 10) + "\r\n";
        QFile f(dir.filePath(QStringLiteral("huge.game")));
        if (!f.open(QIODevice::WriteOnly) || f.write(text) < 0)
            std::fprintf(stderr, "cannot write the huge deck\n");
    }
};

void HugeDeckComesUp(benchmark::State& state) {
    HugeDeck deck;
    store::DropProfileCache();
    MainForm* form = openGame(deck.dir.path(), QStringLiteral("huge"));
    for (auto _ : state) {
        form->ShowCommonDeck_Click(0);
        rt::actionEnded();
    }
    if (form->commonList->ListCount() != 32767)
        state.SkipWithError("the rows did not stop at 32,767");
    state.SetLabel("goal: 250 ms");
    wizard::stopProgram();
}
BENCHMARK(HugeDeckComesUp)->Unit(benchmark::kMillisecond);

void HugeDeckSaves(benchmark::State& state) {
    HugeDeck deck;
    store::DropProfileCache();
    MainForm* form = openGame(deck.dir.path(), QStringLiteral("huge"));
    form->ShowCommonDeck_Click(0);
    int round = 0;
    for (auto _ : state) {
        form->DealCrds->setText(QString::number(++round));
        form->SaveDeckData(true, 1);
        rt::actionEnded();
    }
    state.SetLabel("goal: 500 ms");
    wizard::stopProgram();
}
BENCHMARK(HugeDeckSaves)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
