#include "platform/Images.h"
#include "tests/support/AppDelegateProbe.h"

using platform::Rect;
using platform::Screen;

namespace {

const Screen left{1, {0, 0, 1920, 1080}, {0, 0, 1920, 1050}};
const Screen right{2, {1920, 0, 1920, 1080}, {1920, 0, 1920, 1080}};

/// A recording that plays in a window across two screens.
class MainWindow : public AppTest {
protected:
    MainWindow()
        : AppTest({left, right})
    {
        openWith({"alwa_20150321_142530_F.avi", "alwa_20150321_142600_R.avi", "event_20150321_142530.avi",
            "motion_20150321_142530.avi"});
        app.start(0);
    }
    CustomWindow& window() { return app.window(); }
};

TEST_F(MainWindow, ANewFileLeavesTheWindowWhereTheUserHasPutIt)
{
    for (const Rect frame : {Rect{-194, 205, 1020, 640}, {1500, 300, 1224, 768}, {450, -500, 1020, 640}}) {
        window().setFrame(frame);
        app.start(app.mediaIndex() == 0 ? 1 : 0);
        EXPECT_EQ(window().frame(), frame) << frame.x;
        controller.sizeDown();
        EXPECT_EQ(window().frame() == frame, frame.width == 1020) << "at the least size nothing moves either";
    }
    window().setFrame({450, 205, 1000, 700});
    controller.setVideoScaleIndex(0);
    EXPECT_EQ(window().frame(), (Rect{450, 205, 1020, 640})) << "below the minimum both sides get it";
}

TEST_F(MainWindow, GrowsWhollyOnTheScreenThatHoldsMostOfIt)
{
    for (const auto& [before, after] : {std::pair(Rect{450, 400, 1020, 640}, Rect{450, 282, 1224, 768}),
             {{1300, -30, 1020, 640}, {1920 - 1224, 0, 1224, 768}},
             {{1500, 300, 1020, 640}, {1920, 300, 1224, 768}},
             {{3000, 600, 1020, 640}, {2616, 312, 1224, 768}}}) {
        window().setFrame(before);
        controller.sizeUp();
        EXPECT_EQ(window().frame(), after) << before.x;
    }
}

TEST_F(MainWindow, HasItsMinimumBackAfterFullScreen)
{
    for (const bool byNewFile : {false, true}) {
        controller.toggleFullScreen();
        EXPECT_EQ(window().minimumSize(), QSize(0, 0));
        byNewFile ? app.start(1) : window().leaveFullscreen();
        EXPECT_EQ(window().minimumSize(), QSize(1020, 640)) << byNewFile;
    }
    controller.toggleFullScreen();
    app.desk.screens.screens = {{1, {0, 0, 1024, 600}, {0, 0, 1024, 600}}};
    window().leaveFullscreen();
    EXPECT_EQ(window().frame(), (Rect{4, 0, 1020, 600})) << "the large screen was unplugged meanwhile";
}

TEST_F(MainWindow, ADroppedFolderIsOpenedAndNothingElseIsTaken)
{
    TempFolder other;
    other.file("alwa_20150321_142530_F.avi");
    other.file("notes.txt");
    const auto drop = [&](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(&window(), &enter);
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&window(), &event);
        app.desk.dispatcher.runAll();
        return enter.isAccepted();
    };
    const auto url = [](const std::string& path) {
        return QUrl::fromLocalFile(QString::fromStdString(path));
    };
    drop({url(other.path("notes.txt"))});
    EXPECT_EQ(app.list().directoryPath(), folder.path());
    EXPECT_FALSE(drop({url(other.path()), url(folder.path())}));
    EXPECT_FALSE(drop({QUrl("https://example.org/")}));
    EXPECT_EQ(app.list().count(), 4);
    EXPECT_TRUE(drop({url(other.path())}));
    EXPECT_EQ(app.list().directoryPath(), other.path());
    EXPECT_EQ(app.list().count(), 1);
    other.file("caf\xe9/alwa_20150321_142530_F.avi");
    EXPECT_TRUE(drop({QUrl::fromEncoded(QByteArray::fromStdString("file://" + other.path("caf%E9")))}));
    EXPECT_EQ(app.list().directoryPath(), other.path("caf\xe9"));
    EXPECT_EQ(app.list().count(), 1);
}

