#pragma once
// main() of a benchmark that runs the wizard's forms on the offscreen platform.

#include "app/Program.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#define ZAVIK_WIZARD_BENCHMARK_MAIN()                                                              \
    int main(int argc, char** argv) {                                                              \
        qputenv("QT_QPA_PLATFORM", "offscreen");                                                   \
        QApplication app(argc, argv);                                                              \
        wizard::registerForms();                                                                   \
        wizard::installStoreHooks();                                                               \
        benchmark::Initialize(&argc, argv);                                                        \
        benchmark::RunSpecifiedBenchmarks();                                                       \
        benchmark::Shutdown();                                                                     \
        return 0;                                                                                  \
    }
