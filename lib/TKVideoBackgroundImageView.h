#pragma once

#include "platform/Images.h"

#include <QWidget>

/// A nine-part frame over the whole view (corners at their own size, edges and centre stretched) with a
/// logo at its own size in the middle.
class TKVideoBackgroundImageView : public QWidget {
    Q_OBJECT

public:
    explicit TKVideoBackgroundImageView(QWidget* parent = nullptr);

    /// Loads "NAME_top_left_corner" and its eight siblings. A missing picture leaves its piece empty.
    void setBackgroundNineImageName(const QString& name);
    void setLogoImage(const platform::Image& image);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    platform::Image topLeftConerImage;
    platform::Image topRightConerImage;
    platform::Image bottomLeftConerImage;
    platform::Image bottomRightConerImage;
    platform::Image leftEdgeFillImage;
    platform::Image rightEdgeFillImage;
    platform::Image topEdgeFillImage;
    platform::Image bottomEdgeFillImage;
    platform::Image centerFillImage;
    platform::Image centerLogoImage;
};
