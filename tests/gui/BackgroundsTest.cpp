#include "lib/NinePartLayer.h"
#include "lib/TKImageButton.h"
#include "lib/TKThreePartImageView.h"
#include "lib/TKVideoBackgroundImageView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

QImage drawn(QWidget& widget, QSize size)
{
    widget.resize(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

void movePointer(QWidget& window, QPointF to)
{
    QMouseEvent event(QEvent::MouseMove, to, to, Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(window.windowHandle(), &event);
}

TEST(ImageButton, FindsItsPicturesByTheNamingRule)
{
    TKImageButton button;
    EXPECT_TRUE(button.buttonImageNameWithSuffix("_f").isNull()) << "a button without a picture";
    button.setImageName("icon_pause_n");
    EXPECT_EQ(button.buttonImageNameWithSuffix("_f").name(), "icon_pause_f");
    EXPECT_EQ(button.pressedImage().name(), "icon_pause_p");
    EXPECT_TRUE(button.buttonImageNameWithSuffix("_x").isNull());
    button.setImageName("no such picture");
    EXPECT_TRUE(button.shownImage().isNull());
}

TEST(ImageButton, ShowsThePictureOfItsState)
{
    QWidget window;
    TKImageButton button(&window);
    button.setGeometry(30, 30, 40, 40);
    button.setImageName("icon_play_n");
    window.show();
    const auto shown = [&] { return button.shownImage().name(); };
    button.setNumberOfCaptures(-1);
    EXPECT_EQ(button.numberOfCaptures(), 0) << "an exit without an enter";
    for (const auto& [x, picture] :
        {std::pair{25, "icon_play_n"}, {26, "icon_play_f"}, {73, "icon_play_f"}, {74, "icon_play_n"}}) {
        movePointer(window, {double(x), 50});
        EXPECT_EQ(shown(), picture) << "four points around the button belong to it; x " << x;
    }
    movePointer(window, {50, 50});
    EXPECT_EQ(shown(), "icon_play_f");
    button.setDown(true);
    EXPECT_EQ(shown(), "icon_play_p");
    button.setDown(false);
    button.setEnabled(false);
    EXPECT_EQ(shown(), "icon_play_n") << "disabled under the pointer";
    button.setEnabled(true);
    button.setImageName("icon_pause_n");
    EXPECT_EQ(shown(), "icon_pause_f") << "the picture changed under the pointer";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(window.windowHandle(), &leave);
    EXPECT_EQ(shown(), "icon_pause_n");
}

TEST(NinePartFrame, CentresTheLogoAndCoversItsBounds)
{
    TKVideoBackgroundImageView view;
    const QImage bare = drawn(view, {640, 480});
    EXPECT_EQ(bare.pixelColor(5, 5), Qt::magenta) << "missing pictures leave their pieces empty";
    view.setBackgroundNineImageName("v1");
    const QImage framed = drawn(view, {640, 480});
    for (const QPoint corner :
        {QPoint(320, 240), QPoint(320, 2), QPoint(2, 240), QPoint(637, 240), QPoint(320, 477)})
        EXPECT_NE(framed.pixelColor(corner), Qt::magenta);
    const auto logo = platform::imageNamed("v1_front_logo");
    view.setLogoImage(logo);
    const QImage with = drawn(view, {640, 480});
    QRect changed;
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 640; ++x)
            if (with.pixel(x, y) != framed.pixel(x, y))
                changed |= QRect(x, y, 1, 1);
    const auto [width, height] = logo.size();
    EXPECT_TRUE(QRectF((640 - width) / 2, (480 - height) / 2, width, height).contains(changed));
    EXPECT_GT(changed.width(), width / 2);
}

TEST(ThreePartBar, ReachesFromEdgeToEdge)
{
    TKThreePartImageView bar;
    const auto piece = platform::imageNamed("bottom-background");
    bar.setImagesLeft(piece, piece, piece);
    const QImage image = drawn(bar, {300, 36});
    for (const int x : {0, 3, 4, 150, 296, 299})
        EXPECT_NE(image.pixelColor(x, 18), Qt::magenta) << x;
}

TEST(NinePartLayerPieces, FillTheFrameWithCornersAtTheirOwnSize)
{
    QImage source(10, 9, QImage::Format_RGB32);
    source.fill(Qt::blue);
    source.setPixelColor(9, 8, Qt::red);
    const auto layer = NinePartLayer::layerWithImage(source);
    EXPECT_DOUBLE_EQ(layer->blockSize().height(), 3);
    int width = 0;
    for (const QImage& piece : layer->images()[0])
        width += piece.width();
    EXPECT_EQ(width, 10) << "no column of the picture is lost";
    layer->setFrame({5, 5, 100, 50});
    EXPECT_EQ(layer->layers()[0][0], QRectF(5, 5, 4, 3));
    EXPECT_EQ(layer->layers()[1][1], QRectF(9, 8, 92, 44));
    EXPECT_EQ(layer->layers()[2][2], QRectF(101, 52, 4, 3));
    QImage target(110, 60, QImage::Format_RGB32);
    target.fill(Qt::magenta);
    QPainter painter(&target);
    layer->draw(painter);
    painter.end();
    EXPECT_EQ(target.pixelColor(104, 54), Qt::red);
    EXPECT_EQ(target.pixelColor(50, 30), Qt::blue);
    EXPECT_TRUE(NinePartLayer::imageFromImage(source, {8, 8, 5, 5}).isNull());
}

} // namespace
