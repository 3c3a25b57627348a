#include "cli/Commands.h"
#include "cli/Json.h"
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
    const std::string folder = standardizedPath(arguments.operands.front());
    std::error_code error;
    const std::filesystem::directory_iterator listing(folder, error);
    if (error)
        return failure(streams, arguments.operands.front(), error.message());
    const auto [medias, state] = ZVKMediaList::scan(folder);
    if (arguments.has("--json"))
        writeJsonArray(streams.out, medias, json) << '\n';
    else
        writeColumns(streams.out, medias);
    if (state.isCut)
        streams.err << "zavikctl: " << visibleText(folder) << ": only the first " << medias.size()
                    << " recordings that were found are listed\n";
    if (!state.failure.empty())
        return failure(streams, arguments.operands.front(), "could not read " + state.failure);
    return ExitCode::success;
}

} // namespace cli
