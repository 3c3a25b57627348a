#include "platform/cups/CupsPrinter.h"

#include "platform/cups/IppTexts.h"

#include <array>
#include <cups/cups.h>
#include <cups/pwg.h>
#include <memory>

namespace platform::cups {

namespace {

constexpr int connectMs = 5000;
constexpr double questionSeconds = 3;
/// Small printers accept data only as fast as they print.
constexpr double documentSeconds = 60;
constexpr const char* jobTitle = "ZAVIK";

struct Free {
    void operator()(http_t* connection) const { httpClose(connection); }
    void operator()(cups_dest_t* printer) const { cupsFreeDests(1, printer); }
    void operator()(cups_dinfo_t* info) const { cupsFreeDestInfo(info); }
};

using Connection = std::unique_ptr<http_t, Free>;
using Destination = std::unique_ptr<cups_dest_t, Free>;
using Information = std::unique_ptr<cups_dinfo_t, Free>;

class Options {
public:
    Options() = default;
    ~Options() { cupsFreeOptions(count, list); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void add(const std::string& name, const std::string& value)
    {
        count = cupsAddOption(name.c_str(), value.c_str(), count, &list);
    }

    int count = 0;
    cups_option_t* list = nullptr;
};

const char* noPassword(const char*, http_t*, const char*, const char*, void*)
{
    return nullptr;
}

int giveUp(http_t*, void*)
{
    return 0;
}

/// The library's own password callback would read from the terminal.
void neverAskForPassword()
{
    cupsSetPasswordCB2(noPassword, nullptr);
}

Connection connectToServer()
{
    neverAskForPassword();
    Connection server(
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, connectMs, nullptr));
    if (server)
        httpSetTimeout(server.get(), questionSeconds, giveUp, nullptr);
    return server;
}

/// A printer that has been found and asked what it can do.
struct Reached {
    Destination destination;
    Connection connection;
    Information information;

    explicit operator bool() const { return information != nullptr; }
};

void findAtAddress(Reached& result, const std::string& address)
{
    result.destination.reset(cupsGetDestWithURI("printer", address.c_str()));
    std::array<char, HTTP_MAX_URI> resource;
    result.connection.reset(cupsConnectDest(result.destination.get(), CUPS_DEST_FLAGS_DEVICE, connectMs,
        nullptr, resource.data(), resource.size(), nullptr, nullptr));
    if (result.connection)
        httpSetTimeout(result.connection.get(), questionSeconds, giveUp, nullptr);
}

void findOnServer(Reached& result, const std::string& queue)
{
    result.connection = connectToServer();
    if (!result.connection)
        return;
    const size_t slash = queue.find('/');
    const std::string name = queue.substr(0, slash);
    const std::string instance = slash == std::string::npos ? "" : queue.substr(slash + 1);
    result.destination.reset(cupsGetNamedDest(
        result.connection.get(), name.c_str(), instance.empty() ? nullptr : instance.c_str()));
}

Reached reach(const std::string& printer)
{
    neverAskForPassword();
    Reached result;
    if (printer.starts_with("ipp://") || printer.starts_with("ipps://"))
        findAtAddress(result, printer);
    else
        findOnServer(result, printer);
    if (result.connection && result.destination)
        result.information.reset(cupsCopyDestInfo(result.connection.get(), result.destination.get()));
    return result;
}

/// Whether the printer lists supported values of this option without this one. Some printers refuse a job
/// with such a value.
bool isRefused(const Reached& reached, const std::string& name, const std::string& value)
{
    http_t* connection = reached.connection.get();
    cups_dest_t* destination = reached.destination.get();
    cups_dinfo_t* information = reached.information.get();
    return cupsFindDestSupported(connection, destination, information, name.c_str())
        && !cupsCheckDestSupported(connection, destination, information, name.c_str(), value.c_str());
}

int failure()
{
    const ipp_status_t status = cupsLastError();
    return status > IPP_STATUS_OK_EVENTS_COMPLETE || status < IPP_STATUS_OK ? status
                                                                            : IPP_STATUS_ERROR_INTERNAL;
}

bool isOk(ipp_status_t status)
{
    return status >= IPP_STATUS_OK && status <= IPP_STATUS_OK_EVENTS_COMPLETE;
}

} // namespace

bool serverHasPrinters()
{
    const Connection server = connectToServer();
    if (!server)
        return false;
    cups_dest_t* list = nullptr;
    const int count = cupsGetDests2(server.get(), &list);
    cupsFreeDests(count, list);
    return count > 0;
}

void setServerUsable(bool usable)
{
    cupsSetServer(usable ? nullptr : "/dev/null");
}

int noSuchPrinter()
{
    return IPP_STATUS_ERROR_NOT_FOUND;
}

std::string mediaName(int width, int length)
{
    const pwg_media_t* media = pwgMediaForSize(width, length);
    return media && media->pwg ? media->pwg : "";
}

std::optional<std::vector<std::string>> documentFormats(const std::string& printer)
{
    const Reached reached = reach(printer);
    if (!reached)
        return {};
    ipp_attribute_t* formats = cupsFindDestSupported(
        reached.connection.get(), reached.destination.get(), reached.information.get(), "document-format");
    if (!formats)
        return {};
    return texts(formats);
}

int print(const std::string& printer, const JobOptions& wanted, const std::string& mimeType,
    const std::string& contents)
{
    const Reached reached = reach(printer);
    if (!reached)
        return failure();
    http_t* connection = reached.connection.get();
    cups_dest_t* destination = reached.destination.get();
    cups_dinfo_t* information = reached.information.get();

    Options options;
    for (const auto& [name, value] : wanted) {
        if (!isRefused(reached, name, value))
            options.add(name, value);
    }
    // What the server calls fit-to-page is print-scaling to a printer of its own.
    const auto fit = wanted.find("fit-to-page");
    if (fit != wanted.end() && fit->second == "true"
        && cupsCheckDestSupported(connection, destination, information, "print-scaling", "fit"))
        options.add("print-scaling", "fit");

    httpSetTimeout(connection, documentSeconds, giveUp, nullptr);
    int job = 0;
    if (!isOk(cupsCreateDestJob(
            connection, destination, information, &job, jobTitle, options.count, options.list)))
        return failure();
    if (cupsStartDestDocument(
            connection, destination, information, job, jobTitle, mimeType.c_str(), 0, nullptr, 1)
            != HTTP_STATUS_CONTINUE
        || cupsWriteRequestData(connection, contents.data(), contents.size()) != HTTP_STATUS_CONTINUE) {
        const int status = failure();
        cupsCancelDestJob(connection, destination, job);
        return status;
    }
    const ipp_status_t status = cupsFinishDestDocument(connection, destination, information);
    return isOk(status) ? 0 : status;
}

} // namespace platform::cups
