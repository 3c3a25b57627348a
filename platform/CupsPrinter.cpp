#include "platform/CupsPrinter.h"

#include <array>
#include <cups/cups.h>
#include <cups/pwg.h>
#include <memory>

namespace platform::cups {

namespace {

constexpr int connectMs = 5000;
constexpr double questionSeconds = 5;
/// A small printer takes the document at the speed of its paper.
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

/// The library's own question would wait at the terminal.
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

bool isAddress(const std::string& printer)
{
    return printer.starts_with("ipp://") || printer.starts_with("ipps://");
}

Destination findDestination(const std::string& printer)
{
    if (isAddress(printer))
        return Destination(cupsGetDestWithURI("printer", printer.c_str()));
    const Connection server = connectToServer();
    if (!server)
        return {};
    const size_t slash = printer.find('/');
    const std::string name = printer.substr(0, slash);
    const std::string instance = slash == std::string::npos ? "" : printer.substr(slash + 1);
    return Destination(
        cupsGetNamedDest(server.get(), name.c_str(), instance.empty() ? nullptr : instance.c_str()));
}

/// A printer that has been found and asked what it can do.
struct Reached {
    Destination destination;
    Connection connection;
    Information information;

    explicit operator bool() const { return information != nullptr; }
};

Reached reach(const std::string& printer)
{
    neverAskForPassword();
    Reached result;
    result.destination = findDestination(printer);
    if (!result.destination)
        return result;
    const unsigned way = isAddress(printer) ? CUPS_DEST_FLAGS_DEVICE : CUPS_DEST_FLAGS_NONE;
    std::array<char, HTTP_MAX_URI> resource;
    result.connection.reset(cupsConnectDest(result.destination.get(), way, connectMs, nullptr,
        resource.data(), resource.size(), nullptr, nullptr));
    if (!result.connection)
        return result;
    httpSetTimeout(result.connection.get(), questionSeconds, giveUp, nullptr);
    result.information.reset(cupsCopyDestInfo(result.connection.get(), result.destination.get()));
    return result;
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
    std::vector<std::string> result;
    for (int i = 0; i < ippGetCount(formats); ++i)
        result.emplace_back(ippGetString(formats, i, nullptr));
    return result;
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
    for (const auto& [name, value] : wanted)
        options.add(name, value);
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
