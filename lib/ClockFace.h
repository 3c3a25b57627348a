#pragma once

#include <QTime>
#include <QWidget>

/// A round clock whose hour and minute hands the user drags; the second hand only shows. Dragging a hand over
/// the twelve goes on: the minute hand takes the hour along, the hour hand changes between morning and
/// afternoon, midnight included. Up and Right are a minute more, Down and Left one less, Page Up and Page
/// Down an hour. Its colours are the palette's: Window, Mid, Text, Highlight.
class ClockFace : public QWidget {
    Q_OBJECT

public:
    explicit ClockFace(QWidget* parent = nullptr);

    QTime time() const { return shown; }
    /// Reports nothing. An invalid time is ignored.
    void setTime(QTime time);
    /// The words before and after noon, in the middle of the face.
    void setDayHalves(const QString& morning, const QString& afternoon);

    QSize sizeHint() const override { return {200, 200}; }
    QSize minimumSizeHint() const override { return {140, 140}; }

signals:
    /// The user moved a hand.
    void timeChanged(QTime time);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Hand { none, hour, minute };

    double radius() const;
    Hand handAt(QPointF place) const;
    void dragTo(QPointF place);
    void moveBy(int minutes);
    void drawFace(QPainter& painter) const;
    void drawHand(QPainter& painter, double degrees, double length, double width, const QColor& color) const;

    QTime shown{0, 0};
    QString halves[2];
    Hand dragged = Hand::none;
};
