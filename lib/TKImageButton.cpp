#include "lib/TKImageButton.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

TKImageButton::TKImageButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
}

void TKImageButton::setImageName(const QString& name)
{
    image = platform::imageNamed(name);
    activeImage = image;
    const platform::Image disabled = buttonImageNameWithSuffix(QStringLiteral("_d"));
    inactiveImage = disabled.isNull() ? image : disabled;
    rolloverImage = buttonImageNameWithSuffix(QStringLiteral("_f"));
    alternateImage = buttonImageNameWithSuffix(QStringLiteral("_p"));
    updateRollOverImage();
    updateGeometry();
}

platform::Image TKImageButton::buttonImageNameWithSuffix(const QString& suffix) const
{
    const QString& name = activeImage.name();
    if (name.size() < 2)
        return {};
    return platform::imageNamed(name.chopped(2) + suffix);
}

void TKImageButton::setNumberOfCaptures(int64_t n)
{
    if (n < 0 || n == captures)
        return;
    captures = n;
}

void TKImageButton::keepPictureUnderPointer()
{
    rolloverImage = activeImage;
    updateRollOverImage();
}

void TKImageButton::updateRollOverImage()
{
    if (shouldDisplayRollOver() && isEnabled() && !rolloverImage.isNull()) {
        image = rolloverImage;
        update();
    } else {
        updateImage();
    }
}

void TKImageButton::updateImage()
{
    image = isEnabled() ? activeImage : inactiveImage;
    update();
}

const platform::Image& TKImageButton::shownImage() const
{
    return isDown() && !alternateImage.isNull() ? alternateImage : image;
}

QSize TKImageButton::sizeHint() const
{
    const auto [imageWidth, imageHeight] = activeImage.size();
    return {int(imageWidth), int(imageHeight)};
}

void TKImageButton::paintEvent(QPaintEvent*)
{
    const platform::Image& shown = shownImage();
    const auto [naturalWidth, naturalHeight] = shown.size();
    const double fit =
        std::min({1.0, width() / std::max(naturalWidth, 1.0), height() / std::max(naturalHeight, 1.0)});
    const double imageWidth = naturalWidth * fit;
    const double imageHeight = naturalHeight * fit;
    QPainter painter(this);
    const QRectF place((width() - imageWidth) / 2, (height() - imageHeight) / 2, imageWidth, imageHeight);
    shown.draw(painter, place);
    if (!text().isEmpty()) {
        painter.setPen(palette().color(QPalette::ButtonText));
        painter.drawText(rect().adjusted(textLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
    }
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    }
}

void TKImageButton::updateTrackingAreas()
{
    constexpr int trackingMargin = 4;
    mouseTrackingArea = std::make_unique<TrackingArea>(*this, trackingMargin, [this](bool isInside) {
        setNumberOfCaptures(captures + (isInside ? 1 : -1));
        updateRollOverImage();
    });
}

void TKImageButton::showEvent(QShowEvent* event)
{
    QAbstractButton::showEvent(event);
    updateTrackingAreas();
}

void TKImageButton::hideEvent(QHideEvent* event)
{
    QAbstractButton::hideEvent(event);
    mouseTrackingArea.reset();
    resetMouseCaptures();
    updateRollOverImage();
}

void TKImageButton::changeEvent(QEvent* event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        updateImage();
}
