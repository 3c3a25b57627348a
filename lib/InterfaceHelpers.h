#pragma once

#include <QString>
#include <QStringList>

class ButtonMatrix;
class QComboBox;
class QWidget;
class SegmentedControl;

/// As many segments as labels, segment i labelled with label i.
void setSegmentLabels(SegmentedControl& control, const QStringList& labels);
/// The same, each segment of the given width; the control becomes width times the number of labels wide.
/// Part of the widget library; not used by the program's own windows.
void setSegmentLabelsWithWidth(SegmentedControl& control, int width, const QStringList& labels);
/// Replaces all items by these, in order.
void setComboItems(QComboBox& combo, const QStringList& items);
/// Cell i gets title i, for every title given.
void setCellTitles(ButtonMatrix& matrix, const QStringList& titles);
/// Centres the window horizontally over the reference window; size and vertical position stay. Part of the
/// widget library; not used by the program's own windows.
void centerWindowHorizontally(QWidget& window, const QWidget& reference);
/// An explanation for a word that a driver may not know: as tool tip and for accessibility tools.
void explain(QWidget& control, const char* textKey);
/// A format with "%@" in it, filled with the text.
QString filled(const QString& format, const QString& text);
