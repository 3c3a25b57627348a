#pragma once

#include "app/drives/DrivePlayback.h"
#include "app/drives/DriveStripPanel.h"
#include "app/drives/DrivesPanel.h"
#include "app/previews/HoverPreview.h"
#include "common/Life.h"
#include "drives/DriveRoute.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

struct MainWindowOutlets;

/// All that the main window has of drives: their list, the one that plays, its strip. Main thread only.
class DrivesPart {
public:
    struct Told {
        /// More is known of the recordings' moments.
        std::function<void()> known;
        /// The map is to show this way of a drive, as a script for its page.
        std::function<void(const std::string& script)> route;
        /// The map is to show which take plays.
        std::function<void(const std::string& script)> take;
    };

    /// The small pictures of another folder are void with its drives.
    DrivesPart(platform::Dispatcher& dispatcher, PlaybackSession& session, const ZVKMediaList& list,
        MainWindowOutlets& outlets, MainWindowLayout& layout, PreviewReader& previews, HoverPreview& hover,
        Told told);
    ~DrivesPart() { routeReading.request_stop(); }

    /// The list of recordings holds others, or none.
    void recordingsListed();
    void clear();
    void movedTo(const std::string& from, const std::string& to);
    /// A card is about to be unmounted: no picture is read until the drives are others or `showPreviews`.
    void forgetPreviews();
    void showPreviews() { panel.lookAtVisible(); }
    void setShowsMiles(bool miles) { panel.setShowsMiles(miles); }

    /// Enter is for the drives: one of their lists has the focus.
    bool hasFocus() const { return panel.hasFocus(); }
    void chooseCurrent() { panel.chooseCurrent(); }
    /// Plays the next (1) or previous (-1) part of the drive; false where none is played.
    bool playNeighbour(int direction) { return playback.playNeighbour(direction); }
    void jumpToMoment(int direction);
    /// What follows the entry; nothing for a file of no drive that plays.
    std::optional<Following> following(int64_t index) const { return playback.following(index); }

    /// The user clicked the way of the drive on the map; the page's word for it.
    void mapSaid(const std::string& word);

    // The session's reports.
    void entryChosen(int64_t index);
    void showMoment(double position);

    /// Whether an impact was found in the recording; nothing while it was not read.
    std::optional<bool> hasImpact(const ZVKMedia& media) const;
    /// All recordings are to be read for that.
    void readAll() { panel.readAll(); }

private:
    void play(size_t drive, const std::optional<DriveMoment>& moment);
    void tellMoments(size_t drive);
    void drivesChanged();
    double positionAtHand() const;
    void playedChanged();
    std::optional<HoverPreview::Place> placeOnStrip(double fraction) const;
    void clearRoute();
    void readRoute(size_t drive);

    platform::Dispatcher& dispatcher;
    PlaybackSession& session;
    const ZVKMediaList& list;
    PreviewReader& previews;
    HoverPreview& hover;
    Told told;
    std::vector<RoutePart> route; // of the drive that plays
    bool isRouteAsked = false;
    std::optional<std::set<std::string>> routeSkips; // while it is read
    std::stop_source routeReading;
    Life routeLife;
    DriveStripPanel strip;
    DrivePlayback playback;
    DrivesPanel panel;
};
