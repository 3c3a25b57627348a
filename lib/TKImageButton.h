#pragma once

#include "lib/TrackingArea.h"
#include "platform/Images.h"

#include <QAbstractButton>

#include <cstdint>
#include <memory>

/// A borderless button that is a picture: the normal one, a roll-over one while the pointer is inside, a
/// pressed one while it is held down, another one while it is disabled. The pictures are found from the
/// normal picture's name, whose last two characters name the state: "icon_play_n", "icon_play_f" (roll-over),
/// "icon_play_p" (pressed), "icon_play_d" (disabled). Where a state's picture does not exist, the normal one
/// is shown.
class TKImageButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(QString imageName READ imageName WRITE setImageName)

public:
    explicit TKImageButton(QWidget* parent = nullptr);

    /// Sets the normal picture and, from its name, the others.
    void setImageName(const QString& name);
    QString imageName() const { return activeImage.name(); }

    /// The picture of another state ("_f", "_p"); empty when the button has no picture, its name is too
    /// short, or there is no such picture.
    platform::Image buttonImageNameWithSuffix(const QString& suffix) const;

    const platform::Image& pressedImage() const { return alternateImage; }
    // Of the widget library, with the count of captures below; the program's own windows do not use them.
    void setPressedImage(platform::Image pressed) { alternateImage = std::move(pressed); }

    /// How many times the pointer is inside the bounds or 4 points around them; never negative.
    int64_t numberOfCaptures() const { return captures; }
    void setNumberOfCaptures(int64_t n);
    void resetMouseCaptures() { setNumberOfCaptures(0); }
    bool shouldDisplayRollOver() const { return captures > 0; }

    /// The picture that the button shows at this moment.
    const platform::Image& shownImage() const;

    /// No roll-over picture until the next `setImageName`: used for the button of the current choice.
    void keepPictureUnderPointer();

    /// Draws the button's text over the picture, from this many points right of its left edge.
    void setTextLeft(int points) { textLeft = points; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateTrackingAreas();
    void updateRollOverImage();
    void updateImage();

    std::unique_ptr<TrackingArea> mouseTrackingArea;
    int64_t captures = 0;
    int textLeft = 0;
    platform::Image activeImage;
    platform::Image inactiveImage;
    platform::Image rolloverImage;
    platform::Image alternateImage;
    platform::Image image;
};
