#pragma once

#include "lib/ThreePart.h"

#include <QWidget>

/// A bar painted with three pictures across its bounds.
class TKThreePartImageView : public QWidget {
    Q_OBJECT

public:
    explicit TKThreePartImageView(QWidget* parent = nullptr);

    /// Takes effect with the next redraw; asks for none.
    void setImagesLeft(
        const platform::Image& left_img, const platform::Image& middle_img, const platform::Image& right_img);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ThreePart images;
};
