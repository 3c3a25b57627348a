#include "cardtools/drivelog/DriveRecordPage.h"

#include "cardtools/drivelog/DriveRecordModel.h"
#include "common/CardRoot.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "lib/InterfaceHelpers.h"
#include "lib/ProgressWindow.h"
#include "platform/Platform.h"
#include "platform/Texts.h"
#include "telemetry/views/ZVKMapWindowController.h"
#include "ui_DriveRecordPage.h"

#include <QLocale>

#include <filesystem>
#include <utility>

DriveRecordPage::DriveRecordPage(platform::Platform& pieces, const std::string& interfaceLanguage,
    const DriveLogFormat& kind, QWidget* parent)
    : SettingPage(parent),
      desktop(pieces),
      language(interfaceLanguage),
      format(kind),
      outlets(std::make_unique<Ui::DriveRecordPage>())
{
    outlets->setupUi(this);
    awakeFromNib();
}

DriveRecordPage::~DriveRecordPage()
{
    work.request_stop();
    delete progressWindow;
}

void DriveRecordPage::awakeFromNib()
{
    for (const DriveLogColumn& column : format.columns) {
        columnNames.append(column.hasTitleKey()
                ? platform::localized(column.title)
                : QString::fromUtf8(column.title.data(), static_cast<qsizetype>(column.title.size())));
        columnWidths.push_back(column.width);
    }
    buildTable();
    outlets->openButton->setText(platform::localized("open"));
    outlets->exportButton->setText(platform::localized("export"));
    connect(outlets->openButton, &QPushButton::clicked, this, [this] { openFileDialog(); });
    connect(outlets->exportButton, &QPushButton::clicked, this, [this] { onSaveCSVFile(); });
    showState();
}

void DriveRecordPage::setM_FlashDataFilePath(const std::string& path, const std::string& root)
{
    m_FlashDataFilePath = path;
    cardRoot = root;
}

void DriveRecordPage::setFileData(_FILEDATA* record)
{
    fileData = record;
    displayFileData();
}

void DriveRecordPage::displayFileData()
{
    if (!fileData || !firstLoad)
        return;
    firstLoad = false;
    if (!m_FlashDataFilePath || progressWindow)
        return;
    doReadFlashDataFile(false);
}

void DriveRecordPage::populate()
{
    if (fileData)
        validateUserInput();
}

std::optional<QString> DriveRecordPage::validateUserInput()
{
    return {};
}

void DriveRecordPage::onHide()
{
    mapWindowController.reset();
}

void DriveRecordPage::openFileDialog()
{
    mapWindowController.reset();
    if (progressWindow)
        return;
    const platform::OpenPanel panel{
        platform::localized("panel.open_record").toStdString(), std::string(format.fileType)};
    desktop.panels.chooseFile(*window(), panel, life.guarded([this](const std::optional<std::string>& path) {
        if (!path)
            return;
        setM_FlashDataFilePath(*path);
        loadFlashDataFile();
    }));
}

void DriveRecordPage::loadFlashDataFile()
{
    if (!m_FlashDataFilePath || progressWindow)
        return;
    doReadFlashDataFile(true);
}

void DriveRecordPage::doReadFlashDataFile(bool isAskedFor)
{
    const ProgressWindow::Report report = beginWork("sheet.loading", "");
    const auto read = [path = *m_FlashDataFilePath, root = cardRoot, &kind = format, stop = work.get_token(),
                          report] {
        const std::string below = std::filesystem::path(path).lexically_relative(root).native();
        const auto place = root.empty() ? FilePlace::chosen(path) : CardRoot(root).file(below);
        auto log = std::make_shared<const DriveLog>(readDriveLog(place, kind, stop, report));
        if (const FileError why = log->openError()) {
            logFormat("fopen fail:%s", place.path().c_str());
            logFormat("cannot open the drive log: %s", why.text().c_str());
        }
        return log;
    };
    desktop.dispatcher.inBackgroundThen(
        read, life.guarded([this, stop = work.get_token(), isAskedFor](std::shared_ptr<const DriveLog> log) {
            if (!stop.stop_requested())
                publish(std::move(log), isAskedFor);
        }));
}

