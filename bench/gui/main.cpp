#include "lib/Style.h"
#include "platform/desktop/LinuxPlatform.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    platform::initialiseLayer();
    style::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
