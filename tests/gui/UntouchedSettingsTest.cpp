#include "app/window/SettingPages.h"
#include "lib/ButtonMatrix.h"
#include "lib/RangeSlider/SMDoubleSlider.h"
#include "settings/pages/ThresholdField.h"
#include "settings/pages/ZVKCarNumberTextField.h"
#include "settings/pages/ZVKSettingForObdViewController.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/ShownPage.h"

namespace {

/// The page of the OBD camera in the place of the drive log, which is no part of the record.
SettingTabs recordTabs()
{
    SettingTabs tabs = settingTools().tabs;
    tabs.back().make = [](const SettingPageContext& context) {
        return std::make_unique<ZVKSettingForObdViewController>(context.desktop);
    };
    return tabs;
}

struct UntouchedSettings : testing::Test {
    TestPlatform desktop;
    const std::string none;
    const SettingPageContext context{desktop.pieces, none, none, none};
    const SettingTabs tabs = recordTabs();
};

/// How many of the record's words a user may change by the control.
size_t wordsOf(const std::string& control)
{
    const std::map<std::string, size_t> several{{"videoResolution", 2}, {"carNumberField", 2},
        {"gsensorSensitivityDrivingSeg", 3}, {"gsensorSensitivityParkingSeg", 3}, {"ecoSlider", 2},
        {"sdRatioSlider", 3}};
    return several.contains(control) ? several.at(control) : 1;
}

/// Any bytes, mostly with values that the controls know strewn in.
_FILEDATA randomRecord(std::mt19937& random)
{
    std::array<uint32_t, 68> words;
    const auto below = [&](uint32_t end) { return uint32_t(random() % end); };
    const bool isWild = below(4) == 0;
    const std::array<uint32_t, 3> scales{4, 32, 260};
    for (uint32_t& word : words)
        word = isWild || below(4) == 0 ? uint32_t(random()) : below(scales[below(3)]);
    if (!isWild) {
        words[14] = below(3); // resolution
        words[16] = below(50) << 8; // frame rate
        for (const size_t word : {22, 23, 24, 26, 27, 28}) // thresholds
            words[word] = 5 + below(146);
        words[65] = 0x42003141; // a plate's last part, with a byte behind its end
    }
    _FILEDATA record;
    std::memcpy(&record, words.data(), sizeof record);
    return record;
}

std::vector<size_t> changedWords(const _FILEDATA& before, const _FILEDATA& after)
{
    std::vector<size_t> offsets;
    for (size_t at = 0; at < sizeof before; at += 4)
        if (bytesOf(before).compare(at, 4, bytesOf(after), at, 4) != 0)
            offsets.push_back(at);
    return offsets;
}

bool isControl(const QWidget* widget)
{
    const auto isOneOf = [](const QWidget* one, std::initializer_list<const char*> kinds) {
        return std::ranges::any_of(kinds, [one](const char* kind) { return one->inherits(kind); });
    };
    return !isOneOf(widget->parentWidget(), {"SegmentedControl", "ButtonMatrix"})
        && isOneOf(widget,
            {"SegmentedControl", "ButtonMatrix", "QAbstractButton", "QComboBox", "QLineEdit",
                "SMDoubleSlider"});
}

QVariant shownBy(const QWidget& control)
{
    if (auto* segments = dynamic_cast<const SegmentedControl*>(&control))
        return segments->selectedSegment();
    if (auto* matrix = dynamic_cast<const ButtonMatrix*>(&control))
        return matrix->selectedCell();
    if (auto* slider = dynamic_cast<const SMDoubleSlider*>(&control))
        return slider->stringLoValue() + slider->stringHiValue();
    return control.property(control.metaObject()->userProperty().name());
}

/// Something else than what is shown, by mouse or keyboard. False when the control has no such choice.
bool change(QWidget& control, std::mt19937& random)
{
    if (!control.isEnabled())
        return false;
    if (auto* segments = dynamic_cast<SegmentedControl*>(&control)) {
        const int step = 1 + int(random() % unsigned(segments->segmentCount() - 1));
        segments->segment((segments->selectedSegment() + step) % segments->segmentCount())->click();
    } else if (auto* matrix = dynamic_cast<ButtonMatrix*>(&control)) {
        matrix->cell(matrix->selectedCell() == 2 ? 3 : 2)->click();
    } else if (auto* button = dynamic_cast<QAbstractButton*>(&control)) {
        if (button->inherits("QRadioButton") && button->isChecked())
            return false;
        button->click();
    } else if (auto* combo = dynamic_cast<QComboBox*>(&control)) {
        press(*combo, combo->currentIndex() == 0 ? Qt::Key_Down : Qt::Key_Home);
    } else if (auto* field = dynamic_cast<ThresholdField*>(&control)) {
        field->selectAll();
        field->insert(field->text() == "1.00" ? "1.01" : "1.00");
    } else if (auto* plate = dynamic_cast<QLineEdit*>(&control)) {
        press(*plate, Qt::Key_End);
        press(*plate, Qt::Key_Backspace);
        press(*plate, Qt::Key_Z, "Z");
    } else {
        auto& slider = dynamic_cast<SMDoubleSlider&>(control);
        for (const bool lo : {true, false}) {
            slider.setTrackingLoKnob(lo);
            for (const int key : {Qt::Key_Home, Qt::Key_PageUp, Qt::Key_PageUp})
                press(slider, key);
        }
    }
    return true;
}

} // namespace

