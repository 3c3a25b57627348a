#pragma once

#include "tools/samplecard/Drive.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace samplecard {

/// What the steps that fill a card share.
struct CardWork {
    std::filesystem::path card; // the card's root, being filled
    std::filesystem::path scratch; // thrown away afterwards
    int seconds; // length of a recording
    const Drive& drive;
    const std::atomic<bool>& stopped;
    std::function<void(const std::string& line)> tell; // progress for the user
};

/// One thing that is put on the card. Returns why it could not be.
struct CardStep {
    const char* what;
    std::optional<std::string> (*run)(const CardWork& work);
};

/// In the order in which they run.
std::span<const CardStep> cardSteps();

std::optional<std::string> addFolders(const CardWork& work);
std::optional<std::string> addRecordings(const CardWork& work);
/// The camera's log of the whole drive.
std::optional<std::string> addDriveLog(const CardWork& work);
/// The settings of a new camera, and its clock at the beginning of the drive.
std::optional<std::string> addSettings(const CardWork& work);
/// Files that a list of recordings must pass over.
std::optional<std::string> addOddFiles(const CardWork& work);

} // namespace samplecard
