#include "lib/TrackingArea.h"

#include <QSinglePointEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

TrackingArea::TrackingArea(QWidget& widget, int margin, std::function<void(bool)> report)
    : owner(widget),
      around(margin, margin, margin, margin),
      changed(std::move(report))
{
    if (QWindow* window = owner.window()->windowHandle())
        window->installEventFilter(this);
}

bool TrackingArea::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease: {
        const auto& pointer = static_cast<const QSinglePointEvent&>(*event);
        if (pointer.buttons() == Qt::NoButton) {
            const QPoint place = owner.mapFrom(owner.window(), pointer.position().toPoint());
            pointerIs(owner.isVisible() && owner.rect().marginsAdded(around).contains(place));
        }
        break;
    }
    case QEvent::Leave:
        pointerIs(false);
        break;
    default:
        break;
    }
    return false;
}

void TrackingArea::pointerIs(bool inside)
{
    if (std::exchange(isInside, inside) != inside)
        changed(inside);
}
