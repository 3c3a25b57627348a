#include "app/previews/HoverPreview.h"

#include "lib/PreviewTip.h"
#include "platform/MediaPlayer.h"
#include "platform/Texts.h"

#include <QEvent>

#include <cmath>
#include <utility>

namespace {

/// Pictures are this far apart, in seconds: cameras have a key frame about every second.
constexpr double step = 0.5;

} // namespace

HoverPreview::HoverPreview(QWidget& owner, PreviewReader& pictures)
    : window(owner),
      reader(pictures),
      tip(new PreviewTip(&owner))
{
    tip->setObjectName(QStringLiteral("previewTip"));
    tip->setAccessibleName(platform::localized("preview.name"));
    reader.listen(PreviewReader::Use::hand, [this](const PreviewRequest& request) { arrived(request); });
}

HoverPreview::~HoverPreview()
{
    reader.listen(PreviewReader::Use::hand, {});
}

void HoverPreview::show(const Place& place, QWidget& bar, int x)
{
    if (!tip)
        return;
    PreviewRequest request{place.path, std::floor(place.seconds / step) * step,
        int(std::lround(PreviewTip::room.width() * window.devicePixelRatioF()))};
    tip->setText(place.text);
    if (request != wanted) {
        wanted = std::move(request);
        reader.want(PreviewReader::Use::hand, {wanted});
    }
    showPicture();
    const QPoint corner = bar.mapTo(&window, QPoint(0, 0));
    tip->showAbove(QRect(corner, bar.size()), corner.x() + x);
}

void HoverPreview::hide()
{
    if (!tip || tip->isHidden())
        return;
    tip->hide();
    tip->setPicture({});
    shownPath.clear();
    wanted = {};
    reader.want(PreviewReader::Use::hand, {});
}

/// Never one of another file.
void HoverPreview::showPicture()
{
    if (const QImage* picture = reader.picture(PreviewReader::Use::hand, wanted)) {
        shownPath = wanted.path;
        tip->setPicture(*picture);
    } else if (shownPath != wanted.path) {
        shownPath = wanted.path;
        tip->setPicture({});
    }
}

void HoverPreview::arrived(const PreviewRequest& request)
{
    if (!tip || tip->isHidden() || request.path != wanted.path)
        return;
    if (const QImage* picture = reader.picture(PreviewReader::Use::hand, request))
        tip->setPicture(*picture);
    else if (request == wanted)
        tip->setWithoutPicture();
}

bool HoverPreview::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
        hide();
        break;
    case QEvent::ToolTip:
        // It would cover what lies below.
        return tip && !tip->isHidden();
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

std::optional<HoverPreview::Place> placeIn(const platform::MediaPlayer& player, double fraction)
{
    const auto media = player.media();
    if (!media || !media->url() || media->length().intValue() <= 0)
        return {};
    const auto time =
        platform::MediaTime::timeWithInt(int64_t(fraction * double(media->length().intValue())));
    const auto view = player.shownCameraView();
    const bool isSecond =
        view == platform::CameraView::second || view == platform::CameraView::pictureInPictureSwapped;
    const auto second = isSecond ? player.secondMedia() : nullptr;
    const auto& path = second && second->url() ? *second->url() : *media->url();
    return HoverPreview::Place{
        path, double(time.intValue()) / 1000, QString::fromStdString(time.stringValue())};
}
