#include "app/drives/DrivesPanel.h"
#include "app/drives/DriveListModel.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/VirtualDispatcher.h"
#include "ui_DrivesPanel.h"

#include <QScrollBar>

#include <filesystem>

namespace {

/// The panel over a card with three drives: an hour apart, of two minutes each, both cameras.
class DrivesPanelTest : public testing::Test {
protected:
    DrivesPanelTest()
    {
        outlets.setupUi(&form);
        for (const char* hour : {"17", "18", "19"}) {
            for (const char* minute : {"12", "13"}) {
                for (const char* camera : {"F", "R"})
                    card.file(std::string("alwa_20240518_") + hour + minute + "00_" + camera + ".avi",
                        recordingFile(
                            60, *hour == '1' && hour[1] == '8' ? minuteWithImpact() : SideDataWriter()));
            }
        }
        panel = std::make_unique<DrivesPanel>(dispatcher, outlets, previews,
            DrivesPanel::Told{[this](size_t drive) { chosen.push_back(drive); },
                [this](size_t, const DriveMoment& moment) { moments.push_back(moment.seconds); },
                [this](size_t drive) { figured.push_back(drive); }, [this] { ++changes; }});
        form.resize(334, 400);
        form.show();
    }

    void step()
    {
        dispatcher.runOneBackground();
        dispatcher.runMain();
    }
    void scan() { panel->setRecordings(ZVKMediaList::scan(card.path()).medias); }
    QString row(int index, int role = Qt::DisplayRole) const
    {
        return outlets.drivesListView->model()->index(index, 0).data(role).toString();
    }