namespace {

/// Nothing when all went well.
const char* messageKey(DriveLogEnd end)
{
    switch (end) {
    case DriveLogEnd::deviceFailed:
        return "msg.drivelog_device_failed";
    case DriveLogEnd::notThere:
    case DriveLogEnd::cannotOpen:
    case DriveLogEnd::headerFailed:
        return "msg.drivelog_unreadable";
    case DriveLogEnd::refused:
        return "msg.drivelog_refused";
    case DriveLogEnd::noHeader:
    case DriveLogEnd::impossibleCount:
        return "msg.drivelog_is_none";
    case DriveLogEnd::noMemory:
        return "msg.job_failed";
    default:
        return nullptr;
    }
}

} // namespace

/// A missing log is reported only when the user asked for it.
void DriveRecordPage::publish(std::shared_ptr<const DriveLog> log, bool isAskedFor)
{
    endWork();
    const char* const message = messageKey(log->end());
    if (message && (isAskedFor || log->end() != DriveLogEnd::notThere))
        tellLater(message);
    if (!isUsable(log->end()))
        return;
    m_pFalshSaveValue = std::move(log);
    m_bFlashDataAccess = true;
    model->setLog(m_pFalshSaveValue);
    outlets->tableView->scrollToTop();
    showState();
}

/// The hint on an empty table, and the line below the table.
void DriveRecordPage::showState()
{
    const bool isEmpty = m_FlashDataNum() == 0;
    outlets->emptyLabel->setText(
        platform::localized(m_bFlashDataAccess ? "drivelog.no_records" : "drivelog.empty"));
    outlets->emptyLabel->setVisible(isEmpty);
    outlets->exportButton->setEnabled(!isEmpty);
    if (!m_pFalshSaveValue) {
        outlets->stateLabel->clear();
        return;
    }
    const QLocale numbers(platform::textLanguage() == "ko" ? QLocale::Korean : QLocale::English);
    const QString count = numbers.toString(qlonglong(m_FlashDataNum()));
    const uint32_t announced = m_pFalshSaveValue->announced();
    outlets->stateLabel->setText(m_FlashDataNum() == announced
            ? platform::localized("drivelog.count").arg(count)
            : platform::localized("drivelog.cut").arg(count, numbers.toString(announced)));
}

std::string DriveRecordPage::stringForColumnIndex(int64_t column, int64_t row) const
{
    return m_pFalshSaveValue ? m_pFalshSaveValue->stringForColumnIndex(column, row) : std::string();
}

void DriveRecordPage::doubleClickTableRow(int64_t clickedRow)
{
    logFormat("rowNum=%ld", static_cast<long>(clickedRow));
    if (clickedRow < 0 || clickedRow >= m_FlashDataNum())
        return;
    const DrivePlace place = m_pFalshSaveValue->placeAt(clickedRow);
    if (mapWindowController) {
        mapWindowController->showWindow();
    } else {
        mapWindowController = std::make_unique<ZVKMapWindowController>(desktop, language);
        mapWindowController->showWindow();
        mapWindowController->moveWindowRightBy(
            isWindow() ? platform::Rect() : desktop.screens.frameOf(*window()));
    }
    if (place.latitude != 0 && place.longitude != 0)
        mapWindowController->updateMapLat(place.latitude, place.longitude);
    else
        mapWindowController->removeMarker();
}

ProgressWindow::Report DriveRecordPage::beginWork(const char* wordsKey, const char* questionKey)
{
    work = {};
    progressWindow = new ProgressWindow(
        desktop.dispatcher, *this, platform::localized(wordsKey), platform::localized(questionKey));
    progressWindow->stopped = [this] {
        work.request_stop();
        endWork();
    };
    return progressWindow->report();
}

void DriveRecordPage::endWork()
{
    progressWindow->hide();
    progressWindow->deleteLater();
    progressWindow.clear();
}

/// After the progress window or the panel has closed.
void DriveRecordPage::tellLater(const char* messageKey)
{
    constexpr std::chrono::milliseconds windowGoesAway{500};
    desktop.dispatcher.after(windowGoesAway, life.guarded([this, messageKey] {
        showAlert(desktop.alerts, *window(), "ZAVIK", platform::localized(messageKey).toStdString());
    }));
}
