// The folder whose recordings are listed, on a volume that may move.

#include "app/ZVKAppDelegate.h"

#include "app/MediaTableModel.h"
#include "media/MediaPath.h"
#include "ui_ZVKAppDelegate.h"

#include <filesystem>
#include <system_error>

bool ZVKAppDelegate::isInUse(const std::string& mountPath) const
{
    return folderFollower->mayLieOn(mountPath);
}

/// What was dropped may lie on a card that takes its time.
void ZVKAppDelegate::openIfFolder(const std::string& path)
{
    auto open = guarded([this, path] { openMediaDirectory(path); });
    desktop.dispatcher.inBackground([&dispatcher = desktop.dispatcher, path, open] {
        std::error_code missing;
        if (std::filesystem::is_directory(path, missing))
            dispatcher.onMain(open);
    });
}

/// The list and its selection stay, and what plays goes on. What has not begun, or failed because its card
/// was away, begins at the new path.
void ZVKAppDelegate::folderMoved(const std::string& from, const std::string& to)
{
    const std::string before = standardizedPath(from) + "/";
    mediaList->movedTo(to);
    // What is read at the old path is not there.
    if (scanning || !mediaList->scanState().failure.empty()) {
        scanning = true;
        mediaList->setDirectoryPath(to);
        mediaTable->reload();
    }
    showListState();
    const auto media = player1->media();
    if (!media || !media->url().value_or("").starts_with(before))
        return;
    media->moveTo(to + "/" + media->url()->substr(before.size()));
    if (!waitingForPlayStart && player1->state() != platform::PlayerState::error)
        return;
    player1->stop();
    restartMedia();
}
