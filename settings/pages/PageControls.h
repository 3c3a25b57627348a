#pragma once

#include "lib/SegmentedControl.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>

class QWidget;

/// "1(low)": a segment's label with the text of the key as a remark.
QString remarkedLabel(const QString& label, const char* remarkKey);
/// The five steps of a sensitivity, from insensitive to sensitive.
QStringList sensitivityLabels();
/// "Off" and "On", in the order of the flag's values.
QStringList offOnLabels();

/// Calls back whenever the user makes a choice with the control: segments, a matrix, a button, a combo box, a
/// text field. The choice that was shown already counts, too.
void onUserChange(QWidget& control, const std::function<void()>& changed);

/// The wheel over the control scrolls the page unless the control has the focus; the wheel does not give it
/// the focus.
void leaveWheelToPage(QWidget& control);

/// The row of a value table that holds the value; nothing when none does.
template <typename Value, std::size_t count, typename Wanted>
std::optional<std::size_t> positionIn(const std::array<Value, count>& table, const Wanted& wanted)
{
    const auto found = std::find(table.begin(), table.end(), wanted);
    if (found == table.end())
        return std::nullopt;
    return std::size_t(found - table.begin());
}

/// The field becomes first + step × selected segment; a control without a selection leaves it as it was.
template <typename Field>
void storeSegment(const SegmentedControl& control, Field& field, int first = 0, int step = 1)
{
    if (control.selectedSegment() >= 0)
        field = Field(first + step * control.selectedSegment());
}

/// The field becomes the table's value for the selected segment; without one it stays as it was.
template <typename Field, typename Value, std::size_t count>
void storeSegment(const SegmentedControl& control, Field& field, const std::array<Value, count>& table)
{
    const int segment = control.selectedSegment();
    if (segment >= 0 && std::size_t(segment) < count)
        field = Field(table[std::size_t(segment)]);
}
