#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "common/Log.h"
#include "media/MediaDirection.h"
#include "media/MediaPath.h"
#include "media/ZVKMediaList.h"

#include <array>
#include <filesystem>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

namespace cli {

namespace {

std::string dateText(const ZVKMedia& media)
{
    return media.year() < 1 ? "" : formatted("%04d-%02d-%02d", media.year(), media.month(), media.day());
}

std::string timeText(const ZVKMedia& media)
{
    return media.year() < 1 ? "" : formatted("%02d:%02d:%02d", media.hour(), media.minute(), media.second());
}

void writeJson(std::ostream& out, const std::vector<ZVKMedia>& medias)
{
    JsonWriter json(out);
    json.beginArray();
    for (const ZVKMedia& media : medias) {
        json.beginObject();
        json.key("path").string(media.path());
        json.key("file").string(media.fileName());
        json.key("kind").integer(media.mediaDivision());
        json.key("date").string(dateText(media));
        json.key("time").string(timeText(media));
        json.key("direction").integer(mediaDirection(media.path()));
        json.endObject();
    }
    json.endArray();
    out << '\n';
}

void writeColumns(std::ostream& out, const std::vector<ZVKMedia>& medias)
{
    constexpr std::array kinds = {"always", "motion", "event"};
    constexpr std::array directions = {"front", "rear", "-"};
    const auto orDash = [](std::string text) { return text.empty() ? "-" : text; };
    for (const ZVKMedia& media : medias)
        out << formatted("%-10s %-8s %-6s %-5s ", orDash(dateText(media)).c_str(),
            orDash(timeText(media)).c_str(), kinds[static_cast<size_t>(media.mediaDivision())],
            directions[static_cast<size_t>(mediaDirection(media.path()))])
            << media.path() << '\n';
}

ExitCode runList(const Arguments& arguments, Streams streams)
{
    const std::string folder = standardizedPath(std::string(arguments.operands.front()));
    std::error_code error;
    const std::filesystem::directory_iterator listing(folder, error);
    if (error)
        return failure(streams, arguments.operands.front(), error.message());
    const std::vector<ZVKMedia> medias = ZVKMediaList::sortedMedias(folder);
    if (arguments.flag == "--json")
        writeJson(streams.out, medias);
    else
        writeColumns(streams.out, medias);
    return ExitCode::Success;
}

constexpr std::string_view flags[] = {"--json"};

} // namespace

const Command listCommand = {
    .name = "list",
    .synopsis = "FOLDER [--json]",
    .summary = "Lists the recordings in a folder and all folders below it, oldest first.",
    .details =
        "Columns: date, time, kind (always, motion, event), camera (front, rear, -), path; \"-\" where the\n"
        "file name tells no date.\n"
        "--json: an array of {\"path\", \"file\", \"kind\" (0 always, 1 motion, 2 event), \"date\", "
        "\"time\",\n"
        "\"direction\" (0 front, 1 rear, 2 unknown)}; date and time are empty where they are unknown.\n",
    .fewestOperands = 1,
    .mostOperands = 1,
    .flags = flags,
    .run = runList,
};

} // namespace cli
