#include "settings/pages/PageControls.h"

#include "lib/ButtonMatrix.h"
#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QRadioButton>

using platform::localized;

namespace {

class WheelFilter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return false;
        event->ignore(); // the event goes on to the parent widget
        return true;
    }
};

} // namespace

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

void onUserChange(QWidget& control, const std::function<void()>& changed)
{
    if (auto* segments = qobject_cast<SegmentedControl*>(&control)) {
        QObject::connect(segments, &SegmentedControl::segmentClicked, segments, changed);
    } else if (auto* matrix = qobject_cast<ButtonMatrix*>(&control)) {
        QObject::connect(matrix, &ButtonMatrix::cellClicked, matrix, changed);
    } else if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        QObject::connect(button, &QAbstractButton::clicked, button, changed);
        // Accessibility tools change it without a click event.
        QObject::connect(button, &QAbstractButton::toggled, button, changed);
    } else if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        QObject::connect(combo, &QComboBox::activated, combo, changed);
        QObject::connect(combo, &QComboBox::currentIndexChanged, combo, changed);
    } else if (auto* field = qobject_cast<QLineEdit*>(&control)) {
        QObject::connect(field, &QLineEdit::textChanged, field, changed);
    }
}

void leaveWheelToPage(QWidget& control)
{
    if (control.focusPolicy() == Qt::WheelFocus)
        control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(new WheelFilter(&control));
}
