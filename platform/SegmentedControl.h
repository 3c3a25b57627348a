#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <vector>

class QButtonGroup;
class QHBoxLayout;
class QToolButton;

namespace platform {

/// A row of joined segments of which one, or none, is selected. One stop in the tab order: arrow keys move
/// the selection, Home and End go to the ends.
class SegmentedControl : public QWidget {
    Q_OBJECT

public:
    explicit SegmentedControl(QWidget* parent = nullptr);
    ~SegmentedControl() override;

    int segmentCount() const;
    /// New segments have no label; the selection is taken away when its segment goes.
    void setSegmentCount(int count);
    QString label(int segment) const;
    void setLabel(int segment, const QString& text);
    /// 0 lets the segment take what its label needs.
    void setWidth(int segment, int width);

    /// -1 when nothing is selected.
    int selectedSegment() const { return selected; }
    /// Reports nothing. An index that is no segment leaves the control without a selection.
    void setSelectedSegment(qint64 segment);

signals:
    /// The user chose a segment; also when it was selected already.
    void segmentClicked(int segment);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int segment);

    std::vector<QToolButton*> buttons;
    QHBoxLayout* row;
    int selected = -1;
};

} // namespace platform
