// The export of the drive record page.

#include "cardtools/DriveLogCsv.h"
#include "cardtools/DriveRecordPage.h"
#include "common/Log.h"
#include "platform/Platform.h"
#include "platform/StreamedFile.h"
#include "platform/Texts.h"
#include "telemetry/ZVKMapWindowController.h"

#include <QPointer>

#include <new>

namespace {

struct Job {
    std::shared_ptr<const DriveLog> log;
    std::vector<std::string> titles;
    std::string path;
    std::stop_token stop;
};

/// Empty on success; otherwise why not. `report` gets the percentage whenever it changes.
std::string writeExport(const Job& job, const std::function<void(int)>& report)
try {
    platform::StreamedFile file(platform::FilePlace::chosen(job.path));
    int reported = 0;
    const bool isWritten =
        writeDriveLogCsv(*job.log, job.titles, [&](std::string_view lines, int64_t records) {
            const int percent = static_cast<int>(records * 100 / job.log->count());
            if (percent != reported)
                report(percent);
            reported = percent;
            return !job.stop.stop_requested() && file.write(lines);
        });
    if (job.stop.stop_requested())
        return "stopped";
    const std::string trouble = file.finish().text();
    return isWritten || !trouble.empty() ? trouble : "not written";
} catch (const std::bad_alloc&) {
    return "not enough memory";
}

} // namespace

void DriveRecordPage::onSaveCSVFile()
{
    mapWindowController.reset();
    if (m_FlashDataNum() <= 0 || !workTitle.isEmpty())
        return;
    openSavePanel();
}

void DriveRecordPage::openSavePanel()
{
    platform::SavePanel panel;
    panel.title = platform::localized("panel.export_csv").toStdString();
    panel.name = format.exportName;
    panel.type = "csv";
    panel.asksBeforeReplacing = true;
    desktop.panels.chooseSaveFile(
        *window(), panel, [page = QPointer(this)](const std::optional<std::string>& path) {
            if (!page || !path || !page->workTitle.isEmpty())
                return;
            page->beginWork("sheet.saving");
            page->doWriteCSVFile(*path);
        });
}

void DriveRecordPage::doWriteCSVFile(const std::string& path)
{
    Job job{m_pFalshSaveValue, {}, path, goingAway.get_token()};
    for (const QString& name : columnNames)
        job.titles.push_back(name.toStdString());
    desktop.dispatcher.inBackground(
        [&dispatcher = desktop.dispatcher, page = QPointer(this), job = std::move(job)] {
            const std::string trouble = writeExport(job, [&](int percent) {
                dispatcher.onMain([page, percent] {
                    if (page && page->isSheetUp)
                        page->mainController->setLoadingTitle(
                            QStringLiteral("%1 %2 %").arg(page->workTitle).arg(percent));
                });
            });
            if (!trouble.empty())
                logFormat("%s: %s", job.path.c_str(), trouble.c_str());
            dispatcher.onMain([page, isSaved = trouble.empty()] {
                if (!page)
                    return;
                page->endWork();
                page->tellLater(isSaved ? "msg.saved" : "msg.write_failed");
            });
        });
}
