#pragma once

#include "platform/MediaPlayer.h"

#include <optional>
#include <string>
#include <vector>

/// A player that does what the test says: its state is plain fields, its operations are written down.
class ScriptedPlayer final : public platform::MediaPlayer {
public:
    std::shared_ptr<platform::Media> current;
    std::shared_ptr<platform::Media> second;
    platform::SecondFile secondState = platform::SecondFile::none;
    platform::CameraView view = platform::CameraView::first;
    bool keepsView = false;
    platform::PlayerState now = platform::PlayerState::stopped;
    float fraction = 0;
    float speed = 1;
    int64_t lengthMs = 60000;
    std::vector<int> tracks{1};
    platform::VideoSize size{1280, 720};
    bool muted = true;
    int loudness = -1;
    /// What a snapshot writes; it fails without one.
    std::optional<std::string> picture = "picture";
    /// "play", "pause", "stop", "setMedia NAME", "setPosition 0.50", "setTime 1000", "jumpForward 10", ...
    std::vector<std::string> calls;
    platform::MediaPlayerDelegate* delegate = nullptr;

    /// What the real one reports, at once.
    void reportState(platform::PlayerState state);
    void reportTime(float position);
    void reportFailure(const std::string& why);
    /// The second file is open, or failed; a view chosen before is on screen now, or no longer.
    void reportSecond(platform::SecondFile state, const std::string& why = {});
    /// The last file reached its end.
    void reportEnd();
    size_t countOf(const std::string& call) const;

    void setMedia(std::shared_ptr<platform::Media> media) override;
    std::shared_ptr<platform::Media> media() const override { return current; }
    void setSecondMedia(std::shared_ptr<platform::Media> media) override;
    std::shared_ptr<platform::Media> secondMedia() const override { return second; }
    platform::SecondFile secondFile() const override { return secondState; }
    void setCameraView(platform::CameraView wanted, platform::CameraChoice choice) override;
    platform::CameraView cameraView() const override { return view; }
    platform::CameraView shownCameraView() const override;
    bool canShow(platform::CameraView wanted) const override;
    std::optional<platform::PictureArea> smallPicture() const override;
    void play() override { calls.push_back("play"); }
    void pause() override { calls.push_back("pause"); }
    void stop() override;
    bool isPlaying() const override { return now == platform::PlayerState::playing; }
    platform::PlayerState state() const override { return now; }
    float position() const override { return fraction; }
    void setPosition(float position) override;
    platform::MediaTime time() const override;
    void setTime(platform::MediaTime time) override;
    platform::MediaTime remainingTime() const override;
    float rate() const override { return speed; }
    void setRate(float rate) override { speed = rate; }
    bool seeking = false;
    bool isSeeking() const override { return seeking; }
    void stepFrame(int frames) override { calls.push_back("stepFrame " + std::to_string(frames)); }
    bool brokenOff = false;
    bool breaksOff() const override { return brokenOff; }
    void jumpForward(int seconds) override { calls.push_back("jumpForward " + std::to_string(seconds)); }
    bool hasVideoOut() const override { return size.width > 0; }
    platform::VideoSize videoSize() const override { return size; }
    void setMute(bool mute) override { muted = mute; }
    void setVolume(int volume) override { loudness = volume; }
    std::vector<int> audioTrackIndexes() const override { return tracks; }
    bool saveVideoSnapshotAt(const std::string& path, int width, int height) override;
    void setDelegate(platform::MediaPlayerDelegate* receiver) override { delegate = receiver; }
};
