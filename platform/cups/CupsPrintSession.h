#pragma once

#include "platform/Dispatcher.h"
#include "platform/PrintSession.h"

namespace platform {

/// Printing on Qt's print dialog and the CUPS server. Statuses are IPP status codes; a printer is a queue's
/// name or an IPP printer's address ("ipp://..."). The server is asked in the background, with time limits.
class CupsPrintSession final : public PrintSession {
public:
    explicit CupsPrintSession(Dispatcher& dispatcher);

    std::unique_ptr<PrintInfo> makePrintInfo() override;
    void showPanel(QWidget& window, PrintInfo& info, std::function<void(int returnCode)> answer) override;
    void setValue(PrintInfo& info, const std::string& key, const std::string& value) override;
    std::optional<Destination> destinationType(const PrintInfo& info) override;
    Printer currentPrinter(const PrintInfo& info) override;
    void mimeTypes(
        const std::string& printer, const PrintInfo& info, std::function<void(Types)> answer) override;
    void printFile(const std::string& printer, const PrintInfo& info, const std::string& mimeType,
        std::string contents, std::function<void(int status)> answer) override;

private:
    Dispatcher& dispatcher;
};

} // namespace platform
