// Undo and redo on a deck of 200 cards: a clear, an import of 200 rows and one
// value set on 200 selected rows, each taken back and brought again; and what
// a thousand steps of such a deck hold.

#include "history/History.h"
#include "WizardBenchMain.h"
#include "app/Program.h"
#include "deckview/PageDeck.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

struct Game {
    QTemporaryDir dir;
    Game() {
        QByteArray text = "[GAME]\r\nname=Undo\r\ndirectory=cards\r\ncommon_decks=1\r\n"
                          "[COMMON 1]\r\ndecksize=200\r\nimg_back=back.bmp\r\ndeal=7\r\n";
        for (int c = 1; c <= 200; ++c)
            text += "card" + QByteArray::number(c) + "=(x2)card" +
                    QByteArray::number(c).rightJustified(4, '0') +
                    ".jpg,,Colour=red|Power=" + QByteArray::number(c % 9) + "|Rank=12\r\n";
        QFile f(dir.filePath(QStringLiteral("undo.game")));
        if (!f.open(QIODevice::WriteOnly) || f.write(text) < 0)
            std::fprintf(stderr, "cannot write the game\n");
        QDir().mkpath(dir.filePath(QStringLiteral("cards")));
    }
};

Game& game() {
    static Game one;
    return one;
}

MainForm* openOnDeck() {
    store::DropProfileCache();
    rt::setAppPath(game().dir.path());
    rt::hooks().msgBox = [](const QString&, int) {};
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(QStringLiteral("undo"));
    form->LoadGameData();
    form->ShowCommonDeck_Click(0);
    rt::actionEnded();
    return form;
}

// The change made once, then Undo and Redo timed in turn.
void undoAndRedo(benchmark::State& state, const std::function<void(MainForm*)>& change) {
    MainForm* form = openOnDeck();
    change(form);
    rt::actionEnded();
    bool undo = true;
    for (auto _ : state) {
        if (!(undo ? history::undo() : history::redo()))
            state.SkipWithError("no step to take");
        rt::actionEnded();
        undo = !undo;
    }
    state.SetLabel("each, goal: 16 ms");
    wizard::stopProgram();
}

void UndoAndRedoOfAClearOf200Cards(benchmark::State& state) {
    undoAndRedo(state, [](MainForm* form) { form->Command7_Click(); });
}
BENCHMARK(UndoAndRedoOfAClearOf200Cards)->Unit(benchmark::kMillisecond);

// As an import lays its plan onto the page: every row changed, 200 more added.
void UndoAndRedoOfAnImportOf200Rows(benchmark::State& state) {
    undoAndRedo(state, [](MainForm*) {
        history::nameNextStep(QStringLiteral("Import common deck 1"));
        for (int r = 0; r < 200; ++r) {
            deckview::setRowEntry(
                r, QStringLiteral("(x3)card%1.jpg").arg(r + 1, 4, 10, QLatin1Char('0')));
            deckview::setRowProps(r, QStringLiteral("Colour=blue|Power=1"));
            deckview::addCard(QStringLiteral("new%1.jpg").arg(r));
            deckview::setRowProps(deckview::rowCount() - 1, QStringLiteral("Colour=green"));
        }
        deckview::recount();
    });
}
BENCHMARK(UndoAndRedoOfAnImportOf200Rows)->Unit(benchmark::kMillisecond);

void UndoAndRedoOfAValueSetOn200SelectedRows(benchmark::State& state) {
    undoAndRedo(state, [](MainForm*) {
        for (int r = 0; r < 200; ++r)
            deckview::setRowProps(r, QStringLiteral("Colour=black|Power=%1|Rank=12").arg(r % 9));
    });
}
BENCHMARK(UndoAndRedoOfAValueSetOn200SelectedRows)->Unit(benchmark::kMillisecond);

// A thousand edits of every row, each a step of its own: what the process
// holds more than before, and what the steps count themselves.
void MemoryOf1000StepsOnA200CardDeck(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        MainForm* form = openOnDeck();
        malloc_trim(0);
        const size_t before = mallinfo2().uordblks;
        state.ResumeTiming();
        for (int step = 0; step < 1000; ++step) {
            for (int r = 0; r < 200; ++r)
                deckview::setRowProps(
                    r, QStringLiteral("Colour=c%1|Power=%2|Rank=12").arg(step).arg(r));
            rt::actionEnded();
        }
        state.PauseTiming();
        const size_t after = mallinfo2().uordblks;
        state.counters["steps"] = history::undoDepth();
        state.counters["MB_held"] = static_cast<double>(after - before) / 1e6;
        state.counters["MB_counted"] = static_cast<double>(history::bytesHeld()) / 1e6;
        (void)form;
        wizard::stopProgram();
        state.ResumeTiming();
    }
    state.SetLabel("goal: 20 MB held");
}
BENCHMARK(MemoryOf1000StepsOnA200CardDeck)->Unit(benchmark::kMillisecond)->Iterations(1);

// The comparison at the end of each action when nothing changed.
void ActionEndOnA200CardDeck(benchmark::State& state) {
    openOnDeck();
    for (auto _ : state)
        rt::actionEnded();
    state.SetLabel("goal: well under 1 ms");
    wizard::stopProgram();
}
BENCHMARK(ActionEndOnA200CardDeck)->Unit(benchmark::kMicrosecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
