#include "lib/RangeSlider/SMDoubleSlider.h"

#include "lib/KeyPath.h"
#include "lib/RangeSlider/SMDoubleSliderAccess.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr size_t lo = 0;
constexpr size_t hi = 1;
const char* const bindingNames[] = {"objectLoValue", "objectHiValue"};

bool isAmbiguous(const QVariant& value)
{
    return !value.isValid() || value.typeId() == qMetaTypeId<ControllerMarker>();
}

} // namespace

SMDoubleSlider::SMDoubleSlider(QWidget* parent)
    : QWidget(parent),
      doubleCell(std::make_unique<SMDoubleSliderCell>())
{
    installDoubleSliderAccess();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    awakeFromNib();
}

SMDoubleSlider::~SMDoubleSlider() = default;

void SMDoubleSlider::awakeFromNib()
{
    doubleCell->setControlView(this);
    doubleCell->updateBoundControllerLoValue = [this](double value) { updateBoundControllerLoValue(value); };
    doubleCell->updateBoundControllerHiValue = [this](double value) { updateBoundControllerHiValue(value); };
    setKnobLeftImage(platform::imageNamed(QStringLiteral("eco_knob_left.png")));
    setKnobRightImage(platform::imageNamed(QStringLiteral("eco_knob_right.png")));
    setBarFillImage(platform::imageNamed(QStringLiteral("eco_barFill.png")));
}

QSize SMDoubleSlider::sizeHint() const
{
    return {200, 28};
}

QSize SMDoubleSlider::minimumSizeHint() const
{
    return {60, 28};
}

void SMDoubleSlider::setObjectLoValue(const QVariant& value)
{
    setEnabled(!isAmbiguous(value));
    doubleCell->setObjectLoValue(isAmbiguous(value) ? QVariant() : value);
}

void SMDoubleSlider::setObjectHiValue(const QVariant& value)
{
    setEnabled(!isAmbiguous(value));
    doubleCell->setObjectHiValue(isAmbiguous(value) ? QVariant() : value);
}

void SMDoubleSlider::bind(const QString& binding, QObject* object, const QString& keyPath)
{
    for (const size_t context : {lo, hi}) {
        if (binding == QLatin1String(bindingNames[context])) {
            bindings[context] = std::make_unique<KeyPathObserver>(
                object, keyPath, [this, context] { observeValueForKeyPath(context); });
            update();
        }
    }
}

void SMDoubleSlider::unbind(const QString& binding)
{
    for (const size_t context : {lo, hi}) {
        if (binding == QLatin1String(bindingNames[context]))
            bindings[context].reset();
    }
}

void SMDoubleSlider::unbindAll()
{
    for (const char* name : bindingNames)
        unbind(QLatin1String(name));
}

void SMDoubleSlider::observeValueForKeyPath(size_t context)
{
    const KeyPathObserver& binding = *bindings[context];
    const QVariant value = valueForKeyPath(binding.object(), binding.keyPath());
    context == hi ? setObjectHiValue(value) : setObjectLoValue(value);
    update();
}

void SMDoubleSlider::updateBoundController(size_t context, double value)
{
    if (bindings[context])
        setValueForKeyPath(bindings[context]->object(), bindings[context]->keyPath(), value);
    announceValue();
}

void SMDoubleSlider::updateBoundControllerLoValue(double value)
{
    updateBoundController(lo, value);
}

void SMDoubleSlider::updateBoundControllerHiValue(double value)
{
    updateBoundController(hi, value);
}

void SMDoubleSlider::setNilValueForKey(const QString& key)
{
    if (key == QLatin1String(bindingNames[hi]))
        setDoubleHiValue(0.0);
    else if (key == QLatin1String(bindingNames[lo]))
        setDoubleLoValue(0.0);
}

void SMDoubleSlider::insertTab()
{
    const bool leaves = !trackingLoKnob();
    setTrackingLoKnob(leaves);
    if (leaves)
        QWidget::focusNextPrevChild(true);
    announceValue();
    update();
}

void SMDoubleSlider::insertBacktab()
{
    if (trackingLoKnob())
        QWidget::focusNextPrevChild(false);
    else
        setTrackingLoKnob(true);
    announceValue();
    update();
}

bool SMDoubleSlider::focusNextPrevChild(bool next)
{
    next ? insertTab() : insertBacktab();
    return true;
}

bool SMDoubleSlider::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange && !parentWidget())
        unbindAll();
    return QWidget::event(event);
}

void SMDoubleSlider::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    doubleCell->setFrame(rect());
    doubleCell->draw(painter, true);
}

void SMDoubleSlider::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        doubleCell->setEnabled(isEnabled());
}

void SMDoubleSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    doubleCell->setFrame(rect());
    isTracking = doubleCell->startTrackingAt(event->position(), true);
}

void SMDoubleSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (isTracking)
        doubleCell->continueTracking(event->position(), true);
}

void SMDoubleSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isTracking)
        return;
    isTracking = false;
    doubleCell->stopTracking(event->position(), true);
}

void SMDoubleSlider::moveSelectedKnob(double value)
{
    doubleCell->setDoubleValue(value);
    if (trackingLoKnob())
        updateBoundControllerLoValue(doubleLoValue());
    else
        updateBoundControllerHiValue(doubleHiValue());
}

void SMDoubleSlider::keyPressEvent(QKeyEvent* event)
{
    const double step = altIncrementValue() > 0 ? altIncrementValue() : (maxValue() - minValue()) / 100;
    const double value = doubleCell->doubleValue();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return moveSelectedKnob(value - step);
    case Qt::Key_Right:
    case Qt::Key_Up:
        return moveSelectedKnob(value + step);
    case Qt::Key_PageDown:
        return moveSelectedKnob(value - 10 * step);
    case Qt::Key_PageUp:
        return moveSelectedKnob(value + 10 * step);
    case Qt::Key_Home:
        return moveSelectedKnob(minValue());
    case Qt::Key_End:
        return moveSelectedKnob(maxValue());
    default:
        QWidget::keyPressEvent(event);
    }
}

void SMDoubleSlider::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::TabFocusReason)
        setTrackingLoKnob(true);
    else if (event->reason() == Qt::BacktabFocusReason)
        setTrackingLoKnob(false);
    doubleCell->setShowsFocus(true);
    QWidget::focusInEvent(event);
}

void SMDoubleSlider::focusOutEvent(QFocusEvent* event)
{
    doubleCell->setShowsFocus(false);
    QWidget::focusOutEvent(event);
}

void SMDoubleSlider::announceValue()
{
    QAccessibleValueChangeEvent changed(this, doubleCell->doubleValue());
    QAccessible::updateAccessibility(&changed);
}
