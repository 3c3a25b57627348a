#include "tools/samplecard/CardSteps.h"

#include "common/CardFiles.h"
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
    for (const char* name : cardFiles::recordingFolders) {
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
    std::filesystem::create_directory(work.card / cardFiles::driveLogFolder, failure);
    if (!writeText(work.card / cardFiles::driveLog, bytes))
        return std::string(cardFiles::driveLog) + " cannot be written";
    return std::nullopt;
}

std::optional<std::string> addSettings(const CardWork& work)
{
    _FILEDATA record;
    initFileDataForRegion(record, false);
    const FilePlace settings = FilePlace::chosen((work.card / cardFiles::settings).native());
    if (const FileError why = saveFileData(FinishedFileData(record), settings))
        return std::string(cardFiles::settings) + " cannot be written: " + why.text();
    if (!writeText(work.card / cardFiles::clock, "2024/05/18 18:12:00"))
        return std::string(cardFiles::clock) + " cannot be written";
    return std::nullopt;
}

std::optional<std::string> addOddFiles(const CardWork& work)
{
    const std::string notList = "This file is no recording.\r\n";
    namespace fs = std::filesystem;
    for (const fs::path& name : {fs::path("notes.txt"), fs::path(cardFiles::alwaysFolder) / "readme.avi",
             fs::path(cardFiles::motionFolder) / "motion_20240518_1823.avi"}) {
        if (!writeText(work.card / name, notList))
            return name.native() + " cannot be written";
    }
    return std::nullopt;
}

} // namespace samplecard
