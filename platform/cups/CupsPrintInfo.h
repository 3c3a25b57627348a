#pragma once

#include "platform/PrintSession.h"
#include "platform/cups/CupsPrinter.h"

#include <memory>

class QPrinter;

namespace platform {

/// What the user chose in the print panel, and the job options set besides.
class CupsPrintInfo final : public PrintInfo {
public:
    struct Settings {
        ~Settings();
        /// Made by the panel's first opening, which knows whether there is a server to ask.
        std::unique_ptr<QPrinter> printer;
        cups::JobOptions values;
        bool isPanelOnItsWay = false;
    };

    static Settings& of(PrintInfo& info) { return *static_cast<CupsPrintInfo&>(info).settings; }
    static const Settings& of(const PrintInfo& info)
    {
        return *static_cast<const CupsPrintInfo&>(info).settings;
    }

    /// Shared with an open panel.
    std::shared_ptr<Settings> settings = std::make_shared<Settings>();
};

/// The options for a job with these settings: copies, paper, orientation, colour, what the panel's advanced
/// pages hold, and the values set besides.
cups::JobOptions jobOptions(const CupsPrintInfo::Settings& settings);

} // namespace platform
