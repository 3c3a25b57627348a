#include "lib/InterfaceHelpers.h"

#include "lib/ButtonMatrix.h"
#include "lib/SegmentedControl.h"
#include "platform/Texts.h"

#include <QComboBox>

void setSegmentLabels(SegmentedControl& control, const QStringList& labels)
{
    control.setSegmentCount(static_cast<int>(labels.size()));
    for (int i = 0; i < labels.size(); ++i)
        control.setLabel(i, labels[i]);
}

void setSegmentLabelsWithWidth(SegmentedControl& control, int width, const QStringList& labels)
{
    setSegmentLabels(control, labels);
    for (int i = 0; i < labels.size(); ++i)
        control.setWidth(i, width);
    control.setFixedWidth(width * static_cast<int>(labels.size()));
}

void setComboItems(QComboBox& combo, const QStringList& items)
{
    combo.clear();
    combo.addItems(items);
}

void setCellTitles(ButtonMatrix& matrix, const QStringList& titles)
{
    for (int i = 0; i < titles.size(); ++i)
        matrix.setTitle(i, titles[i]);
}

void centerWindowHorizontally(QWidget& window, const QWidget& reference)
{
    const QRect frame = reference.frameGeometry();
    window.move(frame.x() + (frame.width() - window.frameGeometry().width()) / 2, window.y());
}

void explain(QWidget& control, const char* textKey)
{
    control.setToolTip(platform::localized(textKey));
    control.setAccessibleDescription(platform::localized(textKey));
}

QString filled(const QString& format, const QString& text)
{
    return QString(format).replace(QLatin1String("%@"), text);
}
