#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "common/Text.h"
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
    JsonWriter json(out);
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
    json.finish();
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
            << directions[static_cast<size_t>(mediaDirection(media.path()))] << visibleText(media.path())
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
    const auto [medias, state] = ZVKMediaList::scan(folder);
    if (arguments.flag == "--json")
        writeJson(streams.out, medias);
    else
        writeColumns(streams.out, medias);
    if (state.isCut)
        streams.err << "zavikctl: " << visibleText(folder) << ": only the first " << medias.size()
                    << " recordings that were found are listed\n";
    if (!state.failure.empty())
        return failure(streams, arguments.operands.front(), "could not read " + state.failure);
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
        "file name tells no date; control characters of a path are written as \\x1b or \\u202e.\n"
        "--json: an array of {\"path\", \"file\", \"kind\" (0 always, 1 motion, 2 event), \"date\", "
        "\"time\",\n"
        "\"direction\" (0 front, 1 rear, 2 unknown)}; date and time are empty where they are unknown.\n"
        "Folders on other file systems are passed over, and so are links that lead outside. Of more than "
        "15000\n"
        "recordings those are listed that were found first, and a line on the error stream says so.\n"
        "A folder that cannot be read to its end: what was found is listed, and the exit code is 1.\n",
    .fewestOperands = 1,
    .mostOperands = 1,
    .flags = flags,
    .run = runList,
};

} // namespace cli
