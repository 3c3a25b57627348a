#include "app/window/SettingPages.h"
#include "fuzz/Require.h"
#include "settings/record/FileData.h"
#include "tests/support/TestPlatform.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

namespace {

/// The toolkit without a screen, and the settings' pages on a virtual desktop.
struct Stage {
    Stage()
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        static int count = 1;
        static char name[] = "fuzz";
        static char* arguments[] = {name, nullptr};
        new QApplication(count, arguments);
    }
    TestPlatform desktop;
    SettingTabs tabs = settingTools().tabs;
};

void use(QWidget& control, std::string_view& rest)
{
    const std::string_view value = nextPart(rest, '\n');
    const int number = value.empty() ? 0 : static_cast<unsigned char>(value.front());
    if (auto* combo = qobject_cast<QComboBox*>(&control))
        combo->setCurrentIndex(number % (combo->count() + 1) - 1), emit combo->activated(number);
    else if (auto* slider = qobject_cast<QAbstractSlider*>(&control))
        slider->setValue(slider->minimum() + number);
    else if (auto* edit = qobject_cast<QLineEdit*>(&control))
        edit->setText(QString::fromUtf8(value.data(), qsizetype(value.size()))),
            emit edit->textEdited(edit->text());
    else if (auto* button = qobject_cast<QAbstractButton*>(&control))
        button->click();
}

} // namespace

/// A page's number, a record, then what the user does: a control's number and its value up to a line feed.
void fuzz(std::string_view input)
{
    static auto& stage = *new Stage;
    _FILEDATA record;
    if (input.size() < 1 + sizeof record)
        return;
    std::memcpy(&record, input.data() + 1, sizeof record);
    std::string_view rest = input.substr(1 + sizeof record);
    const std::string noCard;
    const std::string language = static_cast<unsigned char>(input[0]) % 2 ? "ko" : "en";
    const SettingTab& tab = stage.tabs[static_cast<unsigned char>(input[0]) / 2 % stage.tabs.size()];
    const auto page = tab.make({stage.desktop.pieces, language, noCard, noCard});

    // What nobody touched stays.
    const _FILEDATA before = record;
    page->setFileData(&record);
    page->populate();
    require(std::memcmp(&record, &before, sizeof record) == 0);

    const QList<QWidget*> controls = page->findChildren<QWidget*>();
    while (!rest.empty() && !controls.empty()) {
        const unsigned char which = nextByte(rest);
        use(*controls[which % controls.size()], rest);
    }
    stage.desktop.dispatcher.runAll();
    // What is refused is not written, and what was written is shown and written alike.
    const bool isRefused = page->validateUserInput().has_value();
    page->populate();
    _FILEDATA refused = before;
    // These two boxes write at once.
    refused.auto_park_in_mode_on = record.auto_park_in_mode_on;
    refused.motion_detect_mode_on = record.motion_detect_mode_on;
    require(!isRefused || std::memcmp(&record, &refused, sizeof record) == 0);
    const _FILEDATA written = record;
    page->setFileData(&record);
    page->populate();
    require(isRefused || std::memcmp(&record, &written, sizeof record) == 0);
}
