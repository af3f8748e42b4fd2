// The deck page's own load and save of a 200-card deck in a game of the
// largest size, through MainForm and the store, the atomic replace included.

#include "LargestGame.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "WizardBenchMain.h"
#include "app/Program.h"

#include <QApplication>
#include <QFileInfo>
#include <benchmark/benchmark.h>

namespace {

MainForm* openLargest(GameFile& game) {
    rt::setAppPath(QFileInfo(game.path).absolutePath());
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(QStringLiteral("largest"));
    return form;
}

void SaveDeckData200Cards(benchmark::State& state) {
    GameFile game;
    store::DropProfileCache();
    MainForm* form = openLargest(game);
    form->LoadDeckData(QStringLiteral("DECK 3 PLAYER 2"));
    Globals::CurrentIndex = 2;
    int round = 0;
    for (auto _ : state) {
        // A different deal each round, so that every save really changes the file.
        form->DealCrds->setText(QString::number(++round));
        form->SaveDeckData(false, 3);
        rt::actionEnded();
    }
    if (store::ReadProfileValue("DECK 3 PLAYER 2", "deal", game.path) != QString::number(round))
        state.SkipWithError("the save did not reach the file");
    state.SetLabel("goal: 20 ms");
    wizard::stopProgram();
}
BENCHMARK(SaveDeckData200Cards)->Unit(benchmark::kMillisecond);

void LoadDeckData200Cards(benchmark::State& state) {
    GameFile game;
    store::DropProfileCache();
    MainForm* form = openLargest(game);
    for (auto _ : state)
        form->LoadDeckData(QStringLiteral("COMMON 4"));
    if (form->commonList->ListCount() != 200)
        state.SkipWithError("the deck did not load");
    state.SetLabel("goal: 10 ms");
    wizard::stopProgram();
}
BENCHMARK(LoadDeckData200Cards)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
