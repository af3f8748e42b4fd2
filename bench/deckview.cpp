// The deck sheet and the previews at the format's limits: a 200-card deck with
// 24 property columns, pictures for every card, a folder of 2,000 images.

#include "LargestGame.h"
#include "WizardBenchMain.h"
#include "app/Program.h"
#include "deckview/DeckSheetForm.h"
#include "deckview/DeckSheetModel.h"
#include "deckview/DeckView.h"
#include "images/Preview.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QListWidget>
#include <QMouseEvent>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

// Two decks of 200 cards, four lists of six names each, and a picture for
// each of 2,000 images, small and alike, as a designer's folder holds them.
struct SheetGame {
    QTemporaryDir dir;
    SheetGame() {
        QByteArray text = "[GAME]\r\nname=Sheet\r\ndirectory=cards\r\ncommon_decks=2\r\n";
        for (int d = 1; d <= 2; ++d) {
            text += "[COMMON " + QByteArray::number(d) + "]\r\ndecksize=200\r\n";
            for (int c = 1; c <= 200; ++c)
                text += "card" + QByteArray::number(c) + "=(x2)card" +
                        QByteArray::number(c + 200 * (d - 1)).rightJustified(4, '0') +
                        ".jpg,,P1=3|P7=red|P13=12\r\n";
        }
        text += "[PROP LISTS]\r\ntotal=4\r\n";
        for (int l = 1; l <= 4; ++l) {
            text += "list" + QByteArray::number(l) + "=List" + QByteArray::number(l);
            for (int n = 1; n <= 6; ++n)
                text += ",P" + QByteArray::number((l - 1) * 6 + n);
            text += "\r\n";
        }
        QFile f(dir.filePath(QStringLiteral("sheet.game")));
        if (!f.open(QIODevice::WriteOnly) || f.write(text) < 0)
            std::fprintf(stderr, "cannot write the game\n");
        QDir().mkpath(dir.filePath(QStringLiteral("cards")));
        QImage picture(250, 350, QImage::Format_RGB32);
        for (int i = 1; i <= 2000; ++i) {
            picture.fill(QColor::fromHsv(i % 360, 160, 200));
            picture.save(dir.filePath(QStringLiteral("cards/card%1.jpg").arg(i, 4, 10, QLatin1Char('0'))));
        }
    }
};

SheetGame& game() {
    static SheetGame one;
    return one;
}

MainForm* openOnDeck() {
    store::DropProfileCache();
    images::PreviewCache::instance().clear();
    rt::setAppPath(game().dir.path());
    rt::hooks().msgBox = [](const QString&, int) {};
    auto* form = static_cast<MainForm*>(wizard::startProgram());
    form->NameTXT->setText(QStringLiteral("sheet"));
    form->LoadGameData();
    form->ShowCommonDeck_Click(0);
    return form;
}

deckview::DeckSheetForm* openSheet() {
    deckview::showSheet();
    QCoreApplication::sendPostedEvents();
    return rt::loaded<deckview::DeckSheetForm>();
}

void SheetOf200CardsAnd24ColumnsOpens(benchmark::State& state) {
    openOnDeck();
    for (auto _ : state) {
        deckview::DeckSheetForm* sheet = openSheet();
        sheet->repaint(); // the rows on screen drawn, their pictures asked for
        state.PauseTiming();
        if (!sheet || sheet->cards->Rows() != 200 || sheet->cards->Cols() != 27)
            state.SkipWithError("the sheet did not come up whole");
        if (sheet)
            sheet->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        images::PreviewCache::instance().waitIdle();
        images::PreviewCache::instance().clear();
        state.ResumeTiming();
    }
    state.SetLabel("without its pictures, goal: 30 ms");
    wizard::stopProgram();
}
BENCHMARK(SheetOf200CardsAnd24ColumnsOpens)->Unit(benchmark::kMillisecond);

