#include "app/player/TransportPanel.h"

#include "app/window/MainWindowControls.h"
#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "platform/Texts.h"

#include <QSignalBlocker>

#include <utility>

TransportPanel::TransportPanel(MainWindowOutlets& widgets, Told told)
    : outlets(widgets)
{
    const platform::Image bar = platform::imageNamed(QStringLiteral("bottom-background"));
    outlets.mediaControlBoxForFullScreen->setImagesLeft(bar, bar, bar);
    for (PositionSlider* slider : {outlets.videoPositionSlider, outlets.videoPositionSliderForFullScreen}) {
        slider->setAccessibleName(platform::localized("tip.position"));
        slider->setToolTip(platform::localized("tip.position"));
        slider->setFocusPolicy(Qt::TabFocus);
        QObject::connect(slider, &PositionSlider::moved, slider, told.sliderMoved);
    }
    outlets.volumeSlider->setAccessibleName(platform::localized("tip.volume"));
    outlets.volumeSlider->setToolTip(platform::localized("tip.volume"));
    outlets.volumeSlider->setFocusPolicy(Qt::TabFocus);
    QObject::connect(outlets.volumeSlider, &QSlider::valueChanged, outlets.volumeSlider, told.volumeMoved);
    for (const auto& [label, key] :
        {std::pair(outlets.speedTextButton, "tip.speed"), std::pair(outlets.sizeTextButton, "tip.size")}) {
        label->setToolTip(platform::localized(key));
        label->setAccessibleDescription(platform::localized(key));
    }
    reset();
}

bool TransportPanel::isKnobHeld() const
{
    return outlets.videoPositionSlider->isSliderDown()
        || outlets.videoPositionSliderForFullScreen->isSliderDown();
}

double TransportPanel::position() const
{
    return outlets.videoPositionSlider->doubleValue();
}

void TransportPanel::showPosition(double fraction, const platform::Media* media)
{
    QString text;
    if (media && !media->length().isNull()) {
        const auto played =
            platform::MediaTime::timeWithInt(int64_t(fraction * double(media->length().intValue())));
        text = QString::fromStdString(played.stringValue() + " / " + media->length().stringValue());
    }
    for (PositionSlider* slider : {outlets.videoPositionSlider, outlets.videoPositionSliderForFullScreen}) {
        slider->setDoubleValue(fraction);
        slider->setAccessibleDescription(text);
    }
    outlets.timeField->setText(text);
    outlets.timeFieldForFullScreen->setText(text);
}

void TransportPanel::showPlaying(bool isPlaying, const MainWindowControls& controls)
{
    const QString image = isPlaying ? QStringLiteral("icon_pause_n") : QStringLiteral("icon_play_n");
    for (TKImageButton* button : {outlets.playButton, outlets.playButtonForFullScreen}) {
        // Reported with every time report, most of them without news.
        if (button->imageName() == image)
            continue;
        button->setImageName(image);
        controls.describe(*button, isPlaying ? "tip.pause" : "tip.play");
    }
}

void TransportPanel::showSpeed(double speed)
{
    outlets.speedTextButton->setText(QString::fromStdString(formatted("%.1fx", speed)));
}

void TransportPanel::showScale(double scale)
{
    outlets.sizeTextButton->setText(
        scale > 0 ? QString::fromStdString(formatted("%.2fx", scale)) : QString());
}

void TransportPanel::showVolume(uint64_t volume)
{
    const QSignalBlocker silent(outlets.volumeSlider);
    outlets.volumeSlider->setValue(int(volume));
}

void TransportPanel::reset()
{
    for (PositionSlider* slider : {outlets.videoPositionSlider, outlets.videoPositionSliderForFullScreen})
        slider->setDoubleValue(0);
    outlets.timeField->clear();
    outlets.timeFieldForFullScreen->clear();
}
