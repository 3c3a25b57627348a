#include "cardtools/drivelog/ZVKSettingForFlashDataViewController.h"
#include "cardtools/drivelog/ZVKSettingForObdDriveInfoViewController.h"
#include "lib/PMProgressIndicatorController.h"
#include "lib/ProgressWindow.h"
#include "platform/Texts.h"
#include "settings/record/FileData.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/FullDisk.h"
#include "tests/support/GuiTesting.h"

namespace {

using Texts = std::vector<std::string>;

template <typename Page> class PageTest : public ::testing::Test {
protected:
    PageTest()
    {
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
        settle();
    }
    void settle()
    {
        desktop.dispatcher.runAll();
        desktop.dispatcher.advance(1s);
    }
    auto filesIn(const std::string& path) { return std::distance(fs::directory_iterator(path), {}); }

    /// What the window of the work shows, its buttons last; empty when there is none.
    Texts shownWork()
    {
        Texts texts;
        for (const auto* shown : window.findChildren<ProgressWindow*>()) {
            for (const auto* label : shown->findChildren<QLabel*>())
                texts.push_back(label->text().toStdString());
            for (const auto* button : shown->findChildren<QPushButton*>())
                if (button->isVisible())
                    texts.push_back(button->text().toStdString());
        }
        return texts;
    }
    TestPlatform desktop;
    TempFolder folder;
    QWidget window;
    _FILEDATA record{};
    std::unique_ptr<Page> page = std::make_unique<Page>(desktop.pieces, "en");
    CollectedLog log;
};

using FlashLogPage = PageTest<ZVKSettingForFlashDataViewController>;
using ObdLogPage = PageTest<ZVKSettingForObdDriveInfoViewController>;

TEST_F(FlashLogPage, ReadsTheCardsLogOnceAndTellsHowFarItIs)
{
    page->setM_FlashDataFilePath(folder.file("zavik_000.drv", driveLogFile(std::vector(2, flashRecord()))));
    page->setFileData(&record);
    page->openFileDialog();
    EXPECT_FALSE(desktop.panels.openAnswer) << "nothing else while a log is read";
    desktop.dispatcher.advance(499ms);
    EXPECT_EQ(shownWork(), Texts()) << "a short work shows nothing";
    desktop.dispatcher.advance(1ms);
    EXPECT_EQ(shownWork(), (Texts{"Loading...", "0 % completed", "Stop"}));
    PMProgressIndicatorController& icon = PMProgressIndicatorController::sharedInstance();
    EXPECT_EQ(icon.numProgressIndicators(), 1u);
    window.findChild<ProgressWindow*>()->report()(30, 75);
    desktop.dispatcher.runMain();
    EXPECT_EQ(shownWork()[1], "40 % completed");
    desktop.dispatcher.runAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shownWork(), Texts());
    EXPECT_EQ(icon.numProgressIndicators(), 0u);
    EXPECT_EQ(rows(), 2);

    page->setFileData(&record);
    EXPECT_EQ(desktop.dispatcher.runAll(), 0u);
}

