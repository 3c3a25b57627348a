#include "cardtools/ZVKSettingForFlashDataViewController.h"
#include "cardtools/ZVKSettingForObdDriveInfoViewController.h"
#include "platform/Texts.h"
#include "settings/FileData.h"
#include "tests/support/CollectedLog.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlatform.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

namespace {

using Texts = std::vector<std::string>;

struct Host final : SettingPageHost {
    Texts calls;
    void showLoading(const QString& title) override { calls.push_back("show " + title.toStdString()); }
    void setLoadingTitle(const QString& title) override { calls.push_back(title.toStdString()); }
    void hideLoading() override { calls.push_back("hide"); }
};

template <typename Page> class PageTest : public ::testing::Test {
protected:
    PageTest()
    {
        page->setMainController(&host);
        window.resize(940, 520);
        page->resize(window.size());
        page->setParent(&window);
        window.show();
    }
    template <typename Child> Child& child(const char* name)
    {
        return *page->template findChild<Child*>(name);
    }
    QTableView& table() { return child<QTableView>("tableView"); }
    int rows() { return table().model()->rowCount(); }

    void open(const std::string& path)
    {
        page->openFileDialog();
        desktop.panels.openAnswer(path);
        desktop.dispatcher.runAll();
    }
    template <typename Record> void open(std::vector<Record> records)
    {
        open(folder.file("log", driveLogFile(records)));
    }
    void saveAs(const std::string& path)
    {
        page->onSaveCSVFile();
        desktop.panels.saveAnswer(path);
        desktop.dispatcher.runAll();
        desktop.dispatcher.advance(std::chrono::milliseconds(500));
    }

    TestPlatform desktop;
    TempFolder folder;
    Host host;
    QWidget window;
    _FILEDATA record{};
    std::unique_ptr<Page> page = std::make_unique<Page>(desktop.pieces, "en");
    CollectedLog log;
    Texts& lines = log.lines;
};

using FlashLogPage = PageTest<ZVKSettingForFlashDataViewController>;
using ObdLogPage = PageTest<ZVKSettingForObdDriveInfoViewController>;

TEST_F(FlashLogPage, ReadsTheCardsLogOnceBehindTheSheet)
{
    page->setM_FlashDataFilePath(folder.file("zavik_000.drv", driveLogFile(std::vector(2, flashRecord()))));
    page->setMainController(nullptr);
    page->setFileData(&record);
    EXPECT_TRUE(host.calls.empty());
    page->setMainController(&host); // the window hands itself over after the record
    page->openFileDialog();
    EXPECT_FALSE(desktop.panels.openAnswer) << "nothing else while a log is read";
    desktop.dispatcher.runAll();
    EXPECT_EQ(host.calls, (Texts{"show Loading...", "hide"}));
    EXPECT_EQ(rows(), 2);

    page->setFileData(&record);
    desktop.dispatcher.runAll();
    EXPECT_EQ(host.calls.size(), 2u);
}

TEST_F(FlashLogPage, ALogThatIsNotThereLeavesAHintWhatToDo)
{
    page->setM_FlashDataFilePath(folder.path("none.drv"));
    page->setFileData(&record);
    EXPECT_EQ(desktop.dispatcher.runAll(), 0u);
    EXPECT_TRUE(child<QLabel>("emptyLabel").isVisible());
    EXPECT_FALSE(child<QPushButton>("exportButton").isEnabled());
    page->onSaveCSVFile();
    EXPECT_FALSE(desktop.panels.saveAnswer);
    open(std::vector<FlashDataRecord>{});
    EXPECT_EQ(child<QLabel>("emptyLabel").text(), "This drive log has no records.");
    open(std::vector{flashRecord()});
    EXPECT_FALSE(child<QLabel>("emptyLabel").isVisible());
}

TEST_F(FlashLogPage, AnUnreadableLogIsToldAndTheRowsStay)
{
    open(std::vector(3, flashRecord()));
    EXPECT_EQ(desktop.panels.open.type, "drv");
    const FlashDataRecord one = flashRecord();
    std::vector<std::byte> impossible = driveLogFile(std::vector{one});
    std::memset(impossible.data(), 0xFF, 4);
    for (const std::string& path : {folder.path("none"), folder.path(), folder.file("empty"),
             folder.file("header", std::as_bytes(std::span(&one, 1)).first(11)),
             folder.file("impossible", impossible)}) {
        SCOPED_TRACE(path);
        desktop.alerts.shown.clear();
        open(path);
        desktop.dispatcher.advance(std::chrono::milliseconds(500));
        EXPECT_EQ(desktop.alerts.shown.size(), 1u);
        EXPECT_EQ(rows(), 3);
        EXPECT_EQ(page->stringForColumnIndex(1, 2), "65535");
        EXPECT_EQ(host.calls.back(), "hide");
    }
    EXPECT_EQ(lines.front(), "fopen fail:" + folder.path("none"));
}

TEST_F(FlashLogPage, ACutLogShowsItsWholeRecordsAndSaysSo)
{
    std::vector<std::byte> file = driveLogFile(std::vector(3, flashRecord()));
    file.pop_back();
    open(folder.file("cut.drv", file));
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(child<QLabel>("stateLabel").text(), "The log ends early: 2 of 3 records could be read.");
}

TEST_F(FlashLogPage, DoubleClickAndEnterOpenTheMapAtTheRow)
{
    open(std::vector{flashRecord(), FlashDataRecord{.latWhole = 3734}});
    QTest::mouseDClick(
        table().viewport(), Qt::LeftButton, {}, table().visualRect(table().model()->index(0, 3)).center());
    EXPECT_EQ(desktop.map.scripts, Texts{"setLatLag('127.041667','37.568723')"});
    table().setCurrentIndex(table().model()->index(1, 0));
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(desktop.map.scripts.back(), "zavikNewRecording()") << "no longitude: no fix, no pin";
}

TEST_F(FlashLogPage, ExportsInLogicalOrderOverALongerFile)
{
    std::vector<FlashDataRecord> records(2000, flashRecord());
    records[0].cur_speed = 65535;
    open(records);
    EXPECT_EQ(table().model()->index(0, 8).data(), "") << "what cannot be is shown as nothing";
    table().horizontalHeader()->moveSection(14, 0);
    const std::string path = folder.file("zavik_000.csv", std::vector(size_t{1} << 20, std::byte{'x'}));
    saveAs(path);
    EXPECT_EQ(desktop.panels.save.name, "zavik_000");
    EXPECT_EQ(desktop.panels.save.type, "csv");
    EXPECT_EQ(desktop.alerts.shown, Texts{"ZAVIK|Saved."});
    const std::string csv = contents(path);
    EXPECT_TRUE(csv.starts_with("No.,Seq.,Date,Time,Day,Latitude,Longitude,Distance,Speed,"))
        << csv.substr(0, 90);
    EXPECT_NE(csv.find(",65535,99,"), csv.npos) << "the export has what the file has";
    EXPECT_EQ(std::ranges::count(csv, '\n'), 2001);
    EXPECT_TRUE(csv.ends_with(",12.5\n"));
    EXPECT_EQ(host.calls[2], "show Saving...");
    EXPECT_TRUE(host.calls[3].starts_with("Saving... ") && host.calls[3].ends_with(" %")) << host.calls[3];
    EXPECT_EQ(host.calls.back(), "hide");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2)
        << "nothing beside it";
}

