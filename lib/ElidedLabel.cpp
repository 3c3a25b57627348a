#include "lib/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

void ElidedLabel::paintEvent(QPaintEvent*)
{
    const QRect area = contentsRect();
    QPainter painter(this);
    style()->drawItemText(&painter, area, int(alignment()), palette(), isEnabled(),
        fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()), foregroundRole());
}
