#include "lib/TKVideoBackgroundImageView.h"

#include <QPainter>

TKVideoBackgroundImageView::TKVideoBackgroundImageView(QWidget* parent)
    : QWidget(parent)
{
}

void TKVideoBackgroundImageView::setBackgroundNineImageName(const QString& name)
{
    const auto piece = [&name](
                           const char* place) { return platform::imageNamed(name + QLatin1String(place)); };
    topLeftConerImage = piece("_top_left_corner");
    topRightConerImage = piece("_top_right_corner");
    bottomLeftConerImage = piece("_bottom_left_corner");
    bottomRightConerImage = piece("_bottom_right_corner");
    leftEdgeFillImage = piece("_left_edge_fill");
    rightEdgeFillImage = piece("_right_edge_fill");
    topEdgeFillImage = piece("_top_edge_fill");
    bottomEdgeFillImage = piece("_bottom_edge_fill");
    centerFillImage = piece("_center_fill");
    update();
}

void TKVideoBackgroundImageView::setLogoImage(const platform::Image& image)
{
    centerLogoImage = image;
    update();
}

void TKVideoBackgroundImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const auto [leftWidth, topHeight] = topLeftConerImage.size();
    const auto [rightWidth, bottomHeight] = bottomRightConerImage.size();
    const double innerWidth = width() - leftWidth - rightWidth;
    const double innerHeight = height() - topHeight - bottomHeight;
    const double right = width() - rightWidth;
    const double bottom = height() - bottomHeight;

    topLeftConerImage.draw(painter, {0, 0, leftWidth, topHeight});
    topRightConerImage.draw(painter, {right, 0, rightWidth, topHeight});
    bottomLeftConerImage.draw(painter, {0, bottom, leftWidth, bottomHeight});
    bottomRightConerImage.draw(painter, {right, bottom, rightWidth, bottomHeight});
    leftEdgeFillImage.draw(painter, {0, topHeight, leftWidth, innerHeight});
    rightEdgeFillImage.draw(painter, {right, topHeight, rightWidth, innerHeight});
    topEdgeFillImage.draw(painter, {leftWidth, 0, innerWidth, topHeight});
    bottomEdgeFillImage.draw(painter, {leftWidth, bottom, innerWidth, bottomHeight});
    centerFillImage.draw(painter, {leftWidth, topHeight, innerWidth, innerHeight});

    const auto [logoWidth, logoHeight] = centerLogoImage.size();
    centerLogoImage.draw(
        painter, {(width() - logoWidth) * 0.5, (height() - logoHeight) * 0.5, logoWidth, logoHeight});
}
