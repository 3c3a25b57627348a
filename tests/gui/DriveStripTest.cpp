#include "lib/DriveStrip.h"
#include "drives/DriveTimeline.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/KeyPress.h"

#include <QAccessible>

#include <cmath>

namespace {

Take take(int minute, std::optional<int> seconds)
{
    const auto name = "/alwa_20240518_18" + std::to_string(minute) + "00.avi";
    const auto media = ZVKMedia::mediaWithPath(name);
    const auto length =
        seconds ? std::optional<std::chrono::microseconds>(std::chrono::seconds(*seconds)) : std::nullopt;
    return {media, {}, *cameraTimeOf(media), length};
}

TEST(DriveTimeline, GoesFromPlaceToPointAndBackAcrossFiles)
{
    DriveTimeline line(Drive{{take(10, 60), take(11, std::nullopt), take(12, 30)}, {}});
    using Place = DriveTimeline::Place;
    EXPECT_EQ(line.length(), 90);
    EXPECT_EQ(line.placeAt(59.5), (Place{0, 59.5}));
    EXPECT_EQ(line.placeAt(60), (Place{2, 0})) << "a take without a length is stepped over";
    EXPECT_EQ(line.placeAt(-5), (Place{0, 0}));
    const DriveTimeline unknown(Drive{{take(10, std::nullopt), take(11, std::nullopt), take(12, 30)}, {}});
    EXPECT_EQ(unknown.placeAt(0), (Place{0, 0})) << "a drive starts with its first take";
    EXPECT_EQ(line.placeAt(1000), (Place{2, 30}));
    EXPECT_EQ(line.pointOf({2, 10}), 70);
    EXPECT_EQ(line.pointOf({0, 99}), 60) << "a file that plays longer stays within its segment";
    line.setLength(1, 20);
    line.setLength(2, std::nan(""));
    EXPECT_EQ(line.length(), 110);
    EXPECT_EQ(line.placeAt(65), (Place{1, 5}));
    EXPECT_EQ(line.startOf(3), 110);
}

TEST(DriveStrip, GoesWhereItIsClickedAndDragged)
{
    DriveStrip strip;
    std::vector<double> told;
    QObject::connect(&strip, &DriveStrip::moved, &strip, [&](double to) { told.push_back(to); });
    strip.resize(214, 22); // 200 points of line
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {107, 12});
    EXPECT_TRUE(told.empty()) << "there is nothing to go to";
    strip.setSegments({{0, 0.5}, {0.5, 1, DriveStrip::SegmentKind::event}}, {{0.25}});
    QTest::mouseClick(&strip, Qt::RightButton, {}, {107, 12});
    QTest::mousePress(&strip, Qt::LeftButton, {}, {107, 12});
    strip.setPosition(0.1);
    EXPECT_EQ(strip.position(), 0.5) << "the user holds it";
    QTest::mouseMove(&strip, {400, 12});
    QTest::mouseRelease(&strip, Qt::LeftButton, {}, {400, 12});
    strip.setPosition(0.1);
    strip.setLength(200);
    press(strip, Qt::Key_Right);
    auto* seen = QAccessible::queryAccessibleInterface(&strip);
    EXPECT_EQ(seen->role(), QAccessible::Slider);
    EXPECT_NEAR(seen->valueInterface()->currentValue().toDouble(), 30, 1e-6);
    press(strip, Qt::Key_Home);
    press(strip, Qt::Key_Left);
    EXPECT_THAT(told, testing::ElementsAre(0.5, 1, testing::DoubleEq(0.15), 0, 0)) << "ten seconds a key";
}

TEST(DriveStrip, ShowsWhereOneIsThroughSmallSteps)
{
    DriveStrip strip;
    strip.resize(214, 22);
    strip.setPalette(QPalette(Qt::black));
    strip.setSegments({{0, 1}}, {});
    const auto barAt = [&] {
        const QImage image = strip.grab().toImage();
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, image.height() - 3).lightness() > 240)
                return x;
        return -1;
    };
    const int before = barAt();
    for (int i = 1; i <= 1000; ++i) {
        strip.setPosition(i / 1000.0 / 2);
        QCoreApplication::processEvents();
    }
    EXPECT_NEAR(barAt() - before, 100, 2);
}

} // namespace
