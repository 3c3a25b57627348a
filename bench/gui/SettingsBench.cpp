// The settings window: from the command to the first page drawn, and from one page to the next one drawn.
// The card is asked and read in the background; that part is not measured.

#include "app/window/SettingPages.h"
#include "common/CardFiles.h"
#include "settings/window/ZVKSettingController.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlatform.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

namespace {

class Setting {
public:
    Setting()
    {
        (void)writeDefaultFileData(FilePlace::chosen(card.path(cardFiles::settings)));
        desk.disks.volumes = {TestDiskArbitration::card(card.path())};
    }
    void open()
    {
        window = std::make_unique<ZVKSettingController>(desk.pieces, "en", settingTools());
        window->showWindow();
        draw();
    }
    void draw() { benchmark::DoNotOptimize(window->window().grab()); }
    void close()
    {
        window.reset();
        desk.dispatcher.runAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    TempFolder card;
    TestPlatform desk;
    std::unique_ptr<ZVKSettingController> window;
};

void openSettings(benchmark::State& state)
{
    Setting setting;
    for (auto _ : state) {
        setting.open();
        state.PauseTiming();
        setting.close();
        state.ResumeTiming();
    }
}
BENCHMARK(openSettings)->Unit(benchmark::kMillisecond);

/// The first time in the process, as the user meets it.
void openSettingsFirst(benchmark::State& state)
{
    Setting setting;
    for (auto _ : state)
        setting.open();
    setting.close();
}
BENCHMARK(openSettingsFirst)->Iterations(1)->Unit(benchmark::kMillisecond);

void switchTab(benchmark::State& state)
{
    Setting setting;
    setting.open();
    setting.desk.dispatcher.runAll();
    setting.desk.dispatcher.advance(std::chrono::seconds(1));
    const int tab = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        setting.window->changeViewController(tab == 0 ? 1 : 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
        setting.window->changeViewController(tab);
        setting.draw();
    }
    setting.close();
}
BENCHMARK(switchTab)->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

} // namespace
