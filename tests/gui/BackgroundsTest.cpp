#include "lib/NinePartLayer.h"
#include "lib/TKColorBackgroundView.h"
#include "lib/TKImageButton.h"
#include "lib/TKImageButtonCell.h"
#include "lib/TKThreePartImageView.h"
#include "lib/TKVideoBackgroundImageView.h"

#include <QApplication>
#include <QEnterEvent>
#include <QPainter>
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

void enter(QWidget& widget)
{
    QEnterEvent event({1, 1}, {1, 1}, {1, 1});
    QApplication::sendEvent(&widget, &event);
}

void leave(QWidget& widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(&widget, &event);
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
    TKImageButton button;
    button.setImageName("icon_play_n");
    const auto shown = [&] { return button.shownImage().name(); };
    leave(button);
    EXPECT_EQ(button.numberOfCaptures(), 0) << "an exit without an enter";
    EXPECT_EQ(shown(), "icon_play_n");
    enter(button);
    EXPECT_EQ(shown(), "icon_play_f");
    button.setDown(true);
    EXPECT_EQ(shown(), "icon_play_p");
    button.setDown(false);
    button.setEnabled(false);
    EXPECT_EQ(shown(), "icon_play_n") << "disabled under the pointer";
    button.setEnabled(true);
    button.setImageName("icon_pause_n");
    EXPECT_EQ(shown(), "icon_pause_f") << "the picture changed under the pointer";
    leave(button);
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

TEST(ButtonCell, DrawsRaisedSunkenAndHeldBackgrounds)
{
    const auto painted = [](const std::function<void(QPainter&)>& draw) {
        QImage image(80, 24, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        draw(painter);
        return image;
    };
    TKImageButtonCell cell;
    const QRectF frame(0, 0, 80, 24);
    const QImage off = painted([&](QPainter& painter) { cell.drawBezelWithFrame(painter, frame); });
    cell.setState(true);
    const QImage on = painted([&](QPainter& painter) { cell.drawBezelWithFrame(painter, frame); });
    EXPECT_NE(on, off);
    EXPECT_EQ(painted([&](QPainter& painter) { cell.highlight(true, painter, frame); }), off);
    EXPECT_EQ(painted([&](QPainter& painter) { cell.highlight(false, painter, frame); }),
        painted([](QPainter&) {}));
}

TEST(ColorBackground, PaintsNothingWithoutAColour)
{
    TKColorBackgroundView view;
    EXPECT_EQ(drawn(view, {4, 4}).pixelColor(1, 1), Qt::magenta);
    view.setBackgroundColor(Qt::blue);
    EXPECT_EQ(drawn(view, {4, 4}).pixelColor(1, 1), Qt::blue);
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
