#include "tools/samplecard/CardMaker.h"

#include "tools/samplecard/CardStamp.h"
#include "tools/samplecard/CardSteps.h"
#include "tools/samplecard/WorkFolder.h"

namespace fs = std::filesystem;

namespace samplecard {

namespace {

// Raised whenever a card made by the same options would differ.
constexpr int version = 5;

std::string recipeFor(const CardOptions& options)
{
    return "samplecard " + std::to_string(version) + " seconds " + std::to_string(options.seconds);
}

enum class Place { free, made, refused };

Place judge(const fs::path& folder, const CardOptions& options, std::string& why)
{
    std::error_code failure;
    const fs::file_status status = fs::status(folder, failure);
    if (!fs::exists(status))
        return Place::free;
    if (!fs::is_directory(status)) {
        why = folder.string() + " is not a folder";
        return Place::refused;
    }
    const auto stamp = CardStamp::read(folder);
    if (!stamp) {
        if (fs::is_empty(folder, failure) && !failure)
            return Place::free;
        why = folder.string() + " is not empty and is no sample card; choose another folder";
        return Place::refused;
    }
    if (options.force)
        return Place::free;
    if (stamp->recipe == recipeFor(options) && stamp->isIntact(folder))
        return Place::made;
    const auto strangers = stamp->strangers(folder);
    if (strangers.empty())
        return Place::free;
    why = folder.string() + " holds files that are not from here, such as " + strangers.front()
        + "; --force makes the card anew without them";
    return Place::refused;
}

} // namespace

std::optional<std::string> makeCard(const CardOptions& options, const std::atomic<bool>& stopped,
    const std::function<void(const std::string& line)>& tell)
{
    std::error_code failure;
    fs::path folder = fs::weakly_canonical(fs::absolute(options.folder), failure);
    if (!folder.has_filename())
        folder = folder.parent_path();
    std::string why;
    const Place place = judge(folder, options, why);
    if (place == Place::refused)
        return why;
    if (place == Place::made) {
        tell("The card in " + folder.string() + " is complete.");
        return std::nullopt;
    }
    WorkFolder work(folder);
    if (!work.isThere())
        return "cannot write beside " + folder.string();
    const Drive drive;
    const CardWork shared{work.card(), work.scratch(), options.seconds, drive, stopped, tell};
    for (const CardStep& step : cardSteps()) {
        tell(std::string("Making ") + step.what + " ...");
        auto trouble = step.run(shared);
        if (stopped)
            return "interrupted";
        if (trouble)
            return trouble;
    }
    if (!CardStamp::write(work.card(), recipeFor(options)))
        return "cannot write the card's stamp";
    return work.publish();
}

} // namespace samplecard
