#include "platform/mpv/MpvCameras.h"

#include "common/Log.h"
#include "platform/mpv/MpvFile.h"
#include "platform/mpv/MpvHandle.h"

#include <algorithm>
#include <mpv/client.h>
#include <string_view>
#include <utility>

namespace platform {

namespace {

constexpr const char* scaling = "flags=fast_bilinear,setsar=1";

struct Pixels {
    int width = 0;
    int height = 0;
};

int even(double length)
{
    return std::max(2, static_cast<int>(length) / 2 * 2);
}

/// The largest size of the shape within the box.
Pixels fitted(VideoSize shape, Pixels box)
{
    const double scale = std::min(box.width / shape.width, box.height / shape.height);
    return {even(shape.width * scale), even(shape.height * scale)};
}

struct Inset {
    Pixels large;
    Pixels small;
    int margin = 0;
};

Inset insetOf(CameraView view, const CameraTracks& tracks)
{
    const bool isSwapped = view == CameraView::pictureInPictureSwapped;
    const Pixels large{even(tracks.firstSize.width), even(tracks.firstSize.height)};
    return {large,
        fitted(isSwapped ? tracks.firstSize : tracks.secondSize, {large.width / 3, large.height / 3}),
        large.width / 48};
}

std::string inset(const CameraTracks& tracks)
{
    const auto [large, small, margin] = insetOf(CameraView::pictureInPicture, tracks);
    return formatted("[vid%d]scale=%d:%d:%s[small];"
                     "[vid%d][small]overlay=main_w-overlay_w-%d:%d:eof_action=pass[vo]",
        tracks.second, small.width, small.height, scaling, tracks.first, margin, margin);
}

/// The first camera lies below everything, though it is not seen there: its pictures set the pace.
std::string swappedInset(const CameraTracks& tracks)
{
    const auto [large, small, margin] = insetOf(CameraView::pictureInPictureSwapped, tracks);
    const auto [width, height] = fitted(tracks.secondSize, large);
    return formatted(
        "[vid%d]split[pace][first];[first]scale=%d:%d:%s[small];"
        "[vid%d]scale=%d:%d:%s,pad=%d:%d:(ow-iw)/2:(oh-ih)/2[large];"
        "[pace][large]overlay=eof_action=pass[below];[below][small]overlay=main_w-overlay_w-%d:%d[vo]",
        tracks.first, small.width, small.height, scaling, tracks.second, width, height, scaling, large.width,
        large.height, margin, margin);
}

std::string sideBySide(const CameraTracks& tracks, bool isSwapped)
{
    const Pixels half{even(tracks.firstSize.width / 2), even(tracks.firstSize.height / 2)};
    const auto [width, height] = fitted(tracks.secondSize, half);
    return formatted("[vid%d]scale=%d:%d:%s,pad=%d:%d:%d:0[first];[vid%d]scale=%d:%d:%s[second];"
                     "[first][second]overlay=%d:%d:eof_action=pass[vo]",
        tracks.first, half.width, half.height, scaling, 2 * half.width, half.height,
        isSwapped ? half.width : 0, tracks.second, width, height, scaling,
        (isSwapped ? 0 : half.width) + (half.width - width) / 2, (half.height - height) / 2);
}

int number(const mpv_node& track, const char* name)
{
    const auto* value = nodeField(track, name);
    return value && value->format == MPV_FORMAT_INT64
        ? static_cast<int>(std::clamp<int64_t>(value->u.int64, 0, 1'000'000))
        : 0;
}

std::string_view text(const mpv_node& track, const char* name)
{
    const auto* value = nodeField(track, name);
    return value && value->format == MPV_FORMAT_STRING ? value->u.string : std::string_view();
}

} // namespace

bool MpvCameras::canShow(CameraView view) const
{
    if (view == CameraView::first)
        return true;
    const bool isThere = second == SecondFile::ready && !isOver && tracks.second > 0;
    return isThere && (view == CameraView::second || tracks.first > 0);
}

void MpvCameras::fileClosed()
{
    MpvCameras fresh;
    fresh.wanted = wanted;
    fresh.isKept = isKept;
    fresh.media = std::move(media);
    fresh.second = fresh.media && fresh.media->url() ? SecondFile::opening : SecondFile::none;
    *this = std::move(fresh);
}

bool isComposite(CameraView view)
{
    return view != CameraView::first && view != CameraView::second;
}

CameraTracks cameraTracksOf(const mpv_node& trackList, const std::string& secondAddress)
{
    constexpr double smallest = 16;
    CameraTracks tracks;
    for (const auto& track : nodeList(trackList)) {
        const int id = number(track, "id");
        if (text(track, "type") != "video" || id == 0)
            continue;
        const VideoSize size{std::clamp<double>(number(track, "demux-w"), smallest, largestPicture.width),
            std::clamp<double>(number(track, "demux-h"), smallest, largestPicture.height)};
        const auto address = text(track, "external-filename");
        if (address.empty() && tracks.first == 0)
            tracks.first = id, tracks.firstSize = size;
        else if (address == secondAddress && tracks.second == 0)
            tracks.second = id, tracks.secondSize = size;
        else if (!address.empty() && address != secondAddress)
            tracks.leftOver.push_back(id);
    }
    return tracks;
}

std::string cameraGraph(CameraView view, const CameraTracks& tracks)
{
    switch (view) {
    case CameraView::pictureInPicture:
        return inset(tracks);
    case CameraView::pictureInPictureSwapped:
        return swappedInset(tracks);
    case CameraView::sideBySide:
    case CameraView::sideBySideSwapped:
        return sideBySide(tracks, view == CameraView::sideBySideSwapped);
    case CameraView::first:
    case CameraView::second:
        break;
    }
    return {};
}

std::optional<PictureArea> smallPictureOf(CameraView view, const CameraTracks& tracks)
{
    if (view != CameraView::pictureInPicture && view != CameraView::pictureInPictureSwapped)
        return std::nullopt;
    const auto [large, small, margin] = insetOf(view, tracks);
    return PictureArea{double(large.width - small.width - margin) / large.width,
        double(margin) / large.height, double(small.width) / large.width,
        double(small.height) / large.height};
}

} // namespace platform
