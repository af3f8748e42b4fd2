// The whole-game check of a game of the largest size with 2,000 images in its
// folder: the check in the process, and zavik-check as a whole process.
#include "LargestGame.h"
#include "check/GameChecker.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QProcess>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>

namespace {

double g_checkMs = 0;
double g_processMs = 0;

struct CheckedGame {
    GameFile game;

    CheckedGame() {
        QDir folder(game.dir.path());
        folder.mkpath(QStringLiteral("cards"));
        QStringList names = {QStringLiteral("back.bmp"), QStringLiteral("pile.bmp"),
                             QStringLiteral("table.bmp")};
        for (int c = 1; c <= kCards; ++c)
            names << QStringLiteral("card%1.bmp").arg(c, 3, 10, QLatin1Char('0'));
        for (int i = 0; names.size() < 2000; ++i)
            names << QStringLiteral("spare%1.jpg").arg(i);
        for (const QString& name : names) {
            QFile f(folder.filePath(QStringLiteral("cards/") + name));
            if (!f.open(QIODevice::WriteOnly))
                std::fprintf(stderr, "cannot write %s\n", qPrintable(name));
        }
    }
};

double msSince(std::chrono::steady_clock::time_point start, benchmark::State& state) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
               .count() /
           static_cast<double>(state.iterations());
}

void WholeCheckOfTheLargestGame(benchmark::State& state) {
    CheckedGame checked;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        // A fresh read each time, as a user's "Check game" after an edit does.
        store::DropProfileCache();
        const check::GameReport report = check::checkGame(checked.game.path);
        if (!report.unreadable.isEmpty())
            state.SkipWithError("the game could not be read");
        benchmark::DoNotOptimize(report.findings.size());
    }
    g_checkMs = msSince(start, state);
}
BENCHMARK(WholeCheckOfTheLargestGame)->Unit(benchmark::kMillisecond);

void ZavikCheckProcess(benchmark::State& state) {
    CheckedGame checked;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        QProcess process;
        process.start(QStringLiteral(ZAVIK_CHECK_EXE), {checked.game.path});
        if (!process.waitForFinished(10000) || process.exitStatus() != QProcess::NormalExit)
            state.SkipWithError("zavik-check did not finish");
        benchmark::DoNotOptimize(process.readAllStandardOutput());
    }
    g_processMs = msSince(start, state);
}
BENCHMARK(ZavikCheckProcess)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::printf("whole check of the largest game with 2,000 images: %.1f ms (goal <= 15 ms)\n",
                g_checkMs);
    std::printf("zavik-check on it as a whole process: %.1f ms (goal <= 30 ms)\n", g_processMs);
    return 0;
}
