#include "lib/LoadingSheet.h"

#include "lib/PMProgressIndicator.h"
#include "lib/Style.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

using namespace std::chrono_literals;

namespace {

constexpr auto step = 500ms;

} // namespace

LoadingSheet::LoadingSheet(platform::Dispatcher& queue, QWidget& below)
    : QWidget(below.parentWidget()),
      covered(below),
      bar(queue, {step},
          {[this](double percent) { progressIndicator->setDoubleValue(percent); },
              [this](bool isInTime) { end(isInTime); }})
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
    const bool isShown = bar.isRunning();
    bar.start();
    progressIndicator->startAnimation();
    setTitle(title);
    if (isShown)
        return;
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

void LoadingSheet::end(bool isInTime)
{
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
