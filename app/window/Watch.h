#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>

#include <functional>

/// Reports when a widget changes its size or comes into sight, and its key and mouse events before it gets
/// them. The widget owns it.
class Watch final : public QObject {
public:
    explicit Watch(QObject* watched)
        : QObject(watched)
    {
        watched->installEventFilter(this);
    }

    std::function<void()> resized;
    std::function<void()> shown;
    // True: taken, the widget does not see it. The second press of a double click is one of its own.
    std::function<bool(QKeyEvent&)> keyPressed;
    std::function<bool(QMouseEvent&)> mousePressed;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize && resized)
            resized();
        if (event->type() == QEvent::Show && shown)
            shown();
        if (event->type() == QEvent::KeyPress && keyPressed && keyPressed(static_cast<QKeyEvent&>(*event)))
            return true;
        const bool isPress =
            event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
        if (isPress && mousePressed && mousePressed(static_cast<QMouseEvent&>(*event)))
            return true;
        return QObject::eventFilter(watched, event);
    }
};
