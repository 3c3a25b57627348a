#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace platform {

/// A user's print settings and page format; kept between prints.
class PrintInfo {
public:
    virtual ~PrintInfo() = default;
};

/// The desktop's printing service. Statuses are the service's own numbers; 0 is success.
/// Main thread only. Nothing blocks: answers come later on the main thread, never when the session has gone.
class PrintSession {
public:
    enum class Destination { printer, file, preview };

    struct Printer {
        int status = 0;
        std::string name;
    };

    using Types = std::optional<std::vector<std::string>>;

    virtual ~PrintSession() = default;

    virtual std::unique_ptr<PrintInfo> makePrintInfo() = 0;
    /// Shows the print panel, paper size included, modal to the window. The answer is 1 when the user pressed
    /// Print. Without any printer the panel still opens and says so. Ignored while a panel of these settings
    /// is already opening; the answer is dropped when the window goes away first.
    virtual void showPanel(QWidget& window, PrintInfo& info, std::function<void(int returnCode)> answer) = 0;
    /// Sets one of the job's options, for example "fit-to-page" to "true".
    virtual void setValue(PrintInfo& info, const std::string& key, const std::string& value) = 0;
    /// Nothing when the service failed.
    virtual std::optional<Destination> destinationType(const PrintInfo& info) = 0;
    virtual Printer currentPrinter(const PrintInfo& info) = 0;
    /// The file types that the printer accepts with these settings; nothing when the service failed.
    virtual void mimeTypes(
        const std::string& printer, const PrintInfo& info, std::function<void(Types)> answer) = 0;
    /// Hands a file's contents to the printer with the settings as they are during this call. The answer
    /// tells whether the job was accepted.
    virtual void printFile(const std::string& printer, const PrintInfo& info, const std::string& mimeType,
        std::string contents, std::function<void(int status)> answer) = 0;
};

} // namespace platform