/// Files of this process end at a size, as they would on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit before{};
};

TEST_F(FlashLogPage, AnExportThatCannotBeWrittenIsToldAndLeavesTheFileWhole)
{
    open(std::vector(2000, flashRecord()));
    const std::string path = folder.file("zavik_000.csv", std::as_bytes(std::span("old", 3)));
    const std::string told = "ZAVIK|" + platform::localized("msg.write_failed").toStdString();
    {
        const FullDisk disk(100000);
        saveAs(path);
    }
    saveAs(folder.path());
    saveAs(folder.path("no/such/folder.csv"));
    EXPECT_EQ(desktop.alerts.shown, (Texts{told, told, told}));
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST_F(FlashLogPage, AWorkUnderWayIsDroppedWithThePage)
{
    open(std::vector(2000, flashRecord()));
    const std::string csv = folder.path("late.csv");
    page->onSaveCSVFile();
    desktop.panels.saveAnswer(csv);
    page->onHide();
    page.reset();
    desktop.dispatcher.runAll();
    desktop.dispatcher.advance(std::chrono::seconds(1));
    EXPECT_FALSE(std::filesystem::exists(csv));
    EXPECT_TRUE(desktop.alerts.shown.empty());

    page = std::make_unique<ZVKSettingForFlashDataViewController>(desktop.pieces, "en");
    open(std::vector(3, flashRecord()));
    page->loadFlashDataFile();
    desktop.dispatcher.runBackground();
    page.reset(); // between the read and its hand-over
    desktop.dispatcher.runAll();
}

TEST_F(ObdLogPage, ShowsAndExportsItsOwnColumns)
{
    open(std::vector{obdRecord()});
    EXPECT_EQ(desktop.panels.open.type, "obd");
    EXPECT_EQ(table().model()->columnCount(), 26);
    EXPECT_EQ(table().model()->index(0, 19).data().toString(), "D");
    page->onSaveCSVFile();
    EXPECT_EQ(desktop.panels.save.name, "zavik_obd");
}

template <typename Page, typename Record>
void expectTextsFit(TestPlatform& desktop, const DriveLogFormat& format, const Record& record)
{
    for (const char* language : {"en", "ko"}) {
        platform::setTextLanguage(language);
        Page page(desktop.pieces, language);
        page.show();
        QHeaderView& header = *page.template findChild<QTableView*>("tableView")->horizontalHeader();
        const QFontMetrics cells(page.template findChild<QTableView*>("tableView")->font());
        for (int i = 0; i < header.count(); ++i) {
            EXPECT_EQ(header.sectionSize(i), format.columns[size_t(i)].width);
            const QString title = header.model()->headerData(i, Qt::Horizontal).toString();
            EXPECT_FALSE(title.isEmpty() || title.contains(',')) << i;
            constexpr int padding = 6;
            EXPECT_LE(header.fontMetrics().horizontalAdvance(title) + padding, header.sectionSize(i))
                << language << ' ' << title.toStdString();
            std::string cell;
            format.columns[size_t(i)].append(cell, std::as_bytes(std::span(&record, 1)).data(), 9998);
            constexpr int margin = 3;
            EXPECT_LE(cells.horizontalAdvance(QString::fromStdString(cell)) + margin, header.sectionSize(i))
                << cell;
        }
    }
    platform::setTextLanguage("en");
}

TEST(DriveRecordColumns, HoldTheirTitlesInBothLanguagesAndTheirCells)
{
    TestPlatform desktop;
    expectTextsFit<ZVKSettingForFlashDataViewController>(desktop, flashDataFormat, flashRecord());
    expectTextsFit<ZVKSettingForObdDriveInfoViewController>(desktop, obdDriveFormat, obdRecord());
}

} // namespace
