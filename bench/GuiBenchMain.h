#pragma once
// main() of a benchmark that needs Qt's image readers but no forms.

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#define ZAVIK_GUI_BENCHMARK_MAIN()                                                                 \
    int main(int argc, char** argv) {                                                              \
        qputenv("QT_QPA_PLATFORM", "offscreen");                                                   \
        QGuiApplication app(argc, argv);                                                           \
        benchmark::Initialize(&argc, argv);                                                        \
        benchmark::RunSpecifiedBenchmarks();                                                       \
        benchmark::Shutdown();                                                                     \
        return 0;                                                                                  \
    }
