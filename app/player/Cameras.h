#pragma once

#include "media/CameraLook.h"
#include "platform/MediaPlayer.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>

/// Which camera of the moment is on screen, in the user's words; the player knows a first and a second file.
/// What the user chose stays over the files of a drive, also over those that do not have it. Main thread
/// only.
class Cameras {
public:
    struct Told {
        /// Another view is on screen, or others are possible.
        std::function<void()> changed;
        /// A few words about the cameras.
        std::function<void(const QString& text)> remark;
    };

    Cameras(platform::MediaPlayer& player, Told told);

    /// The player was given the recording; the other camera's of the same moment follows, if there is one.
    /// `goesOn`: it goes on a drive, where the user's choice holds.
    void begin(const std::string& path, const std::optional<std::string>& other, bool goesOn);
    /// The next (1) or previous (-1) look that is possible.
    void change(int direction);
    /// The small picture and the large one change places.
    void swap();
    /// There is a recording of the other camera that can be shown, or it is not known yet that it can't.
    bool canChange() const;
    /// The user chose the rear camera, alone or large.
    bool prefersRear() const { return wanted == CameraLook::rear || wanted == CameraLook::rearWithFront; }
    /// What is on screen, as a text.
    QString shownText() const;

    // The player's reports, and the start of its file.
    void reported();
    void failed(const std::string& why);

private:
    CameraLook shown() const;
    bool arrives() const;
    void choose(CameraLook look);
    bool isPossible(CameraLook look) const;
    /// Why the other camera cannot be seen.
    const char* whyNot() const;

    platform::MediaPlayer& player;
    Told told;
    CameraLook wanted = CameraLook::front;
    CameraLook known = CameraLook::front; // that is on screen, to the user's knowledge
    bool isRearFirst = false;
    bool isNamed = false; // the recording tells its camera
};
