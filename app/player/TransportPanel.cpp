#include "app/player/TransportPanel.h"

#include "app/window/MainWindowControls.h"
#include "common/Log.h"
#include "platform/Texts.h"
#include "ui_FullScreenBar.h"
#include "ui_TransportBar.h"

#include <QSignalBlocker>

#include <cmath>
#include <utility>

TransportPanel::TransportPanel(Ui::TransportBar& below, Ui::FullScreenBar& inFullScreen, Told told)
    : bar(below),
      fullScreenBar(inFullScreen)
{
    for (PositionSlider* slider : {bar.videoPositionSlider, fullScreenBar.videoPositionSliderForFullScreen}) {
        slider->setAccessibleName(platform::localized("tip.position"));
        slider->setToolTip(platform::localized("tip.position"));
        slider->setFocusPolicy(Qt::TabFocus);
        QObject::connect(slider, &PositionSlider::moved, slider, told.sliderMoved);
    }
    bar.volumeSlider->setAccessibleName(platform::localized("tip.volume"));
    bar.volumeSlider->setToolTip(platform::localized("tip.volume"));
    bar.volumeSlider->setFocusPolicy(Qt::TabFocus);
    QObject::connect(bar.volumeSlider, &QSlider::valueChanged, bar.volumeSlider, told.volumeMoved);
    for (const auto& [label, key] :
        {std::pair(bar.speedTextButton, "tip.speed"), std::pair(bar.sizeTextButton, "tip.size")}) {
        label->setToolTip(platform::localized(key));
        label->setAccessibleDescription(platform::localized(key));
    }
    reset();
}

bool TransportPanel::isKnobHeld() const
{
    return bar.videoPositionSlider->isSliderDown()
        || fullScreenBar.videoPositionSliderForFullScreen->isSliderDown();
}

double TransportPanel::position() const
{
    return bar.videoPositionSlider->doubleValue();
}

void TransportPanel::showPosition(double fraction, const platform::Media* media)
{
    QString text;
    if (media && !media->length().isNull()) {
        const auto played =
            platform::MediaTime::timeWithInt(int64_t(fraction * double(media->length().intValue())));
        text = QString::fromStdString(played.stringValue() + " / " + media->length().stringValue());
    }
    for (PositionSlider* slider : {bar.videoPositionSlider, fullScreenBar.videoPositionSliderForFullScreen}) {
        slider->setDoubleValue(fraction);
        slider->setAccessibleDescription(text);
    }
    bar.timeField->setText(text);
    fullScreenBar.timeFieldForFullScreen->setText(text);
}

void TransportPanel::showPlaying(bool isPlaying, const MainWindowControls& controls)
{
    const QString image = isPlaying ? QStringLiteral("icon_pause_n") : QStringLiteral("icon_play_n");
    for (TKImageButton* button : {bar.playButton, fullScreenBar.playButtonForFullScreen}) {
        // Called with every time report, mostly without a change.
        if (button->imageName() == image)
            continue;
        button->setImageName(image);
        controls.describe(*button, isPlaying ? "tip.pause" : "tip.play");
    }
}

void TransportPanel::showSpeed(double speed)
{
    const bool isQuarter = std::fmod(speed * 10, 1) != 0;
    bar.speedTextButton->setText(QString::fromStdString(formatted(isQuarter ? "%.2fx" : "%.1fx", speed)));
}

void TransportPanel::showScale(double scale)
{
    bar.sizeTextButton->setText(scale > 0 ? QString::fromStdString(formatted("%.2fx", scale)) : QString());
}

void TransportPanel::showVolume(uint64_t volume)
{
    const QSignalBlocker silent(bar.volumeSlider);
    bar.volumeSlider->setValue(int(volume));
}

void TransportPanel::reset()
{
    for (PositionSlider* slider : {bar.videoPositionSlider, fullScreenBar.videoPositionSliderForFullScreen})
        slider->setDoubleValue(0);
    bar.timeField->clear();
    fullScreenBar.timeFieldForFullScreen->clear();
}