TEST_F(MainWindow, ListsNamesAndTheOtherColumnsWholeInBothLanguages)
{
    for (const char* name :
        {"alwa_20150321_142530.avi", "abcdefghijklmnopqrstuv.avi", "event_20150321<b>xyz12.avi"})
        folder.file(name);
    for (const char* language : {"en", "ko"}) {
        AppDelegateProbe shown(language);
        shown.open(folder.path());
        auto& table = shown.table();
        EXPECT_LT(table.rowHeight(0) * 12, table.viewport()->height()) << "a dozen rows are in sight";
        for (int column = 0; column < 4; ++column) {
            EXPECT_LE(table.horizontalHeader()->sectionSizeHint(column), table.columnWidth(column));
            for (int row = 0; row < shown.list().count(); ++row) {
                const QModelIndex index = table.model()->index(row, column);
                QStyleOptionViewItem cell;
                cell.initFrom(&table);
                cell.font = table.font();
                cell.widget = &table;
                cell.decorationSize = table.iconSize();
                cell.rect = table.visualRect(index);
                if (column == 3)
                    cell.features |= QStyleOptionViewItem::WrapText;
                const QSize wanted = table.itemDelegateForIndex(index)->sizeHint(cell, index);
                const std::string text = language + (" " + index.data().toString().toStdString());
                EXPECT_LE(wanted.width(), cell.rect.width()) << text;
                EXPECT_LE(wanted.height(), cell.rect.height()) << text;
            }
        }
    }
}

TEST(Pictures, AreDrawnWithTheScreensOwnPixels)
{
    const platform::Image picture = platform::imageNamed("icon_settings_n");
    QImage fine(64, 64, QImage::Format_ARGB32_Premultiplied);
    fine.fill(Qt::transparent);
    QImage large = fine;
    fine.setDevicePixelRatio(2);
    picture.draw(*std::make_unique<QPainter>(&fine), {0, 0, 32, 32});
    picture.draw(*std::make_unique<QPainter>(&large), {0, 0, 64, 64});
    fine.setDevicePixelRatio(1);
    EXPECT_EQ(fine, large);
}

/// What of the window is cut off or lies outside it.
std::string notWholeIn(CustomWindow& window)
{
    QCoreApplication::sendPostedEvents();
    std::string names;
    for (QWidget* part : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<QLabel*>(part);
        const bool isControl = qobject_cast<QAbstractButton*>(part) || qobject_cast<QSlider*>(part);
        if (!part->isVisible() || !(label || isControl) || part->objectName().isEmpty())
            continue;
        const QRect place(part->mapTo(&window, QPoint()), part->size());
        bool isWhole = window.rect().contains(place);
        for (const QWidget* box = part->parentWidget(); box != &window; box = box->parentWidget())
            isWhole &= QRect(box->mapTo(&window, QPoint()), box->size()).contains(place);
        isWhole &= !label       ? part->minimumSizeHint().width() <= part->width()
            : label->wordWrap() ? label->heightForWidth(label->width()) <= label->height()
                                : label->sizeHint().width() <= label->width();
        if (!isWhole)
            names += part->objectName().toStdString() + " ";
    }
    return names;
}

TEST(MainWindowParts, AreWholeAndInsideOnEveryScreenInBothLanguages)
{
    for (const Rect area : {Rect{0, 0, 1920, 1080}, {0, 0, 1024, 600}, {0, 0, 960, 540}}) {
        for (const char* language : {"en", "ko"}) {
            SCOPED_TRACE(formatted("%g %s", area.width, language));
            TempFolder folder;
            folder.file("motion_20150321_142530.avi");
            AppDelegateProbe app(language, {}, {{1, area, area}});
            CustomWindow& window = app.window();
            EXPECT_EQ(fittedInto(area, window.frame()), window.frame());
            EXPECT_EQ(notWholeIn(window), "");
            app.open(folder.path());
            app.player().lengthMs = 3 * 3600 * 1000;
            app.start(0);
            app.playInfo().setPosition(0.9);
            EXPECT_EQ(notWholeIn(window), "");
            app.find<QLabel>("titleLabel").setText(QString(300, u'm'));
            EXPECT_EQ(notWholeIn(window), "titleLabel ") << "it alone gives way";
            app.controller->clickMapViewButton();
            EXPECT_EQ(notWholeIn(window), "titleLabel ");
            app.controller->toggleFullScreen();
            EXPECT_EQ(app.find<QLabel>("timeFieldForFullScreen").text(), "2:42:00 / 3:00:00");
            EXPECT_EQ(notWholeIn(window), "");
            app.controller->toggleFullScreen();
            app.player().reportFailure("damaged");
            EXPECT_EQ(notWholeIn(window), "titleLabel ");
        }
    }
}

} // namespace