    TempFolder card;
    VirtualDispatcher dispatcher;
    PreviewReader previews{dispatcher, nullptr};
    QWidget form;
    Ui::DrivesPanel outlets;
    std::vector<size_t> chosen;
    std::vector<size_t> figured;
    std::vector<double> moments;
    int changes = 0;
    std::unique_ptr<DrivesPanel> panel;
};

TEST_F(DrivesPanelTest, ShowsDrivesAndReadsTheirFiguresAsTheyAreSeen)
{
    EXPECT_EQ(outlets.drivesStateLabel->text(), platform::localized("drives.none"));
    scan();
    EXPECT_EQ(outlets.drivesStateLabel->text(), platform::localized("drives.reading"));
    step();
    ASSERT_EQ(outlets.drivesListView->model()->rowCount(), 3);
    EXPECT_EQ(row(1, DriveListModel::dayRole), "Sat 18 May 2024");
    EXPECT_EQ(row(1, DriveListModel::timesRole), "18:12 – …") << "nothing waits for the lengths";
    EXPECT_EQ(row(1, DriveListModel::figuresRole), "…");
    step();
    EXPECT_EQ(row(1, DriveListModel::timesRole), "18:12 – 18:14");
    EXPECT_EQ(row(1, DriveListModel::figuresRole), "2 min");
    outlets.drivesListView->setCurrentIndex(outlets.drivesListView->model()->index(2, 0));
    QCoreApplication::processEvents();
    dispatcher.runAll();
    EXPECT_EQ(figured, (std::vector<size_t>{0, 2, 1})) << "after the one under way, the selected one";
    EXPECT_EQ(row(1, DriveListModel::figuresRole), "2 min · 2.00 g");
    EXPECT_EQ(row(1, DriveListModel::momentsRole), "1 moment");
    EXPECT_TRUE(row(1).contains("2 min · 2.00 g, Always, 1 moment")) << row(1).toStdString();
}

TEST_F(DrivesPanelTest, KeepsSelectionAndPlaceWhenLengthsMakeOtherDrives)
{
    card.file("alwa_20240518_170100_F.avi", recordingFile(3600));
    for (int hour = 10; hour < 17; ++hour)
        card.file("alwa_20240518_" + std::to_string(hour) + "0000_F.avi", recordingFile(60));
    scan();
    step();
    QListView& view = *outlets.drivesListView;
    ASSERT_EQ(view.model()->rowCount(), 11);
    view.setCurrentIndex(view.model()->index(9, 0));
    QCoreApplication::processEvents();
    view.verticalScrollBar()->setValue(view.visualRect(view.model()->index(2, 0)).height() / 2);
    const auto place = [&] { return view.visualRect(view.model()->index(2, 0)).top(); };
    const int before = place();
    const int changed = changes;
    step();
    ASSERT_EQ(view.model()->rowCount(), 10) << "the hour reaches into the next drive";
    EXPECT_EQ(view.currentIndex().row(), 8);
    QCoreApplication::processEvents();
    EXPECT_EQ(place(), before);
    EXPECT_EQ(changes, changed + 1);
    dispatcher.runAll();
    EXPECT_EQ(row(7, DriveListModel::figuresRole), "1 h 0 min");
    EXPECT_EQ(row(8, DriveListModel::figuresRole), "2 min · 2.00 g");
}

TEST_F(DrivesPanelTest, AFileThatHangsHoldsUpNoOther)
{
    using namespace std::chrono_literals;
    const auto unread = [this](size_t drive) { return panel->library().figures(drive)->unread; };
    scan();
    step();
    outlets.drivesListView->setCurrentIndex(outlets.drivesListView->model()->index(2, 0));
    dispatcher.hangBackground();
    dispatcher.advance(11s);
    dispatcher.hangBackground();
    dispatcher.advance(11s);
    step();
    EXPECT_EQ(row(0, DriveListModel::timesRole), "17:12 – 17:14") << "the second recording's length is known";
    EXPECT_EQ(row(2, DriveListModel::timesRole), "19:12 – 19:14");
    dispatcher.hangBackground();
    dispatcher.advance(11s);
    dispatcher.runAll();
    EXPECT_EQ(figured, (std::vector<size_t>{2, 0, 1})) << "as they are looked at";
    const std::vector both{card.path("alwa_20240518_191200_F.avi"), card.path("alwa_20240518_191200_R.avi")};
    EXPECT_EQ(unread(2), both) << "first the length of the one hung, then the other";
    EXPECT_EQ(unread(0), std::vector{card.path("alwa_20240518_171200_F.avi")});
    EXPECT_EQ(row(1, DriveListModel::figuresRole), "2 min · 2.00 g");
    scan();
    step();
    size_t hung = 0;
    for (; dispatcher.hangBackground() > 0; ++hung)
        dispatcher.advance(11s);
    EXPECT_EQ(hung, 9U) << "after eight files the card itself seems to hang; the drives by what is known";
    scan();
    dispatcher.runAll();
    EXPECT_EQ(row(2, DriveListModel::figuresRole), "2 min") << "another look begins anew";
}

TEST_F(DrivesPanelTest, ReadsOnWhereTheFolderIsNow)
{
    scan();
    step();
    dispatcher.hangBackground();
    std::filesystem::rename(card.path(), card.path() + "-moved");
    panel->movedTo(card.path(), card.path() + "-moved");
    dispatcher.runAll();
    EXPECT_EQ(row(1, DriveListModel::figuresRole), "2 min · 2.00 g");
    panel->movedTo(card.path() + "-moved", card.path());
    std::filesystem::rename(card.path() + "-moved", card.path());
    EXPECT_EQ(panel->library().figures(1)->moments.front().file, card.path("alwa_20240518_181200_F.avi"));
}

TEST_F(DrivesPanelTest, OfAnotherFolderDropsWhatIsUnderWay)
{
    scan();
    dispatcher.runAll();
    const size_t before = figured.size();
    scan();
    panel->setRecordings({});
    dispatcher.runAll();
    EXPECT_EQ(outlets.drivesListView->model()->rowCount(), 0);
    EXPECT_EQ(figured.size(), before);
    scan();
    dispatcher.runOneBackground();
    panel.reset();
    dispatcher.runAll();
}

TEST_F(DrivesPanelTest, ADoubleClickChooses)
{
    scan();
    dispatcher.runAll();
    QListView& list = *outlets.drivesListView;
    const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(chosen, std::vector<size_t>{1});
    EXPECT_EQ(panel->library().driveOf(card.path("alwa_20240518_191300_R.avi")), 2u);
    panel->movedTo(card.path(), "/elsewhere");
    EXPECT_EQ(panel->library().driveOf("/elsewhere/alwa_20240518_191300_R.avi"), 2u);
    EXPECT_EQ(panel->library().driveOf(card.path("alwa_20240518_191300_R.avi")), std::nullopt);
}

} // namespace
