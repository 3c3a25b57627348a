// The export of the drive record page.

#include "cardtools/drivelog/DriveLogCsv.h"
#include "cardtools/drivelog/DriveRecordPage.h"
#include "common/Log.h"
#include "common/StreamedFile.h"
#include "lib/ProgressWindow.h"
#include "platform/Platform.h"
#include "platform/Texts.h"
#include "telemetry/views/ZVKMapWindowController.h"

#include <new>

namespace {

struct Job {
    std::shared_ptr<const DriveLog> log;
    std::vector<std::string> titles;
    std::string path;
    std::stop_token stop;
};

/// Empty on success; otherwise why not.
std::string writeExport(const Job& job, const ProgressWindow::Report& report)
try {
    StreamedFile file(FilePlace::chosen(job.path));
    const bool isWritten =
        writeDriveLogCsv(*job.log, job.titles, [&](std::string_view lines, int64_t records) {
            report(records, job.log->count());
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
    if (m_FlashDataNum() <= 0 || progressWindow)
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
        *window(), panel, life.guarded([this](const std::optional<std::string>& path) {
            if (path && !progressWindow)
                doWriteCSVFile(*path);
        }));
}

/// A file that was complete before the stop is reported as saved, too.
void DriveRecordPage::doWriteCSVFile(const std::string& path)
{
    const ProgressWindow::Report report = beginWork("sheet.saving", "drivelog.stop_question");
    window()->installEventFilter(this);
    Job job{m_pFalshSaveValue, {}, path, work.get_token()};
    for (const QString& name : columnNames)
        job.titles.push_back(name.toStdString());
    const auto write = [job = std::move(job), report] {
        const std::string trouble = writeExport(job, report);
        if (!trouble.empty())
            logFormat("cannot save %s: %s", job.path.c_str(), trouble.c_str());
        return trouble.empty();
    };
    desktop.dispatcher.inBackgroundThen(write, life.guarded([this, stop = work.get_token()](bool isSaved) {
        if (!stop.stop_requested())
            endWork();
        if (isSaved || !stop.stop_requested())
            tellLater(isSaved ? "msg.saved" : "msg.write_failed");
    }));
}
