#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QAbstractButton;
class QHBoxLayout;
class QPainter;

/// A row of joined segments of which one, or none, is selected. One stop in the tab order: arrow keys move
/// the selection, Home and End go to the ends. It never becomes smaller than its labels need, and takes its
/// colours from the palette: Button, ButtonText, Highlight, HighlightedText, Mid.
class SegmentedControl : public QWidget {
    Q_OBJECT

public:
    explicit SegmentedControl(QWidget* parent = nullptr);
    ~SegmentedControl() override;

    int segmentCount() const;
    /// New segments have no label; the selection is taken away when its segment goes.
    void setSegmentCount(int count);
    void setLabel(int segment, const QString& text);
    /// 0 lets the segment take what its label needs.
    void setWidth(int segment, int width);
    /// The segment as accessibility tools see it: a radio button. Null when there is no such segment.
    QAbstractButton* segment(int index) const;

    /// -1 when nothing is selected.
    int selectedSegment() const { return selected; }
    /// Reports nothing. An index that is no segment leaves the control without a selection.
    void setSelectedSegment(qint64 segment);

signals:
    /// The user chose a segment; also when it was selected already.
    void segmentClicked(int segment);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void choose(int segment);
    void drawSegment(QPainter& painter, int segment, const QRectF& body) const;

    std::vector<QAbstractButton*> buttons;
    QHBoxLayout* row;
    int selected = -1;
};
