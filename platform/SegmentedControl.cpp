#include "platform/SegmentedControl.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace platform {

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
        auto* button = new QToolButton(this);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        const int segment = segmentCount();
        connect(button, &QToolButton::clicked, this, [this, segment] { choose(segment); });
        row->addWidget(button);
        buttons.push_back(button);
    }
    setSelectedSegment(selected);
}

QString SegmentedControl::label(int segment) const
{
    return segment >= 0 && segment < segmentCount() ? buttons[size_t(segment)]->text() : QString();
}

void SegmentedControl::setLabel(int segment, const QString& text)
{
    if (segment >= 0 && segment < segmentCount())
        buttons[size_t(segment)]->setText(text);
}

void SegmentedControl::setWidth(int segment, int width)
{
    if (segment < 0 || segment >= segmentCount())
        return;
    QToolButton& button = *buttons[size_t(segment)];
    button.setMinimumWidth(std::max(width, 0));
    button.setMaximumWidth(width > 0 ? width : QWIDGETSIZE_MAX);
}

void SegmentedControl::setSelectedSegment(qint64 segment)
{
    selected = segment >= 0 && segment < segmentCount() ? static_cast<int>(segment) : -1;
    for (int i = 0; i < segmentCount(); ++i)
        buttons[size_t(i)]->setChecked(i == selected);
}

void SegmentedControl::choose(int segment)
{
    setSelectedSegment(segment);
    emit segmentClicked(segment);
}

void SegmentedControl::keyPressEvent(QKeyEvent* event)
{
    int wanted = selected;
    switch (event->key()) {
    case Qt::Key_Left:
        wanted = selected - 1;
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
    if (wanted != selected && wanted >= 0 && wanted < segmentCount())
        choose(wanted);
}

} // namespace platform
