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

/// The desktop's printing service. Statuses are the service's own numbers; 0 is success. Main thread only.
class PrintSession {
public:
    enum class Destination { printer, file, preview };

    virtual ~PrintSession() = default;

    virtual std::unique_ptr<PrintInfo> makePrintInfo() = 0;
    /// Shows the print panel, paper size included, modal to the window and without blocking. The answer is 1
    /// when the user pressed Print. Without any printer the panel still opens and says so.
    virtual void showPanel(QWidget& window, PrintInfo& info, std::function<void(int returnCode)> answer) = 0;
    /// Sets one of the job's options, for example "fit-to-page" to "true".
    virtual void setValue(PrintInfo& info, const std::string& key, const std::string& value) = 0;
    /// Nothing when the service failed.
    virtual std::optional<Destination> destinationType(const PrintInfo& info) = 0;

    struct Printer {
        int status = 0;
        std::string name;
    };
    virtual Printer currentPrinter(const PrintInfo& info) = 0;
    /// The file types that the printer accepts with these settings; nothing when the service failed.
    virtual std::optional<std::vector<std::string>> mimeTypes(const std::string& printer, const PrintInfo& info) = 0;
    virtual int printFile(
        const std::string& printer, const PrintInfo& info, const std::string& mimeType, const std::string& path) = 0;
};

}
