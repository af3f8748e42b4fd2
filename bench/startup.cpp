// Program start on a crowded application folder: MainForm loads, lists the
// games and the image directories, and shows, on the offscreen platform.

#include "runtime/Runtime.h"
#include "WizardBenchMain.h"
#include "app/Program.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

void StartWithThousandGames(benchmark::State& state) {
    QTemporaryDir dir;
    for (int i = 0; i < 1000; ++i) {
        QFile f(dir.filePath(QStringLiteral("game%1.game").arg(i, 4, 10, QLatin1Char('0'))));
        if (f.open(QIODevice::WriteOnly))
            f.write("[GAME]\r\nplayers=2\r\n");
    }
    for (int i = 0; i < 200; ++i)
        QDir(dir.path()).mkdir(QStringLiteral("cards%1").arg(i));
    rt::setAppPath(dir.path());
    for (auto _ : state) {
        benchmark::DoNotOptimize(wizard::startProgram());
        state.PauseTiming();
        wizard::stopProgram();
        state.ResumeTiming();
    }
    state.SetLabel("goal: 200 ms");
}
BENCHMARK(StartWithThousandGames)->Unit(benchmark::kMillisecond)->MinTime(2.0);

} // namespace

ZAVIK_WIZARD_BENCHMARK_MAIN()
