#include "settings/window/ZVKSettingController.h"

#include "lib/Alerts.h"
#include "lib/InterfaceHelpers.h"
#include "lib/LoadingSheet.h"
#include "platform/Texts.h"
#include "ui_ZVKSettingController.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

/// The default button is pressed by Return wherever the focus is, except in a table, where it opens a row.
class SettingWindow final : public QWidget {
public:
    std::function<void()> returnPressed;
    std::function<bool()> mayClose;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        const auto* const focused = focusWidget();
        if (!isReturn || qobject_cast<const QAbstractItemView*>(focused))
            QWidget::keyPressEvent(event);
        else if (focused && focused->objectName() == QStringLiteral("noticeButton"))
            findChild<QPushButton*>(focused->objectName())->click();
        else
            returnPressed();
    }
    void closeEvent(QCloseEvent* event) override { event->setAccepted(mayClose()); }
};

} // namespace

ZVKSettingController::ZVKSettingController(
    platform::Platform& layer, std::string interfaceLanguage, SettingTools pagesAndTools)
    : desktop(layer),
      language(std::move(interfaceLanguage)),
      tools(std::move(pagesAndTools)),
      m_bKorean(language == "ko"),
      cardFollower(desktop.dispatcher, desktop.disks,
          [this](const std::string&, const std::string& path) { cardMoved(path); })
{
    initFileDataForRegion(m_FileData, m_bKorean);
    fileDataShown = m_FileData;
}

ZVKSettingController::~ZVKSettingController()
{
    life.renew();
    lastDialogController.reset();
    // The pages' signals reach objects of this controller.
    view.reset();
}

QWidget& ZVKSettingController::window()
{
    if (!view) {
        auto made = std::make_unique<SettingWindow>();
        made->returnPressed = [this] { outlets->saveButton->click(); };
        made->mayClose = [this] { return mayClose(); };
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
    for (const SettingTab& tab : tools.tabs)
        labels << platform::localized(tab.labelKey);
    setSegmentLabels(*outlets->functionSegmentedControl, labels);
    progressPanel = new LoadingSheet(desktop.dispatcher, *outlets->contentBox);
    progressPanel->onTimeOut([this] { tellThatTheCardHangs(); });
    connectControls();
    centre();
    // Before the loading sheet takes it, which gives it back.
    outlets->functionSegmentedControl->setFocus();
    onInitDIalog();
    changeViewController(0);
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
    mountWatch = desktop.disks.watchMounts([this] { lookForCards(); });
}

void ZVKSettingController::showTitle()
{
    QString title = platform::localized("setting.window_title")
        + QStringLiteral("[Ver %1]").arg(QString::fromStdString(m_strVersion));
    if (!m_SettingFilePath.empty())
        title += QStringLiteral(" : ") + QString::fromStdString(m_SettingFilePath);
    view->setWindowTitle(title);
}

/// What is edited or saved before the file's values are here would be lost or wrong, and a second save must
/// not overtake the first.
void ZVKSettingController::setWork(Work now)
{
    work = now;
    // What it says is not so any more.
    if (const auto takeAway = std::exchange(takeHangAlertAway, {}))
        takeAway();
    for (QWidget* control : {static_cast<QWidget*>(outlets->targetView),
             static_cast<QWidget*>(outlets->resetButton), static_cast<QWidget*>(outlets->previousButton),
             static_cast<QWidget*>(outlets->sdcardFormatButton), static_cast<QWidget*>(outlets->noticeBar),
             static_cast<QWidget*>(outlets->saveButton)})
        control->setEnabled(now == Work::none);
    if (now == Work::none)
        hideLoading();
    else
        showLoading(platform::localized(now == Work::reading ? "loading" : "sheet.saving"));
}

void ZVKSettingController::showLoading(const QString& title)
{
    progressPanel->showLoading(title);
}

void ZVKSettingController::hideLoading()
{
    progressPanel->hideLoading();
}
