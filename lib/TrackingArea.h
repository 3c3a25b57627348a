#pragma once

#include <QMargins>
#include <QObject>

#include <functional>

class QWidget;

/// An area of a window that reports when the pointer enters and leaves it, also while the window is not the
/// active one: a widget's bounds and a margin around them. Enter and leave alternate. While a mouse button is
/// held down nothing is reported. Made when the widget's window is on screen; nothing is reported for a
/// hidden widget.
class TrackingArea final : public QObject {
public:
    TrackingArea(QWidget& widget, int margin, std::function<void(bool isInside)> report);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void pointerIs(bool inside);

    QWidget& owner;
    QMargins around;
    std::function<void(bool)> changed;
    bool isInside = false;
};
