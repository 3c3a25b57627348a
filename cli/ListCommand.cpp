#include "cli/Commands.h"
#include "cli/FolderScan.h"
#include "cli/Json.h"
#include "common/Text.h"
#include "media/MediaDirection.h"
#include "media/ZVKMediaList.h"

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace cli {

namespace {

/// A recording's start as text; both empty when it is unknown.
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

Json json(const ZVKMedia& media)
{
    const StartText start(media);
    return {{"path", media.path()}, {"file", media.fileName()}, {"kind", media.mediaDivision()},
        {"date", start.date}, {"time", start.time}, {"direction", mediaDirection(media.path())}};
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

} // namespace

ExitCode runList(const Arguments& arguments, Streams streams)
{
    const std::string& folder = arguments.operands.front();
    const auto scan = scanFolder(folder, streams);
    if (!scan)
        return ExitCode::failure;
    if (arguments.has("--json"))
        writeJsonArray(streams.out, scan->medias, json) << '\n';
    else
        writeColumns(streams.out, scan->medias);
    return scanResult(*scan, folder, streams);
}

} // namespace cli
