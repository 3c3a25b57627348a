#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

/// Sends one key press to the widget, whether it has the focus or not.
inline void press(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {})
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &event);
}
