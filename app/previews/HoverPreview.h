#pragma once

#include "app/previews/PreviewReader.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class PreviewTip;
namespace platform {
class MediaPlayer;
}

/// The small picture with its time while the pointer goes over a line of time of the window. The time is
/// there at once, the picture when it was read; until then the latest of the same file stays. Main thread
/// only.
class HoverPreview final : public QObject {
public:
    struct Place {
        std::string path;
        double seconds = 0; ///< into that file
        QString text;
    };
    /// What there is at a fraction of the line; nothing: nothing is shown.
    using PlaceAt = std::function<std::optional<Place>(double fraction)>;

    /// The reader lives longer. Once the window is gone nothing is shown any more.
    HoverPreview(QWidget& window, PreviewReader& reader);
    ~HoverPreview() override;

    /// The line has a signal `hovered(double fraction, int x)`; the tip is shown above the bar that it is
    /// part of.
    template <typename Line> void watch(Line& line, QWidget& bar, PlaceAt placeAt)
    {
        line.installEventFilter(this);
        QObject::connect(&line, &Line::hovered, this,
            [this, &line, &bar, at = std::move(placeAt)](double fraction, int x) {
                if (const auto place = line.isVisible() ? at(fraction) : std::nullopt)
                    show(*place, bar, line.mapTo(&bar, QPoint(x, 0)).x());
                else
                    hide();
            });
    }

    /// What the lines show is another file, or nothing.
    void hide();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const Place& place, QWidget& bar, int x);
    void arrived(const PreviewRequest& request);
    void showPicture();

    QWidget& window;
    PreviewReader& reader;
    QPointer<PreviewTip> tip; // the window owns it
    PreviewRequest wanted;
    std::string shownPath; // of the picture that is shown
};

/// At a fraction of the file that the player has, with the time there; the picture is of the camera that is
/// alone on screen, or large. Nothing while the file's length is not known.
std::optional<HoverPreview::Place> placeIn(const platform::MediaPlayer& player, double fraction);
