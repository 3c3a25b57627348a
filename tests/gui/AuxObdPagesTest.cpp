#include "lib/RangeSlider/SMDoubleSlider.h"
#include "platform/Texts.h"
#include "settings/ZVKSettingForAuxViewController.h"
#include "settings/ZVKSettingForObdViewController.h"
#include "tests/support/ShownPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <gtest/gtest.h>

#include <cstring>

namespace {

struct AuxPage : testing::Test, Shown<ZVKSettingForAuxViewController> {
    std::string text(const char* name) { return control<QLineEdit>(name).text().toStdString(); }
};
struct ObdPage : testing::Test, Shown<ZVKSettingForObdViewController> { };

TEST_F(AuxPage, SharesFollowTheKnobsAndEachKindNeedsATenth)
{
    EXPECT_EQ(text("alwaysField") + " " + text("motionField") + " " + text("eventField"), "70 10 20");
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

TEST_F(AuxPage, MotionSensitivities)
{
    const struct {
        uint32_t hd, fhd;
        int hdSegment, fhdSegment;
        uint32_t hdStored, fhdStored;
    } cases[] = {{75, 90, 2, 2, 75, 90}, {100, 80, 3, 3, 100, 100}, {50, 65, 0, 0, 50, 65},
        {150, 130, 4, 4, 150, 130}, {55, 70, 0, 1, 50, 70}, {60, 1, 1, 1, 60, 70}};
    for (const auto& c : cases) {
        record.motion720pCValue = c.hd;
        record.motion1080pCValue = c.fhd;
        page.setFileData(&record);
        EXPECT_EQ(segment("HDSensitivitySeg"), c.hdSegment);
        EXPECT_EQ(segment("FHDSensitivitySeg"), c.fhdSegment);
        page.populate();
        EXPECT_EQ(record.motion720pCValue, c.hdStored);
        EXPECT_EQ(record.motion1080pCValue, c.fhdStored);
    }
    control<QCheckBox>("useMotionChk").click();
    EXPECT_EQ(record.motion_detect_mode_on, 0U) << "at once";
}

TEST_F(ObdPage, VoltageAndEcoRange)
{
    EXPECT_EQ(control<QComboBox>("powerVoltageCombo").currentText(), "12.1v");
    control<QComboBox>("powerVoltageCombo").setCurrentIndex(0);
    auto& slider = control<SMDoubleSlider>("ecoSlider");
    slider.updateBoundControllerLoValue(30);
    slider.updateBoundControllerHiValue(70);
    page.populate();
    EXPECT_EQ(record.sd_mem_always_reserved, 11500U);
    EXPECT_EQ(record.drivingSecurity, 70U);
    EXPECT_EQ(record.parkingSecurity, 30U);
}

TEST_F(ObdPage, IntervalAndParkingShareOneField)
{
    struct Case {
        uint32_t before;
        int interval, parking;
        uint32_t shown, stored;
    };
    const Case cases[] = {{0x12, 1, 1, 0x12, 0x12}, {0x01, 0, 0, 0x01, 0x01}, {0x13, 3, 1, 0x14, 0x14},
        {0x03, 3, 0, 0x04, 0x04}, {0x24, 3, 0, 0x24, 0x04}, {0x10, -1, 1, 0x10, 0x10},
        {0x29, -1, 0, 0x29, 0x29}, {0xABCD0011, 0, 1, 0xABCD0011, 0x11}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.before);
        record.SaveDuration = c.before;
        page.setFileData(&record);
        EXPECT_EQ(segment("saveDurationSeg"), c.interval);
        EXPECT_EQ(segment("useObdParkingSeg"), c.parking);
        EXPECT_EQ(record.SaveDuration, c.shown);
        page.populate();
        EXPECT_EQ(record.SaveDuration, c.stored);
    }
    record.SaveDuration = 0x09;
    page.setFileData(&record);
    control<platform::SegmentedControl>("useObdParkingSeg").setSelectedSegment(1);
    page.populate();
    EXPECT_EQ(record.SaveDuration, 0x19U) << "the interval that cannot be shown stays";
}

} // namespace
