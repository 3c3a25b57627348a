// The drives of the tab, from the list of recordings to rows, and to rows whose lengths are all read. "bare"
// is the time of the same header reads alone, measured in between.

#include "app/drives/DriveLibrary.h"
#include "bench/ManyRecordings.h"
#include "platform/qt/QtDispatcher.h"

#include <QCoreApplication>

#include <chrono>

namespace {

void drivesOnScreen(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    const bool isWhole = state.range(0) != 0;
    const auto& listed = manyRecordings();
    platform::QtDispatcher dispatcher;
    std::chrono::duration<double> ours(0);
    std::chrono::duration<double> bare(0);
    for (auto _ : state) {
        auto copy = listed;
        const auto start = Clock::now();
        DriveLibrary library(dispatcher, {[] {}, [] {}, [](size_t) {}});
        library.setRecordings(std::move(copy));
        while (library.drives().empty() || (isWhole && library.isReading()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const std::chrono::duration<double> took = Clock::now() - start;
        state.SetIterationTime(took.count());
        ours += took;
        const auto before = Clock::now();
        readHeadersBare();
        bare += Clock::now() - before;
    }
    state.counters["timesBare"] = ours / bare;
}
BENCHMARK(drivesOnScreen)->ArgName("whole")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
