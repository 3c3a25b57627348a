#pragma once

#include "platform/MediaPlayer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct mpv_node;

namespace platform {

/// The pictures that mpv can show: its numbers of their tracks (0: there is none) and their sizes as the
/// headers claim them.
struct CameraTracks {
    int first = 0;
    int second = 0;
    VideoSize firstSize;
    VideoSize secondSize;
    std::vector<int> leftOver; ///< of second files that were taken away
};

/// Both cameras of the file at hand.
struct MpvCameras {
    CameraView wanted = CameraView::first;
    bool isKept = false;
    /// What mpv was told last, and what has arrived of it.
    CameraView applied = CameraView::first;
    CameraView shown = CameraView::first;
    bool isOutdated = false; ///< mpv must be told again
    bool isGraphGone = false; ///< that was applied last
    double since = 0; ///< where the file was then
    /// Of the picture that arrives: its size, whether a track is shown.
    VideoSize size;
    bool hasTrack = false;

    std::shared_ptr<Media> media;
    SecondFile second = SecondFile::none; // never `ended`
    bool isAsked = false; ///< mpv was told to open it
    std::string address;
    CameraTracks tracks;
    /// From here on the second file has no pictures; nothing when it has them to the first's end.
    std::optional<double> end;
    bool isOver = false;
    bool isToldOf = false;

    bool canShow(CameraView view) const;
    /// The view to show, given what is there.
    CameraView possible() const { return canShow(wanted) ? wanted : CameraView::first; }
    /// Another file follows. What the user chose stays.
    void fileClosed();
};

/// Whether the view is made of both cameras.
bool isComposite(CameraView view);
/// The tracks in mpv's "track-list", the second file being the one that was added under the address.
CameraTracks cameraTracksOf(const mpv_node& trackList, const std::string& secondAddress);
/// The graph for "lavfi-complex" that makes a view of both cameras; its pictures come and end with the
/// first's. Empty for the other views.
std::string cameraGraph(CameraView view, const CameraTracks& tracks);
std::optional<PictureArea> smallPictureOf(CameraView view, const CameraTracks& tracks);

} // namespace platform
