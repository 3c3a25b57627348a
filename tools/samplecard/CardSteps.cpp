#include "tools/samplecard/CardSteps.h"

#include "settings/record/FileData.h"
#include "tools/samplecard/DriveLogWriter.h"

#include <array>
#include <fstream>

namespace samplecard {

namespace {

bool writeText(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream out(file, std::ios::binary);
    out << text;
    return bool(out.flush());
}

} // namespace

std::span<const CardStep> cardSteps()
{
    static constexpr std::array steps{
        CardStep{"folders", addFolders},
        CardStep{"recordings", addRecordings},
        CardStep{"the drive log", addDriveLog},
        CardStep{"settings and clock", addSettings},
        CardStep{"odd files", addOddFiles},
    };
    return steps;
}

std::optional<std::string> addFolders(const CardWork& work)
{
    for (const char* name : {"AlwaysMovie", "EventMovie", "MotionMovie"}) {
        std::error_code failure;
        std::filesystem::create_directory(work.card / name, failure);
        if (failure)
            return std::string(name) + ": " + failure.message();
    }
    return std::nullopt;
}

std::optional<std::string> addDriveLog(const CardWork& work)
{
    const auto file = driveLogOf(work.drive, int(Drive::parked) + work.seconds);
    const std::string bytes(reinterpret_cast<const char*>(file.data()), file.size());
    std::error_code failure;
    std::filesystem::create_directory(work.card / "DrvInfo", failure);
    if (!writeText(work.card / "DrvInfo/zavik_000.drv", bytes))
        return "DrvInfo/zavik_000.drv cannot be written";
    return std::nullopt;
}

std::optional<std::string> addSettings(const CardWork& work)
{
    _FILEDATA record;
    initFileDataForRegion(record, false);
    if (saveFileData(FinishedFileData(record).record(), (work.card / "config.bin").string()))
        return "config.bin cannot be written";
    if (!writeText(work.card / "timeset.cfg", "2024/05/18 18:12:00"))
        return "timeset.cfg cannot be written";
    return std::nullopt;
}

std::optional<std::string> addOddFiles(const CardWork& work)
{
    const std::string notList = "This file is no recording.\r\n";
    for (const char* name : {"notes.txt", "AlwaysMovie/readme.avi", "MotionMovie/motion_20240518_1823.avi"}) {
        if (!writeText(work.card / name, notList))
            return std::string(name) + " cannot be written";
    }
    return std::nullopt;
}

} // namespace samplecard
