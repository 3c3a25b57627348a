#include "lib/LoadingIndicator.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int frameMs = 40;
constexpr int phases = 40;

} // namespace

LoadingIndicator::LoadingIndicator(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(180, 6);
    animation.setInterval(frameMs);
    connect(&animation, &QTimer::timeout, this, [this] {
        phase = (phase + 1) % phases;
        update();
    });
}

void LoadingIndicator::setDoubleValue(double wanted)
{
    value = std::clamp(wanted, minimum, maximum);
    update();
}

void LoadingIndicator::startAnimation()
{
    animation.start();
}

void LoadingIndicator::stopAnimation()
{
    animation.stop();
}

void LoadingIndicator::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath track;
    track.addRoundedRect(QRectF(rect()), height() / 2.0, height() / 2.0);
    painter.setClipPath(track);
    painter.fillRect(rect(), QColor(0, 0, 0, 90));

    const QColor accent = palette().color(QPalette::Highlight);
    const double filled = width() * (value - minimum) / (maximum - minimum);
    painter.fillRect(QRectF(0, 0, filled, height()), accent);

    const double sheen = width() * 0.3;
    const double x = (width() + sheen) * phase / phases - sheen;
    QLinearGradient gradient(x, 0, x + sheen, 0);
    gradient.setColorAt(0, QColor(255, 255, 255, 0));
    gradient.setColorAt(0.5, QColor(255, 255, 255, 150));
    gradient.setColorAt(1, QColor(255, 255, 255, 0));
    painter.fillRect(QRectF(x, 0, sheen, height()), gradient);
}
