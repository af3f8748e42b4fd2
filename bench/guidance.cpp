// The Game Tree of a game of the largest size (6 players of 6 decks, 6 common
// decks, 8 reports), a jump from it to a 200-card deck, and five help notes.

#include "LargestGame.h"
#include "WizardBenchMain.h"
#include "guidance/TreeForm.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QFileInfo>
#include <benchmark/benchmark.h>

namespace {

// The largest game with all eight reports.
MainForm* openLargest(GameFile& game) {
    const QString reports = QStringLiteral("REPORTS");
    store::WriteProfileValue(reports, "num_reports", "8", game.path);
    for (int r = 3; r <= 8; ++r)
        store::WriteProfileValue(reports, "report" + QString::number(r),
                                   "Report " + QString::number(r) + ",SUM,HAND,TRUE,Value",
                                   game.path);
    store::FlushProfiles();
    store::DropProfileCache();
    rt::setAppPath(QFileInfo(game.path).absolutePath());
    rt::hooks().msgBox = [](const QString&, int) {};
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(QStringLiteral("largest"));
    form->PlNum->setText(QStringLiteral("6"));
    form->DirName->setText(QStringLiteral("cards"));
    return form;
}

void OpenIndexOfLargestGame(benchmark::State& state) {
    GameFile game;
    openLargest(game);
    int rows = 0;
    for (auto _ : state) {
        auto* tree = rt::Load<TreeForm>();
        tree->Show();
        rows = tree->GameList->ListCount();
        tree->Unload();
    }
    if (rows != 4 + 42 + 6 + 8)
        state.SkipWithError("the index does not list the whole game");
    state.SetLabel("goal: 10 ms");
    wizard::stopProgram();
}
BENCHMARK(OpenIndexOfLargestGame)->Unit(benchmark::kMillisecond);

void JumpFromIndexTo200CardDeck(benchmark::State& state) {
    GameFile game;
    MainForm* form = openLargest(game);
    int row = 0;
    // The user's double click on a deck, alternating between two decks of
    // player 6 so that every jump loads a deck anew.
    rt::hooks().modalWait = [&row](rt::Form* f) {
        auto* tree = static_cast<TreeForm*>(f);
        tree->GameList->setListIndex(row);
        tree->GameList_DblClick();
    };
    for (auto _ : state) {
        row = row == 43 ? 42 : 43; // deck #5 and deck #6 of player 6
        form->TreeBtn_Click();
    }
    if (form->commonList->ListCount() != kCards || Globals::CurrentIndex != 6)
        state.SkipWithError("the jump did not load the deck");
    state.SetLabel("goal: 16 ms");
    wizard::stopProgram();
    rt::installDefaultHooks();
}
BENCHMARK(JumpFromIndexTo200CardDeck)->Unit(benchmark::kMillisecond);

void ShowFiveHelpNotes(benchmark::State& state) {
    GameFile game;
    QByteArray help = "[FRAME 0]\r\nitems=5\r\n";
    for (int m = 1; m <= 5; ++m)
        help += "[FRAME 0 ITEM " + QByteArray::number(m) +
                "]\r\nwhen=NameTXT\r\ncoord=" + QByteArray::number(m * 1000) +
                ",300\r\nwidth=2400\r\nheight=1100\r\nline1=A note of some length that "
                "the box has to wrap over several lines, as the notes of the wizard do, with "
                "words of every size in it.\r\n";
    QFile f(QFileInfo(game.path).absolutePath() + "/help.dat");
    if (!f.open(QIODevice::WriteOnly) || f.write(help) < 0)
        state.SkipWithError("cannot write help.dat");
    f.close();
    MainForm* form = openLargest(game);
    for (auto _ : state) {
        form->ToggleHelp();
        state.PauseTiming();
        form->ToggleHelp();
        state.ResumeTiming();
    }
    if (form->helpLabel0->Printed().count('\n') < 2)
        state.SkipWithError("the notes did not wrap");
    state.SetLabel("goal: 5 ms");
    wizard::stopProgram();
}
BENCHMARK(ShowFiveHelpNotes)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
