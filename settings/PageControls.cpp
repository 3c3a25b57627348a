#include "settings/PageControls.h"

#include "common/InterfaceHelpers.h"
#include "platform/Texts.h"

#include <QWidget>

using platform::localized;

QString remarkedLabel(const QString& label, const char* remarkKey)
{
    return filled(label + QStringLiteral("(%@)"), localized(remarkKey));
}

QStringList sensitivityLabels()
{
    return {remarkedLabel("1", "insensitive"), "2", "3", "4", remarkedLabel("5", "sensitive")};
}

QStringList offOnLabels()
{
    return {localized("off"), localized("on")};
}

void explain(QWidget& control, const char* textKey)
{
    control.setToolTip(localized(textKey));
    control.setAccessibleDescription(localized(textKey));
}
