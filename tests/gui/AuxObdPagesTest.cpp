#include "lib/RangeSlider/SMDoubleSlider.h"
#include "platform/Texts.h"
#include "settings/pages/ShareBar.h"
#include "settings/pages/ZVKSettingForAuxViewController.h"
#include "settings/pages/ZVKSettingForObdViewController.h"
#include "tests/support/ShownPage.h"

namespace {

struct AuxPage : testing::Test, Shown<ZVKSettingForAuxViewController> {
    std::string text(const char* name) { return control<QLabel>(name).text().toStdString(); }
    std::string shares()
    {
        return text("alwaysField") + " " + text("motionField") + " " + text("eventField");
    }
    bool isMarked() { return control<QLabel>("shareSumLabel").isVisibleTo(&page); }
};
struct ObdPage : testing::Test, Shown<ZVKSettingForObdViewController> { };

TEST_F(AuxPage, SharesFollowTheKnobsAndEachKindNeedsATenth)
{
    EXPECT_EQ(shares(), "70 10 20");
    auto& slider = control<SMDoubleSlider>("sdRatioSlider");

    const _FILEDATA before = record;
    slider.updateBoundControllerHiValue(95.7); // as a drag does
    EXPECT_EQ(text("eventField"), "5");
    EXPECT_EQ(page.validateUserInput(), platform::localized("msg.sdcard_ratio_too_low"));
    page.populate();
    EXPECT_EQ(std::memcmp(&before, &record, sizeof record), 0)
        << "nothing is stored while the input is not valid";
    slider.updateBoundControllerHiValue(20);
    slider.updateBoundControllerLoValue(10);
    EXPECT_EQ(page.validateUserInput(), std::nullopt);
    page.populate();
    EXPECT_EQ(record.sd_mem_always_ratio, 10U);
    EXPECT_EQ(record.sd_mem_motion_ratio, 10U);
    EXPECT_EQ(record.sd_mem_event_ratio, 80U);
}

TEST_F(AuxPage, SharesThatDoNotAddUpAreShownAsTheyAreAndMarkedUntilAKnobMoves)
{
    EXPECT_FALSE(isMarked());
    record.sd_mem_motion_ratio = 70;
    record.sd_mem_event_ratio = 4000000000;
    page.setFileData(&record);
    EXPECT_EQ(shares(), "70 70 4000000000");
    EXPECT_TRUE(isMarked());
    EXPECT_NEAR(
        control<ShareBar>("shareBar").parts()[2].right(), control<ShareBar>("shareBar").width() - 8, 1e-6);

    // A knob that is only taken moves nothing.
    auto& slider = control<SMDoubleSlider>("sdRatioSlider");
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
        const QPointF onLow(8 + 0.7 * (slider.width() - 16) + 1, slider.height() / 2.0);
        QMouseEvent event(type, onLow, onLow, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&slider, &event);
    }
    EXPECT_FALSE(page.isTouched());
    slider.updateBoundControllerLoValue(40);
    EXPECT_EQ(shares(), "40 60 0") << "the other knob counts from where it is seen";
    EXPECT_TRUE(page.isTouched());
    EXPECT_FALSE(isMarked());
    EXPECT_TRUE(page.validateUserInput());
    slider.updateBoundControllerHiValue(90);
    EXPECT_EQ(page.validateUserInput(), std::nullopt);
    page.setFileData(&record);
    EXPECT_EQ(shares(), "70 70 4000000000") << "shown anew";
}

TEST_F(AuxPage, PlaceOfUseIndoors)
{
    EXPECT_EQ(segment("useEnvironmentSeg"), 0) << "3000 is a vehicle";
    for (const uint32_t stored : {0U, 0U, 1U}) { // changed, untouched, changed back
        if (segment("useEnvironmentSeg") != int(stored == 0))
            choose("useEnvironmentSeg", stored == 0);
        page.populate();
        EXPECT_EQ(record.BrightnessFixed, stored);
        page.setFileData(&record);
    }
}

TEST_F(AuxPage, MotionSensitivities)
{
    for (const auto& [hd, fhd, hdSegment, fhdSegment] : {std::tuple(75U, 90U, 2, 2), {100U, 80U, 3, 3},
             {50U, 65U, 0, 0}, {150U, 130U, 4, 4}, {55U, 70U, 0, 1}, {60U, 1U, 1, 1}}) {
        record.motion720pCValue = hd;
        record.motion1080pCValue = fhd;
        page.setFileData(&record);
        EXPECT_EQ(segment("HDSensitivitySeg"), hdSegment);
        EXPECT_EQ(segment("FHDSensitivitySeg"), fhdSegment);
    }
    choose("FHDSensitivitySeg", 1);
    page.populate();
    EXPECT_EQ(record.motion1080pCValue, 70U) << "what was shown already can be chosen";
    control<QCheckBox>("useMotionChk").click();
    EXPECT_EQ(record.motion_detect_mode_on, 0U) << "at once";
    for (const char* const name : {"HDSensitivitySeg", "FHDSensitivitySeg"})
        EXPECT_FALSE(control<SegmentedControl>(name).isEnabled());
}

TEST_F(ObdPage, IntervalAndParkingShareOneField)
{
    // What is stored, the interval and the parking that are shown, what is stored after another choice of
    // each.
    const std::tuple<uint32_t, int, int, uint32_t, uint32_t> cases[] = {{0x12, 1, 1, 0x11, 0x02},
        {0x02, 1, 0, 0x01, 0x12}, {0x13, 3, 1, 0x11, 0x03}, {0x24, 3, 0, 0x21, 0x14},
        {0x10, -1, 1, 0x11, 0x00}, {0x29, -1, 0, 0x21, 0x19}, {0xABCD0012, 1, 1, 0xABCD0011, 0x02}};
    for (const auto& [before, interval, parking, firstInterval, otherParking] : cases) {
        SCOPED_TRACE(before);
        for (const char* const changed : {"saveDurationSeg", "useObdParkingSeg"}) {
            const bool isInterval = *changed == 's';
            record.SaveDuration = before;
            page.setFileData(&record);
            EXPECT_EQ(segment("saveDurationSeg"), interval);
            EXPECT_EQ(segment("useObdParkingSeg"), parking);
            choose(changed, isInterval ? 0 : 1 - parking);
            page.populate();
            EXPECT_EQ(record.SaveDuration, isInterval ? firstInterval : otherParking);
        }
    }
}

} // namespace
