#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// The print server, and printers reached through it or directly. Every call may take seconds and has a time
/// limit; callable from any thread. A printer is a queue's name on the server, or an IPP printer's address
/// ("ipp://host:631/ipp/print"). Statuses are IPP status codes; 0 is success.
namespace platform::cups {

/// Whether the server answers and knows a printer.
bool serverHasPrinters();

/// Lets this thread's later use of the print library reach the server, or fail at once instead of waiting for
/// one that doesn't answer.
void setServerUsable(bool usable);

/// Options of a job by their IPP or server names: "copies", "media", "fit-to-page".
using JobOptions = std::map<std::string, std::string>;

/// The status for "there is no such printer".
int noSuchPrinter();

/// The standard's name for a paper size in hundredths of a millimetre: "iso_a4_210x297mm".
std::string mediaName(int width, int length);

/// MIME types; nothing when the printer could not be asked.
std::optional<std::vector<std::string>> documentFormats(const std::string& printer);

/// Sends one job with one document; 0 when the printer has taken it.
int print(const std::string& printer, const JobOptions& options, const std::string& mimeType,
    const std::string& contents);

} // namespace platform::cups
