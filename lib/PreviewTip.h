#pragma once

#include <QImage>
#include <QWidget>

/// A small framed picture with a line of text below it, at a place of a line of time. It lies in its window
/// and takes no clicks.
class PreviewTip final : public QWidget {
public:
    /// Room for a picture, in points. A picture of another shape stands in its middle.
    static constexpr QSize room{192, 108};

    explicit PreviewTip(QWidget* window);

    void setText(const QString& text);
    const QString& text() const { return line; }
    /// Null: it is awaited, the room stays empty.
    void setPicture(const QImage& picture);
    const QImage& picture() const { return shown; }
    /// There is no picture: only the text is shown.
    void setWithoutPicture();
    bool hasRoomForPicture() const { return hasRoom; }

    /// Above that part of the window, its middle at x, kept within the window; below it where there is no
    /// room above.
    static QRect placed(QSize tip, int x, const QRect& part, const QRect& window);
    void showAbove(const QRect& part, int x);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    QString line;
    QImage shown;
    bool hasRoom = true;
    QRect above;
    int middle = 0;
};
