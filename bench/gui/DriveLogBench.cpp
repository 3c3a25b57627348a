#include "cardtools/drivelog/ZVKSettingForFlashDataViewController.h"
#include "settings/record/FileData.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlatform.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

const std::string& millionRecordLog()
{
    static const TempFolder folder;
    static const std::string path = folder.file("log.drv", driveLogFile(std::vector(1000000, flashRecord())));
    return path;
}

struct OpenPage {
    OpenPage()
    {
        page.resize(940, 520);
        page.show();
        page.setM_FlashDataFilePath(millionRecordLog());
    }
    void load()
    {
        page.loadFlashDataFile();
        desktop.dispatcher.runAll();
        page.repaint();
        QApplication::processEvents();
    }

    TestPlatform desktop;
    ZVKSettingForFlashDataViewController page{desktop.pieces, "en"};
};

/// From the request to the first rows on the page.
void openMillionRecordLog(benchmark::State& state)
{
    OpenPage open;
    for (auto _ : state)
        open.load();
}
BENCHMARK(openMillionRecordLog)->Unit(benchmark::kMillisecond);

/// What the window's thread does of it: publish the records and draw the rows.
void showMillionRecords(benchmark::State& state)
{
    OpenPage open;
    for (auto _ : state) {
        state.PauseTiming();
        open.page.loadFlashDataFile();
        open.desktop.dispatcher.runBackground();
        state.ResumeTiming();
        open.desktop.dispatcher.runMain();
        open.page.repaint();
        QApplication::processEvents();
    }
}
BENCHMARK(showMillionRecords)->Unit(benchmark::kMillisecond);

/// One step of the scroll bar to another place of the log, drawn.
void scrollMillionRecords(benchmark::State& state)
{
    OpenPage open;
    open.load();
    QTableView& table = *open.page.findChild<QTableView*>("tableView");
    int row = 0;
    for (auto _ : state) {
        row = (row + 7919 * 101) % 990000;
        table.verticalScrollBar()->setValue(row);
        table.viewport()->repaint();
    }
}
BENCHMARK(scrollMillionRecords)->Unit(benchmark::kMillisecond);

} // namespace
