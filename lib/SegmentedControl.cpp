#include "lib/SegmentedControl.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>

namespace {

constexpr qreal ringWidth = 2;
constexpr qreal radius = 6;
constexpr int padding = 13; // left and right of a label
constexpr int comfortableWidth = 56; // of a segment with a short label

/// Handles the mouse and represents the segment in the accessibility tree; the control draws it.
class Segment : public QRadioButton {
public:
    explicit Segment(QWidget* parent)
        : QRadioButton(parent)
    {
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override
    {
        const QSize least = minimumSizeHint();
        return {std::max(least.width(), comfortableWidth), least.height()};
    }
    QSize minimumSizeHint() const override
    {
        parentWidget()->ensurePolished();
        const QFontMetrics metrics(parentWidget()->font());
        return {metrics.horizontalAdvance(text()) + 2 * padding, metrics.height() + 16};
    }

protected:
    void paintEvent(QPaintEvent*) override { }
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
};

} // namespace

SegmentedControl::SegmentedControl(QWidget* parent)
    : QWidget(parent),
      row(new QHBoxLayout(this))
{
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

SegmentedControl::~SegmentedControl() = default;

int SegmentedControl::segmentCount() const
{
    return static_cast<int>(buttons.size());
}

void SegmentedControl::setSegmentCount(int count)
{
    while (segmentCount() > std::max(count, 0)) {
        delete buttons.back();
        buttons.pop_back();
    }
    while (segmentCount() < count) {
        auto* button = new Segment(this);
        button->setCheckable(true);
        const int index = segmentCount();
        connect(button, &QAbstractButton::clicked, this, [this, index] { choose(index); });
        row->addWidget(button);
        buttons.push_back(button);
    }
    setSelectedSegment(selected);
}

QAbstractButton* SegmentedControl::segment(int index) const
{
    return index >= 0 && index < segmentCount() ? buttons[size_t(index)] : nullptr;
}

void SegmentedControl::setLabel(int index, const QString& text)
{
    if (QAbstractButton* button = segment(index)) {
        button->setText(text);
        button->setAccessibleName(text);
        button->updateGeometry();
    }
}

void SegmentedControl::setWidth(int index, int width)
{
    QAbstractButton* button = segment(index);
    if (!button)
        return;
    button->setMinimumWidth(std::max(width, 0));
    button->setMaximumWidth(width > 0 ? width : QWIDGETSIZE_MAX);
}

void SegmentedControl::setSelectedSegment(qint64 index)
{
    selected = index >= 0 && index < segmentCount() ? static_cast<int>(index) : -1;
    for (QAbstractButton* button : buttons)
        button->setAutoExclusive(false); // exclusive buttons cannot all be unchecked
    for (int i = 0; i < segmentCount(); ++i)
        buttons[size_t(i)]->setChecked(i == selected);
    for (QAbstractButton* button : buttons) {
        button->setAutoExclusive(true);
        button->setFocusPolicy(Qt::NoFocus);
    }
    update();
}

void SegmentedControl::choose(int index)
{
    setSelectedSegment(index);
    emit segmentClicked(index);
}

void SegmentedControl::keyPressEvent(QKeyEvent* event)
{
    int wanted = selected;
    switch (event->key()) {
    case Qt::Key_Left:
        // Without a selection both arrows start at the near end.
        wanted = selected < 0 ? segmentCount() - 1 : selected - 1;
        break;
    case Qt::Key_Right:
        wanted = selected + 1;
        break;
    case Qt::Key_Home:
        wanted = 0;
        break;
    case Qt::Key_End:
        wanted = segmentCount() - 1;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (wanted == selected || wanted < 0 || wanted >= segmentCount())
        return;
    choose(wanted);
    // A receiver of the choice may have changed the segments.
    if (QAbstractButton* button = segment(wanted)) {
        QAccessibleEvent moved(button, QAccessible::Focus);
        QAccessible::updateAccessibility(&moved);
    }
}

void SegmentedControl::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void SegmentedControl::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void SegmentedControl::paintEvent(QPaintEvent*)
{
    if (buttons.empty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = QRectF(rect()).adjusted(3, 3, -3, -3);
    QPainterPath outline;
    outline.addRoundedRect(body, radius, radius);
    painter.save();
    painter.setClipPath(outline);
    for (int i = 0; i < segmentCount(); ++i)
        drawSegment(painter, i, body);
    painter.restore();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.drawRoundedRect(body.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), ringWidth));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius + 2, radius + 2);
    }
}

void SegmentedControl::drawSegment(QPainter& painter, int index, const QRectF& body) const
{
    const QAbstractButton& button = *buttons[size_t(index)];
    const QRectF place = QRectF(button.geometry()).intersected(body);
    const bool chosen = index == selected;
    const bool hot = isEnabled() && (button.isDown() || button.underMouse());
    QColor ground = palette().color(chosen ? QPalette::Highlight : QPalette::Button);
    if (hot)
        ground = chosen ? ground.lighter(106) : ground.darker(button.isDown() ? 125 : 112);
    painter.fillRect(place, ground);
    const bool joined = index > 0 && !chosen && index - 1 != selected;
    if (joined)
        painter.fillRect(
            QRectF(place.left(), place.top(), 1, place.height()), palette().color(QPalette::Mid));
    painter.setPen(palette().color(chosen ? QPalette::HighlightedText : QPalette::ButtonText));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, button.text());
}