// From the sheet's opening until every row shows its picture, with the
// longest that one turn of the event loop took meanwhile.
void PicturesOf200CardsFillIn(benchmark::State& state) {
    openOnDeck();
    qint64 longest = 0;
    for (auto _ : state) {
        images::PreviewCache::instance().clear();
        QElapsedTimer all;
        all.start();
        deckview::DeckSheetForm* sheet = openSheet();
        QApplication::processEvents();
        while (sheet->model()->picturesPending() > 0 && all.elapsed() < 5000) {
            QElapsedTimer turn;
            turn.start();
            QApplication::processEvents(QEventLoop::AllEvents, 5);
            longest = std::max(longest, turn.elapsed());
        }
        state.SetIterationTime(all.nsecsElapsed() / 1e9);
        if (sheet->model()->picturesPending() > 0)
            state.SkipWithError("pictures still missing after 5 s");
        state.PauseTiming();
        sheet->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.SetLabel(QStringLiteral("goal: 1 s; longest turn of the event loop %1 ms, goal: 16 ms")
                       .arg(longest)
                       .toStdString());
    state.counters["cache_MB"] = images::PreviewCache::instance().costBytes() / 1e6;
    wizard::stopProgram();
}
BENCHMARK(PicturesOf200CardsFillIn)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void OneCellEdit(benchmark::State& state) {
    openOnDeck();
    deckview::DeckSheetForm* sheet = openSheet();
    int round = 0;
    for (auto _ : state) {
        sheet->cards_CellEdit(100, deckview::DeckSheetModel::FirstPropertyCol + 5,
                              QString::number(++round));
        rt::actionEnded();
    }
    state.SetLabel("goal: 16 ms");
    wizard::stopProgram();
}
BENCHMARK(OneCellEdit)->Unit(benchmark::kMillisecond);

void EditOf200SelectedRows(benchmark::State& state) {
    openOnDeck();
    deckview::DeckSheetForm* sheet = openSheet();
    sheet->cards->view()->selectAll();
    int round = 0;
    for (auto _ : state) {
        ++round;
        sheet->cards_CellEdit(0, deckview::DeckSheetModel::FirstPropertyCol + (round % 2) * 10,
                              QString::number(round));
        rt::actionEnded();
    }
    if (sheet->cards->selectedRows().size() != 200)
        state.SkipWithError("not every row was selected");
    state.SetLabel("goal: 16 ms");
    wizard::stopProgram();
}
BENCHMARK(EditOf200SelectedRows)->Unit(benchmark::kMillisecond);

void ForwardAndBackWithTheSheetOpen(benchmark::State& state) {
    MainForm* form = openOnDeck();
    deckview::DeckSheetForm* sheet = openSheet();
    bool forward = true;
    for (auto _ : state) {
        if (forward)
            form->NextStep_Click();
        else
            form->PrevStep_Click();
        rt::actionEnded();
        QCoreApplication::sendPostedEvents();
        forward = !forward;
    }
    if (sheet->cards->Rows() != 200)
        state.SkipWithError("the sheet did not follow");
    state.SetLabel("goal: 16 ms");
    wizard::stopProgram();
}
BENCHMARK(ForwardAndBackWithTheSheetOpen)->Unit(benchmark::kMillisecond);

// The pointer resting on 50 names of File1 in a row: the longest any one move
// held the event loop, decodes going on meanwhile.
void RestingOn50NamesOf2000(benchmark::State& state) {
    MainForm* form = openOnDeck();
    auto* files = qobject_cast<QListWidget*>(form->File1->widget());
    form->show();
    files->resize(300, 50 * files->sizeHintForRow(0) + 10);
    qint64 longest = 0;
    for (auto _ : state) {
        images::PreviewCache::instance().clear();
        for (int row = 0; row < 50; ++row) {
            const QPoint at = files->visualItemRect(files->item(row)).center();
            QMouseEvent move(QEvent::MouseMove, at, files->viewport()->mapToGlobal(at), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QElapsedTimer one;
            one.start();
            QApplication::sendEvent(files->viewport(), &move);
            QApplication::processEvents();
            longest = std::max(longest, one.elapsed());
        }
        images::PreviewCache::instance().waitIdle();
    }
    state.SetLabel(
        QStringLiteral("longest event %1 ms, goal: 16 ms").arg(longest).toStdString());
    wizard::stopProgram();
}
BENCHMARK(RestingOn50NamesOf2000)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