TEST_F(FlashLogPage, EscapeEndsTheReadingOfALogThatHangs)
{
    open(std::vector(3, flashRecord()));
    page->setM_FlashDataFilePath(folder.file("next.drv", driveLogFile(std::vector(2, flashRecord()))));
    page->loadFlashDataFile();
    desktop.dispatcher.advance(15s);
    EXPECT_THAT(shownWork(), ::testing::Contains("The card does not answer. Leave it in, or stop."));
    QTest::keyClick(window.findChild<ProgressWindow*>(), Qt::Key_Escape);
    page->openFileDialog();
    EXPECT_TRUE(desktop.panels.openAnswer);
    settle();
    EXPECT_EQ(rows(), 3);
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(FlashLogPage, NoLinkLeadsFromTheCardToAnotherLog)
{
    folder.file("mine/zavik_000.drv", driveLogFile(std::vector(2, flashRecord())));
    fs::create_directory(folder.path("card"));
    fs::create_symlink("../mine", folder.path("card/DrvInfo"));
    page->setM_FlashDataFilePath(folder.path("card/DrvInfo/zavik_000.drv"), folder.path("card"));
    page->setFileData(&record);
    settle();
    EXPECT_EQ(rows(), 0);
    EXPECT_THAT(desktop.alerts.shown, ElementsAre(HasSubstr("is a link")));
}

TEST_F(FlashLogPage, ALogThatIsNotThereLeavesAHintWhatToDo)
{
    page->setM_FlashDataFilePath(folder.path("none.drv"));
    page->setFileData(&record);
    settle();
    EXPECT_TRUE(desktop.alerts.shown.empty());
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
    std::vector<std::byte> impossible = driveLogFile(std::vector{flashRecord()});
    std::fill_n(impossible.begin(), 4, std::byte{0xFF});
    fs::create_symlink("/sys/class/net/lo/speed", folder.path("failing"));
    for (const auto& [path, key] : {std::pair(folder.path("none"), "msg.drivelog_unreadable"),
             {folder.path("failing"), "msg.drivelog_unreadable"}, {folder.path(), "msg.drivelog_refused"},
             {folder.file("empty"), "msg.drivelog_is_none"},
             {folder.file("header", std::span(impossible).first(11)), "msg.drivelog_is_none"},
             {folder.file("impossible", impossible), "msg.drivelog_is_none"}}) {
        SCOPED_TRACE(path);
        desktop.alerts.shown.clear();
        open(path);
        settle();
        EXPECT_EQ(desktop.alerts.shown, Texts{"ZAVIK|" + platform::localized(key).toStdString()});
        EXPECT_EQ(rows(), 3);
        EXPECT_EQ(page->stringForColumnIndex(1, 2), "65535");
    }
    EXPECT_EQ(log.lines.front(), "fopen fail:" + folder.path("none"));
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
    EXPECT_EQ(filesIn(folder.path()), 2) << "nothing beside it";
}

TEST_F(FlashLogPage, EscapeDuringAnExportAsksAndWhatWasWrittenIsRemoved)
{
    open(std::vector(2000, flashRecord()));
    const std::string path = folder.path("zavik_000.csv");
    page->onSaveCSVFile();
    desktop.panels.saveAnswer(path);
    EXPECT_FALSE(window.close()) << "in the first half second, too";
    const Texts question{
        platform::localized("drivelog.stop_question").toStdString(), "0 % completed", "Stop", "Continue"};
    EXPECT_EQ(shownWork(), question);
    QTest::keyClick(window.findChild<ProgressWindow*>(), Qt::Key_Escape);
    EXPECT_EQ(shownWork(), (Texts{"Saving...", "0 % completed", "Stop"}));
    QTest::keyClick(window.findChild<ProgressWindow*>(), Qt::Key_Escape);
    EXPECT_EQ(shownWork(), question);
    QTest::mouseClick(window.findChild<ProgressWindow*>()->findChild<QPushButton*>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(filesIn(folder.path()), 1) << "the log alone";
    EXPECT_TRUE(desktop.alerts.shown.empty());
    EXPECT_TRUE(window.close());
}

TEST_F(FlashLogPage, AnExportThatCannotBeWrittenIsToldAndLeavesTheFileWhole)
{
    open(std::vector(2000, flashRecord()));
    const std::string path = folder.file("zavik_000.csv", std::as_bytes(std::span("old", 3)));
    const std::string told = "ZAVIK|" + platform::localized("msg.write_failed").toStdString();
    {
        const FullDisk disk(100000);
        saveAs(path);
    }
    for (const char* call : {"fsync", "rename"}) {
        CountedCalls calls;
        calls.fail(call, EIO);
        saveAs(path);
    }
    saveAs(folder.path());
    saveAs(folder.path("no/such/folder.csv"));
    EXPECT_EQ(desktop.alerts.shown, (Texts{told, told, told, told, told}));
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(filesIn(folder.path()), 2);
}

TEST_F(FlashLogPage, AWorkUnderWayIsDroppedWithThePage)
{
    open(std::vector(2000, flashRecord()));
    const std::string csv = folder.path("late.csv");
    page->onSaveCSVFile();
    desktop.panels.saveAnswer(csv);
    page->onHide();
    page.reset();
    settle();
    EXPECT_FALSE(fs::exists(csv));
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
        const QTableView& table = *page.template findChild<QTableView*>("tableView");
        const QHeaderView& header = *table.horizontalHeader();
        const QFontMetrics cells(table.font());
        for (int i = 0; i < header.count(); ++i) {
            EXPECT_EQ(header.sectionSize(i), format.columns[size_t(i)].width);
            const QString title = header.model()->headerData(i, Qt::Horizontal).toString();
            EXPECT_FALSE(title.isEmpty() || title.contains(',')) << i;
            EXPECT_LE(header.fontMetrics().horizontalAdvance(title) + 6, header.sectionSize(i))
                << i << language;
            std::string cell;
            format.columns[size_t(i)].append(cell, std::as_bytes(std::span(&record, 1)).data(), 9998);
            EXPECT_LE(cells.horizontalAdvance(QString::fromStdString(cell)) + 3, header.sectionSize(i))
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