TEST_F(UntouchedSettings, StayBitForBitOnEveryPage)
{
    std::mt19937 random(20);
    for (int round = 0; round < 60; ++round) {
        const _FILEDATA before = randomRecord(random);
        for (const SettingTab& tab : tabs) {
            _FILEDATA record = before;
            const auto page = tab.make(context);
            page->setFileData(&record);
            EXPECT_FALSE(page->isTouched());
            page->populate();
            ASSERT_EQ(changedWords(before, record), std::vector<size_t>())
                << page->objectName().toStdString();
            ASSERT_EQ(page->validateUserInput(), std::nullopt) << "what nobody typed is not refused";
        }
    }
}

TEST_F(UntouchedSettings, AUsersChangeWritesItsOwnFieldsOnlyAndIsShownAgain)
{
    std::mt19937 random(21);
    std::set<std::string> all{"useExternalPowerChk"}, written{"useExternalPowerChk"}; // which is hidden
    for (int round = 0; round < 12; ++round) {
        _FILEDATA before = randomRecord(random);
        before.SaveDuration &= ~2U; // not the OBD camera's third interval, see below
        for (const SettingTab& tab : tabs) {
            const auto listed = tab.make(context);
            for (const QWidget* each : listed->findChildren<QWidget*>()) {
                if (!isControl(each))
                    continue;
                const std::string name = each->objectName().toStdString();
                SCOPED_TRACE(name + " " + std::to_string(round));
                all.insert(name);
                _FILEDATA record = before;
                const auto page = tab.make(context);
                page->setFileData(&record);
                QWidget& control = *page->findChild<QWidget*>(each->objectName());
                if (!change(control, random))
                    continue;
                EXPECT_TRUE(page->isTouched());
                if (page->validateUserInput())
                    continue;
                page->populate();
                written.insert(name);
                EXPECT_FALSE(changedWords(before, record).empty());
                EXPECT_LE(changedWords(before, record).size(), wordsOf(name));
                const QVariant chosen = shownBy(control);
                page->setFileData(&record);
                // A camera with OBD has no third interval: its code counts as the fourth.
                EXPECT_TRUE(shownBy(control) == chosen || (name == "saveDurationSeg" && chosen == 2));
                EXPECT_FALSE(page->isTouched());
            }
        }
    }
    EXPECT_EQ(written, all) << "each control reaches the record";
}
