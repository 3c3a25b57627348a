#include "lib/KeyPath.h"
#include "lib/RangeSlider/SMDoubleSlider.h"
#include "tests/support/GuiTesting.h"

namespace {

struct RangeSlider : testing::Test {
    RangeSlider()
    {
        slider.resize(216, 28); // two points for each unit, from x = 8
        slider.setMaxValue(100);
        slider.setAltIncrementValue(1);
        set(20, 80);
    }
    void set(double low, double high)
    {
        slider.setDoubleLoValue(slider.minValue());
        slider.setDoubleHiValue(high);
        slider.setDoubleLoValue(low);
    }
    static double at(double value) { return 8 + 2 * value; }
    void mouse(QEvent::Type type, double value)
    {
        QMouseEvent event(type, {at(value), 14}, {at(value), 14}, Qt::LeftButton,
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&slider, &event);
    }
    void drag(double from, double to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
    }
    std::pair<double, double> values() const
    {
        const auto rounded = [](double value) { return std::round(value * 1e6) / 1e6; };
        return {rounded(slider.doubleLoValue()), rounded(slider.doubleHiValue())};
    }

    SMDoubleSlider slider;
};
using Values = std::pair<double, double>;

TEST_F(RangeSlider, StaysInOrderWhateverItIsGiven)
{
    std::mt19937 random(5);
    const double odd[] = {-1e300, 1e300, std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(), 0, 50};
    SMDoubleSliderCell cell;
    for (int i = 0; i < 20'000; ++i) {
        const double value = random() % 5 == 0 ? odd[random() % 6] : double(random() % 2000) / 10 - 50;
        const std::function<void()> steps[] = {[&] { cell.setMinValue(value); },
            [&] { cell.setMaxValue(value); }, [&] { cell.setDoubleLoValue(value); },
            [&] { cell.setDoubleHiValue(value); }, [&] { cell.setDoubleValue(value); },
            [&] { cell.setTrackingLoKnob(value > 0); }, [&] { cell.setLockedSliders(value > 0); },
            [&] { cell.setObjectLoValue(QString::number(value)); }, [&] { cell.setObjectHiValue({}); }};
        steps[random() % std::size(steps)]();
        ASSERT_LE(cell.minValue(), cell.doubleLoValue()) << i;
        ASSERT_LE(cell.doubleLoValue(), cell.doubleHiValue()) << i;
        ASSERT_LE(cell.doubleHiValue(), cell.maxValue()) << i;
    }
}

TEST_F(RangeSlider, TheMouseTakesTheKnobOnItsSide)
{
    for (const auto& [before, from, to, after, where] :
        {std::tuple(Values(20, 80), 80, 60, Values(20, 60), "on the high one's picture"),
            {{20, 60}, 22, 30, {28, 60}, "on the right half of the low one's picture"},
            {{28, 60}, 33, 50, {28, 50}, "beside both pictures the side decides"},
            {{49, 51}, 47, 40, {42, 51}, "where only the low one's picture is"},
            {{49, 51}, 50, 60, {49, 61}, "where both pictures are the side decides"},
            {{0, 0}, -1, 40, {0, 41}, "both at the minimum: the high one, the low one could not move"},
            {{100, 100}, 99, 30, {31, 100}, "both at the maximum: the low one"}}) {
        set(before.first, before.second);
        drag(from, to);
        EXPECT_EQ(values(), after) << where;
    }
    slider.setEnabled(false);
    drag(31, 50);
    EXPECT_EQ(values(), Values(31, 100));
}

TEST_F(RangeSlider, AVerticalOneTakesTheKnobByItsSide)
{
    SMDoubleSliderCell cell;
    cell.setMaxValue(100);
    cell.setDoubleHiValue(80);
    cell.setDoubleLoValue(10);
    QVariantMap coder;
    cell.encodeWithCoder(coder);
    coder["vertical"] = true;
    const std::tuple<double, bool, bool> cases[] = {{179, true, false}, {181, true, true}, {215, true, true},
        {60, true, false}, {35, false, true}, {37, false, false}, {1, false, true}, {160, false, false}};
    for (const auto& [y, flipped, isLow] : cases) {
        SMDoubleSliderCell pressed;
        pressed.initWithCoder(coder);
        pressed.setFrame({0, 0, 28, 216}); // the low knob is 20 to 36 points from the end of the minimum
        pressed.startTrackingAt({10, y}, flipped);
        EXPECT_EQ(pressed.trackingLoKnob(), isLow) << y;
    }
}

TEST_F(RangeSlider, DrawsItsBarAndBothKnobsWhereTheyAreTaken)
{
    QImage picture(slider.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::black);
    slider.render(&picture, {}, {}, {});
    const auto light = [&](double value, int dx) {
        return picture.pixelColor(int(at(value)) + dx, 8).lightness();
    };
    for (const double knob : {20.0, 80.0})
        EXPECT_GT(std::min(light(knob, 5), light(knob, -6)), 150) << knob;
    EXPECT_EQ(light(20, 12) + light(50, 0), 0) << "beside a knob and above the bar";
    EXPECT_GT(picture.pixelColor(int(at(50)), 21).lightness(), 50) << "the bar";
    // Their arrows point outwards: the low one's to the left.
    EXPECT_LT(light(20, 1), light(20, -2));
    EXPECT_LT(light(80, -2), light(80, 1));
}

TEST_F(RangeSlider, FollowsWhatItIsBoundToAndWritesBackWhatTheUserDoes)
{
    QDoubleSpinBox low;
    QDoubleSpinBox high;
    ObjectController controller;
    controller.setContent(&low);
    slider.bind("objectLoValue", &controller, "content.value");
    slider.bind("objectHiValue", &high, "value");
    high.setValue(70);
    low.setValue(10);
    EXPECT_EQ(values(), Values(10, 70));

    mouse(QEvent::MouseButtonPress, 9);
    mouse(QEvent::MouseMove, 40);
    EXPECT_EQ(low.value(), 41) << "while it is dragged";
    mouse(QEvent::MouseMove, 90);
    EXPECT_EQ(high.value(), 70) << "the other end is not touched";
    mouse(QEvent::MouseButtonRelease, 90);
    EXPECT_EQ(low.value(), 70);

    slider.setTrackingLoKnob(false);
    press(slider, Qt::Key_Right);
    press(slider, Qt::Key_PageUp);
    EXPECT_EQ(high.value(), 81);
}

TEST(RangeSliderFocus, TabVisitsBothKnobs)
{
    QWidget window;
    auto* before = new QLineEdit(&window);
    auto* slider = new SMDoubleSlider(&window);
    auto* after = new QLineEdit(&window);
    window.show();
    QApplication::setActiveWindow(&window);
    before->setFocus();
    // Forward the low knob comes first, from behind the high one.
    const std::tuple<int, QWidget*, bool> stops[] = {{Qt::Key_Tab, slider, true},
        {Qt::Key_Tab, slider, false}, {Qt::Key_Tab, after, false}, {Qt::Key_Backtab, slider, false},
        {Qt::Key_Backtab, slider, true}, {Qt::Key_Backtab, before, true}};
    for (const auto& [key, focused, isLow] : stops) {
        press(*QApplication::focusWidget(), key);
        ASSERT_EQ(QApplication::focusWidget(), focused);
        EXPECT_TRUE(focused != slider || slider->trackingLoKnob() == isLow);
    }
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(slider)->text(QAccessible::Value), QStringLiteral("0 – 0"));
}

} // namespace
