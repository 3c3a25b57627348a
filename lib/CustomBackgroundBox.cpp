#include "lib/CustomBackgroundBox.h"

#include <QPaintEvent>
#include <QPainter>

CustomBackgroundBox::CustomBackgroundBox(QWidget* parent)
    : QWidget(parent)
{
}

QColor CustomBackgroundBox::panelColor()
{
    return QColor::fromRgbF(0.416f, 0.373f, 0.357f);
}

void CustomBackgroundBox::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(event->rect(), panelColor());
}
