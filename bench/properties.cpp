// Page 6 coming up on a game of the largest size, with four lists of six
// names and eight reports, through ShowFrame as Forward and Back call it; and
// the Card Detail dialog on a card of a 200-card deck of that game.

#include "LargestGame.h"
#include "WizardBenchMain.h"
#include "decks/CardDetailForm.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <benchmark/benchmark.h>

namespace {

// Four full lists and eight reports in place of the largest game's own.
void fillListsAndReports(const QString& file) {
    const QString lists = QStringLiteral("PROP LISTS");
    store::WriteProfileValue(lists, "total", "4", file);
    for (int i = 1; i <= 4; ++i) {
        QString line = QStringLiteral("List%1").arg(i);
        // Each list shares a name with the card's stored pairs.
        line += QStringLiteral(",Value,Colour");
        for (int j = 3; j <= 6; ++j)
            line += QStringLiteral(",Property%1%2").arg(i).arg(j);
        store::WriteProfileValue(lists, QStringLiteral("list%1").arg(i), line, file);
    }
    store::WriteProfileValue("REPORTS", "num_reports", "8", file);
    for (int i = 1; i <= 8; ++i)
        store::WriteProfileValue(
            "REPORTS", QStringLiteral("report%1").arg(i),
            QStringLiteral("Report %1,SUM,HAND,TRUE,Property4%2").arg(i).arg(1 + i % 6), file);
    store::FlushProfiles();
}

MainForm* openLargest(GameFile& game) {
    store::DropProfileCache();
    fillListsAndReports(game.path);
    rt::setAppPath(QFileInfo(game.path).absolutePath());
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(QStringLiteral("largest"));
    return form;
}

void PageSixComesUp(benchmark::State& state) {
    GameFile game;
    MainForm* form = openLargest(game);
    Globals::PreviousFrame = 3;
    Globals::CurrentFrame = 6;
    for (auto _ : state) {
        // From empty boxes and hidden buttons, as after a game without lists.
        state.PauseTiming();
        for (rt::TextBox* box : form->pListName)
            box->setText(QString());
        for (rt::TextBox* box : form->pName)
            box->setText(QString());
        form->UsePropOpt->setValue(0);
        form->repNum->setText(QString());
        state.ResumeTiming();
        form->ShowFrame();
    }
    if (form->pName[23]->Text() != QLatin1String("Property46") || !form->ShowReport[7]->Visible())
        state.SkipWithError("the page did not come up from the file");
    state.SetLabel("goal: 10 ms");
    wizard::stopProgram();
}
BENCHMARK(PageSixComesUp)->Unit(benchmark::kMillisecond)->Iterations(300);

// Page 4 on the 200-card deck, its 150th card selected.
MainForm* openDeck(GameFile& game) {
    MainForm* form = openLargest(game);
    Globals::CurrentFrame = 4;
    Globals::IsCommonDeck = Globals::True;
    Globals::CurrentIndex = 4;
    form->LoadDeckData(QStringLiteral("COMMON 4"));
    form->commonList->setListIndex(149);
    return form;
}

CardDetailForm* openDialog() {
    auto* dialog = rt::Load<CardDetailForm>();
    dialog->Show();
    return dialog;
}

void closeDialog(CardDetailForm* dialog) {
    dialog->Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void CardDetailOpens(benchmark::State& state) {
    GameFile game;
    openDeck(game);
    for (auto _ : state) {
        CardDetailForm* dialog = openDialog();
        state.PauseTiming();
        if (dialog->pName[0]->Text() != QLatin1String("3"))
            state.SkipWithError("the card's value did not show");
        closeDialog(dialog);
        state.ResumeTiming();
    }
    state.SetLabel("goal: 5 ms");
    wizard::stopProgram();
}
// The paused part of a round is far longer than the timed one: a fixed count
// keeps the run short.
BENCHMARK(CardDetailOpens)->Unit(benchmark::kMillisecond)->Iterations(300);

void CardDetailChoosesList(benchmark::State& state) {
    GameFile game;
    openDeck(game);
    CardDetailForm* dialog = openDialog();
    int round = 0;
    for (auto _ : state)
        dialog->pListNames->userPick(++round % 4);
    if (dialog->lbl[2]->Caption() !=
        QStringLiteral("Property%1").arg(1 + round % 4) + QLatin1Char('3'))
        state.SkipWithError("the list did not come up");
    state.SetLabel("goal: 5 ms");
    closeDialog(dialog);
    wizard::stopProgram();
}
BENCHMARK(CardDetailChoosesList)->Unit(benchmark::kMillisecond);

void CardDetailUpdates(benchmark::State& state) {
    GameFile game;
    MainForm* form = openDeck(game);
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        CardDetailForm* dialog = openDialog();
        dialog->CrdX->setText(QString::number(2 + ++round % 5));
        state.ResumeTiming();
        dialog->Command1_Click();
        state.PauseTiming();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    if (!form->commonList->List(149).startsWith(QStringLiteral("(x%1)").arg(2 + round % 5)))
        state.SkipWithError("the update did not reach the row");
    state.SetLabel("goal: 5 ms");
    wizard::stopProgram();
}
BENCHMARK(CardDetailUpdates)->Unit(benchmark::kMillisecond)->Iterations(300);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
