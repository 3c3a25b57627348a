#include "settings/ZVKSettingController.h"

#include "cardtools/ZVKFormatWindowController.h"
#include "common/Alerts.h"
#include "common/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/LoadingSheet.h"
#include "ui_ZVKSettingController.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

/// The default button is pressed by Return wherever the focus is, except in a table, where it opens a row.
class SettingWindow final : public QWidget {
public:
    std::function<void()> returnPressed;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (isReturn && !qobject_cast<QAbstractItemView*>(focusWidget()))
            returnPressed();
        else
            QWidget::keyPressEvent(event);
    }
};

} // namespace

ZVKSettingController::ZVKSettingController(
    platform::Platform& layer, std::string interfaceLanguage, SettingTabs pages)
    : desktop(layer),
      language(std::move(interfaceLanguage)),
      tabs(std::move(pages)),
      m_bKorean(language == "ko"),
      cardFollower(desktop.dispatcher, desktop.disks,
          [this](const std::string&, const std::string& path) { cardMoved(path); })
{
    initFileDataForRegion(m_FileData, m_bKorean);
}

ZVKSettingController::~ZVKSettingController()
{
    alive.reset();
    lastDialogController.reset();
    // The pages' signals reach objects of this controller.
    view.reset();
}

QWidget& ZVKSettingController::window()
{
    if (!view) {
        auto made = std::make_unique<SettingWindow>();
        made->returnPressed = [this] { outlets->saveButton->click(); };
        view = std::move(made);
        outlets = std::make_unique<Ui::ZVKSettingController>();
        outlets->setupUi(view.get());
        windowDidLoad();
    }
    return *view;
}

void ZVKSettingController::showWindow()
{
    window().show();
    view->raise();
    view->activateWindow();
}

void ZVKSettingController::windowDidLoad()
{
    QStringList labels;
    for (const SettingTab& tab : tabs)
        labels << platform::localized(tab.labelKey);
    setSegmentLabels(*outlets->functionSegmentedControl, labels);
    progressPanel = new LoadingSheet(desktop.dispatcher, *outlets->contentBox);
    connectControls();
    centre();
    onInitDIalog();
    changeViewController(0);
    outlets->functionSegmentedControl->setFocus();
}

/// In the middle of the visible area of its screen, and never larger than it.
void ZVKSettingController::centre()
{
    const platform::Rect visible = desktop.screens.screenOf(*view).visibleFrame;
    const double width = std::min(double(view->width()), visible.width);
    const double height = std::min(double(view->height()), visible.height);
    desktop.screens.setFrameOf(*view,
        {visible.x + (visible.width - width) / 2, visible.y + (visible.height - height) / 2, width, height});
}

void ZVKSettingController::onInitDIalog()
{
    initFileDataForRegion(m_FileData, m_bKorean);
    m_strVersion = QCoreApplication::applicationVersion().toStdString();
    showTitle();
    loadSettingFile();
}

void ZVKSettingController::showTitle()
{
    QString title = platform::localized("setting.window_title")
        + QStringLiteral("[Ver %1]").arg(QString::fromStdString(m_strVersion));
    if (!m_SettingFilePath.empty())
        title += QStringLiteral(" : ") + QString::fromStdString(m_SettingFilePath);
    view->setWindowTitle(title);
}

void ZVKSettingController::loadSettingFile()
{
    setReading(true);
    auto& dispatcher = desktop.dispatcher;
    dispatcher.inBackground([this, &dispatcher, &disks = desktop.disks, life = std::weak_ptr(alive)] {
        dispatcher.onMain([this, life, found = findUSBVolume(disks)] {
            if (!life.expired())
                cardFound(found);
        });
    });
}

/// A card is named before it is read, unless it is in use.
void ZVKSettingController::cardFound(const CardSettings& found)
{
    if (isNamedAsCard(found) || (delegate && delegate->isInUse(found.disk->mountedURL))) {
        readCard(found);
        return;
    }
    auto& dispatcher = desktop.dispatcher;
    dispatcher.inBackground([this, &dispatcher, &disks = desktop.disks, found, life = std::weak_ptr(alive)] {
        dispatcher.onMain([this, life, named = nameAsCard(found, disks)] {
            if (!life.expired())
                readCard(named);
        });
    });
}

void ZVKSettingController::showCard(const CardSettings& card)
{
    m_SettingFilePath = card.path;
    selectedUSBDisk = card.disk;
    showTitle();
}

void ZVKSettingController::cardMoved(const std::string& path)
{
    CardSettings card{path, selectedUSBDisk};
    card.disk->mountedURL = std::filesystem::path(path).parent_path().native();
    showCard(card);
}

void ZVKSettingController::readCard(const CardSettings& card)
{
    showCard(card);
    cardFollower.follow(m_SettingFilePath);
    if (m_SettingFilePath.empty()) {
        setReading(false);
        return;
    }
    showLoading(platform::localized("loading"));
    auto& dispatcher = desktop.dispatcher;
    dispatcher.inBackground([this, &dispatcher, path = m_SettingFilePath, life = std::weak_ptr(alive)] {
        // Its own buffer: the live record changes on the main thread only.
        _FILEDATA record;
        std::optional<_FILEDATA> read;
        if (loadFileData(path, record))
            read = record;
        dispatcher.onMain([this, life, read] {
            if (!life.expired())
                settingsRead(read);
        });
    });
}

void ZVKSettingController::settingsRead(const std::optional<_FILEDATA>& record)
{
    fileDataRead = record;
    if (record) {
        m_FileData = *record;
        if (targetController)
            targetController->setFileData(&m_FileData);
    } else if (view->isVisible()) {
        showAlert(
            desktop.alerts, *view, "Warn", platform::localized("msg.settings_unreadable").toStdString());
    }
    setReading(false);
    hideLoading();
}

/// What is edited or saved before the file's values are here would be lost or wrong.
void ZVKSettingController::setReading(bool isReading)
{
    reading = isReading;
    for (QWidget* control : {static_cast<QWidget*>(outlets->targetView),
             static_cast<QWidget*>(outlets->resetButton), static_cast<QWidget*>(outlets->saveButton)})
        control->setEnabled(!isReading);
}

void ZVKSettingController::showLoading(const QString& title)
{
    progressPanel->showLoading(title);
}

void ZVKSettingController::hideLoading()
{
    progressPanel->hideLoading();
}

void ZVKSettingController::setLoadingTitle(const QString& title)
{
    progressPanel->setTitle(title);
}
