#include "lib/LoadingSheet.h"

#include "lib/PMProgressIndicator.h"
#include "lib/Style.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto tick = 500ms;
constexpr double longest = 15.0; // seconds
// Thirty thirtieths need not be a whole.
constexpr double full = 100 - 1e-6;

} // namespace

LoadingSheet::LoadingSheet(platform::Dispatcher& queue, QWidget& below)
    : QWidget(below.parentWidget()),
      dispatcher(queue),
      covered(below)
{
    hide();
    setFocusPolicy(Qt::StrongFocus);
    auto* box = new QWidget(this);
    box->setObjectName(QStringLiteral("progressBox"));
    box->setFixedWidth(320);
    progressTitleField = new QLabel(box);
    progressTitleField->setAlignment(Qt::AlignCenter);
    progressIndicator = new PMProgressIndicator(box);
    progressIndicator->setObjectName(QStringLiteral("progressIndicator"));
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(24, 20, 24, 22);
    column->setSpacing(12);
    column->addWidget(progressTitleField);
    column->addWidget(progressIndicator);
    auto* middle = new QVBoxLayout(this);
    middle->addWidget(box, 0, Qt::AlignCenter);
    covered.installEventFilter(this);
}

void LoadingSheet::showLoading(const QString& title)
{
    progressIndicator->setIndeterminate(true);
    const bool isTicking = isVisibleTo(parentWidget());
    stopLoadingWindow = false;
    progress = 0;
    progressIndicator->setDoubleValue(progressIndicator->minValue());
    progressIndicator->startAnimation();
    setTitle(title);
    if (isTicking)
        return;
    scheduleUpdate(longest);
    focusedBefore = covered.window()->focusWidget();
    covered.setEnabled(false);
    setGeometry(covered.geometry());
    show();
    raise();
    setFocus();
}

void LoadingSheet::setTitle(const QString& title)
{
    progressTitleField->setText(title);
    setAccessibleName(title);
}

void LoadingSheet::hideLoading()
{
    stopLoadingWindow = true;
}

void LoadingSheet::scheduleUpdate(double seconds)
{
    dispatcher.after(tick, [this, seconds, life = std::weak_ptr(alive)] {
        if (!life.expired())
            updateLoadingWindow(seconds);
    });
}

void LoadingSheet::updateLoadingWindow(double seconds)
{
    progress += 100 / (2 * seconds);
    progressIndicator->setDoubleValue(progress);
    if (progress >= full || stopLoadingWindow)
        end();
    else
        scheduleUpdate(seconds);
}

void LoadingSheet::end()
{
    const bool isInTime = std::exchange(stopLoadingWindow, true);
    progressIndicator->setDoubleValue(progressIndicator->minValue());
    progressIndicator->stopAnimation();
    hide();
    covered.setEnabled(true);
    if (focusedBefore)
        focusedBefore->setFocus();
    if (!isInTime && timedOut)
        timedOut();
}

bool LoadingSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(covered.geometry());
    return QWidget::eventFilter(watched, event);
}

void LoadingSheet::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor veil = style::window;
    veil.setAlphaF(0.7F);
    painter.fillRect(rect(), veil);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(style::line);
    painter.setBrush(style::header);
    const QRect box = findChild<QWidget*>(QStringLiteral("progressBox"))->geometry();
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}
