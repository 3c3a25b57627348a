#include "cli/Commands.h"
#include "cli/Escapes.h"
#include "cli/JsonWriter.h"
#include "cli/LogCapture.h"
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

/// A recording's start for people; both empty when it is unknown.
struct StartText {
    explicit StartText(const ZVKMedia& media)
    {
        if (media.year() < 1)
            return;
        const std::string digits = media.yyyymmddhhmiss();
        const auto two = [&](size_t at) { return digits.substr(at, 2); };
        date = digits.substr(0, 4) + '-' + two(4) + '-' + two(6);
        time = two(8) + ':' + two(10) + ':' + two(12);
    }

    std::string date;
    std::string time;
};

void writeJson(std::ostream& out, const std::vector<ZVKMedia>& medias)
{
    JsonWriter json;
    json.beginArray();
    for (const ZVKMedia& media : medias) {
        const StartText start(media);
        json.beginObject();
        json.key("path").string(media.path());
        json.key("file").string(media.fileName());
        json.key("kind").integer(media.mediaDivision());
        json.key("date").string(start.date);
        json.key("time").string(start.time);
        json.key("direction").integer(mediaDirection(media.path()));
        json.endObject();
    }
    json.endArray();
    out << json.document() << '\n';
}

void writeColumns(std::ostream& out, const std::vector<ZVKMedia>& medias)
{
    constexpr std::array kinds = {"always ", "motion ", "event  "};
    constexpr std::array directions = {"front ", "rear  ", "-     "};
    for (const ZVKMedia& media : medias) {
        const StartText start(media);
        if (start.date.empty())
            out << "-          -        ";
        else
            out << start.date << ' ' << start.time << ' ';
        out << kinds[static_cast<size_t>(media.mediaDivision())]
            << directions[static_cast<size_t>(mediaDirection(media.path()))] << printable(media.path())
            << '\n';
    }
}

ExitCode runList(const Arguments& arguments, Streams streams)
{
    const std::string folder = standardizedPath(std::string(arguments.operands.front()));
    std::error_code error;
    const std::filesystem::directory_iterator listing(folder, error);
    if (error)
        return failure(streams, arguments.operands.front(), error.message());
    const LogCapture trouble;
    const std::vector<ZVKMedia> medias = ZVKMediaList::sortedMedias(folder);
    if (arguments.flag == "--json")
        writeJson(streams.out, medias);
    else
        writeColumns(streams.out, medias);
    if (!trouble.text.empty())
        return failure(streams, arguments.operands.front(), trouble.text);
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
        "file name tells no date, \"?\" for control characters.\n"
        "--json: an array of {\"path\", \"file\", \"kind\" (0 always, 1 motion, 2 event), \"date\", "
        "\"time\",\n"
        "\"direction\" (0 front, 1 rear, 2 unknown)}; date and time are empty where they are unknown.\n"
        "A folder that cannot be read to its end: what was found is listed, and the exit code is 1.\n",
    .fewestOperands = 1,
    .mostOperands = 1,
    .flags = flags,
    .run = runList,
};

} // namespace cli
