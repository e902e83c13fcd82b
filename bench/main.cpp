// The benchmarks run under one headless application object, and the program's log is left out.
#include "foundation/Log.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    setLogSink([](std::string_view) {});
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
