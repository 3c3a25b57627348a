// The folder whose recordings are listed, on a volume that may move.

#include "app/ZVKAppDelegate.h"

#include "app/list/MediaTableModel.h"
#include "app/window/MainWindowOutlets.h"
#include "media/MediaPath.h"
#include "platform/disks/MountTable.h"

#include <filesystem>
#include <system_error>

bool ZVKAppDelegate::isInUse(const std::string& mountPath) const
{
    return folderFollower->mayLieOn(mountPath);
}

/// Ends what plays or is being prepared, with all that is shown of it.
void ZVKAppDelegate::closeFile(bool staysAtHand)
{
    if (waitingForPlayStart)
        hideLoading();
    forgetPendingStart();
    player1->stop();
    if (!staysAtHand) {
        player1->setMedia(nullptr);
        mediaIndex = -1;
    }
    clearMoment();
    passedOver.clear();
    brokenOff.clear();
    outlets->titleLabel->clear();
    showOrHideVideo();
}

void ZVKAppDelegate::letGoOf(const std::string& mountPath)
{
    const auto media = player1 ? player1->media() : nullptr;
    const std::string file = media ? media->url().value_or("") : "";
    const bool hasFolder = mediaList->directoryPath() && folderFollower->mayLieOn(mountPath);
    if (platform::isWithin(file, mountPath)
        || (hasFolder && platform::isWithin(file, standardizedPath(*mediaList->directoryPath()))))
        closeFile(false);
    if (!hasFolder)
        return;
    folderLetGo = mediaList->directoryPath();
    folderFollower->follow({});
    scanning = false;
    mediaList->clear();
    mediaTable->reload();
    showListState();
}

/// Reads the folder again, or the card's root when the folder is gone, unless another one was opened
/// meanwhile.
void ZVKAppDelegate::cardFormatted(const std::string& from, const std::string& to)
{
    if (!folderLetGo)
        return;
    std::string folder = *folderLetGo;
    if (!to.empty() && platform::isWithin(folder, from))
        folder = to + folder.substr(from.size());
    desktop.dispatcher.inBackground([this, &dispatcher = desktop.dispatcher, folder, to,
                                        before = *folderLetGo, life = std::weak_ptr(alive)] {
        std::error_code missing;
        const bool isThere = to.empty() || std::filesystem::is_directory(folder, missing);
        dispatcher.onMain([this, life, before, place = isThere ? folder : to] {
            if (!life.expired() && folderLetGo == before)
                openMediaDirectory(place);
        });
    });
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
