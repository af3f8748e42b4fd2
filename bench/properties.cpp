// Page 6 coming up on a game of the largest size, with four lists of six
// names and eight reports, through ShowFrame as Forward and Back call it.

#include "LargestGame.h"
#include "WizardBenchMain.h"
#include "runtime/Runtime.h"
#include "store/profile/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "wizard/Program.h"

#include <QFileInfo>
#include <benchmark/benchmark.h>

namespace {

// Four full lists and eight reports in place of the largest game's own.
void fillListsAndReports(const QString& file) {
    const QString lists = QStringLiteral("PROP LISTS");
    Globals::WriteProfileValue(lists, "total", "4", file);
    for (int i = 1; i <= 4; ++i) {
        QString line = QStringLiteral("List%1").arg(i);
        for (int j = 1; j <= 6; ++j)
            line += QStringLiteral(",Property%1%2").arg(i).arg(j);
        Globals::WriteProfileValue(lists, QStringLiteral("list%1").arg(i), line, file);
    }
    Globals::WriteProfileValue("REPORTS", "num_reports", "8", file);
    for (int i = 1; i <= 8; ++i)
        Globals::WriteProfileValue(
            "REPORTS", QStringLiteral("report%1").arg(i),
            QStringLiteral("Report %1,SUM,HAND,TRUE,Property4%2").arg(i).arg(1 + i % 6), file);
    Globals::FlushProfiles();
}

MainForm* openLargest(GameFile& game) {
    Globals::DropProfileCache();
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
BENCHMARK(PageSixComesUp)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
