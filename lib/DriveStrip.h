#pragma once

#include <QPixmap>
#include <QWidget>

#include <cstddef>
#include <vector>

/// A line of time with segments and marks, and a bar where one is. A click or a drag goes there. With the
/// focus, which Tab gives and no click, the arrow keys go by ten seconds, Home and End to the ends. All
/// places are fractions from 0.0 to 1.0. Main thread only.
class DriveStrip : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double position READ position WRITE setPosition NOTIFY moved)

public:
    enum class SegmentKind { always, motion, event };
    struct Segment {
        double start = 0;
        double end = 0;
        SegmentKind kind = SegmentKind::always;

        bool operator==(const Segment&) const = default;
    };
    enum class MarkKind { impact, braking };
    struct Mark {
        double place = 0;
        MarkKind kind = MarkKind::impact;

        bool operator==(const Mark&) const = default;
    };

    explicit DriveStrip(QWidget* parent = nullptr);

    /// Both rise. Without segments the strip shows nothing and takes no clicks.
    void setSegments(std::vector<Segment> segments, std::vector<Mark> marks);
    const std::vector<Segment>& segments() const { return parts; }
    const std::vector<Mark>& marks() const { return places; }
    /// Of the whole line, in seconds; 0 while it is not known.
    void setLength(double seconds) { lineLength = seconds; }
    double length() const { return lineLength; }
    static constexpr double keySeconds = 10;
    /// As the user does it.
    void goTo(double fraction);
    /// Silent, and ignored while the user drags.
    void setPosition(double fraction);
    double position() const { return here; }
    bool isHeld() const { return held; }

    QSize sizeHint() const override { return {200, 22}; }
    QSize minimumSizeHint() const override { return {60, 22}; }

signals:
    /// The user goes there.
    void moved(double fraction);
    /// The pointer goes over that place, at x of this widget, no button down.
    void hovered(double fraction, int x);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent*) override { held = false; }
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double fractionAt(double x) const;
    double xOf(double fraction) const;
    void drawLine(QPainter& painter) const;
    const QPixmap& line();

    std::vector<Segment> parts;
    std::vector<Mark> places;
    double here = 0;
    double lineLength = 0;
    bool held = false;
    /// Segments and marks as last drawn: they change with the drive and the size, not with the position.
    QPixmap drawn;
    double drawnBar = -1;
};
