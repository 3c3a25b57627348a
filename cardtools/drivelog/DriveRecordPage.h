#pragma once

#include "cardtools/drivelog/DriveLog.h"
#include "common/Life.h"
#include "platform/disks/MountTable.h"
#include "settings/contract/ZVKSettingControllerDelegate.h"

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

class DriveRecordModel;
class ProgressWindow;
class ZVKMapWindowController;

namespace Ui {
class DriveRecordPage;
}
namespace platform {
struct Platform;
}

/// The page of a drive log: its table, a record's place on the map, the export. The two kinds of logs differ
/// by their format only. Main thread only.
class DriveRecordPage : public SettingPage {
public:
    /// `language` is the interface language, "ko" or another.
    DriveRecordPage(platform::Platform& desktop, const std::string& language, const DriveLogFormat& format,
        QWidget* parent = nullptr);
    ~DriveRecordPage() override;

    /// The log to show. It is read when the record comes for the first time, and by loadFlashDataFile.
    /// `cardRoot`: the root of the card that the file is on, in which no link is followed; empty for a file
    /// that the user chose.
    void setM_FlashDataFilePath(const std::string& path, const std::string& cardRoot = {});

    void setFileData(_FILEDATA* record) override;
    void displayFileData();
    void populate() override;
    std::optional<QString> validateUserInput() override;
    void setMainController(SettingPageHost*) override { }
    void onHide() override;
    bool holds(const std::string& mountPath) const override
    {
        return m_FlashDataFilePath && platform::isWithin(*m_FlashDataFilePath, mountPath);
    }

    /// Asks for a log and shows it.
    void openFileDialog();
    /// Reads the log; when that takes long a window shows the progress. When the log cannot be used the rows
    /// stay, and the user is told.
    void loadFlashDataFile();
    /// Shows the row's place on the map; the window only comes forward where the row has none.
    void doubleClickTableRow(int64_t clickedRow);
    /// Asks for a file and writes the table to it; when that takes long a window shows the progress. Closing
    /// the page's window meanwhile asks first.
    void onSaveCSVFile();

    std::string stringForColumnIndex(int64_t column, int64_t row) const;
    /// How many records are shown.
    int64_t m_FlashDataNum() const { return m_pFalshSaveValue ? m_pFalshSaveValue->count() : 0; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void awakeFromNib();
    void buildTable();
    void doReadFlashDataFile(bool isAskedFor);
    void publish(std::shared_ptr<const DriveLog> log, bool isAskedFor);
    void showState();
    void openSavePanel();
    void doWriteCSVFile(const std::string& path);
    std::function<void(int64_t, int64_t)> beginWork(const char* wordsKey, const char* questionKey);
    void endWork();
    void tellLater(const char* messageKey);

    platform::Platform& desktop;
    const std::string language;
    const DriveLogFormat& format;
    std::unique_ptr<Ui::DriveRecordPage> outlets;
    DriveRecordModel* model = nullptr;
    QStringList columnNames;
    std::vector<int> columnWidths;

    _FILEDATA* fileData = nullptr;
    std::shared_ptr<const DriveLog> m_pFalshSaveValue; // buffer and count in one
    bool firstLoad = true;
    bool m_bFlashDataAccess = false;
    std::optional<std::string> m_FlashDataFilePath;
    std::string cardRoot;
    std::unique_ptr<ZVKMapWindowController> mapWindowController;

    std::stop_source work; // the one under way or the latest
    QPointer<ProgressWindow> progressWindow; // while work is under way; goes with the window below it
    Life life;
};
