#include "lib/TKImageButton.h"
#include "lib/TKVideoBackgroundImageView.h"

#include <QApplication>
#include <QMouseEvent>
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

TEST(ImageButton, ShowsThePictureOfItsState)
{
    QWidget window;
    TKImageButton button(&window);
    EXPECT_TRUE(button.buttonImageNameWithSuffix("_f").isNull()) << "a button without a picture";
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
    view.setBackgroundNineImageName("v1");
    const QImage framed = drawn(view, {640, 480});
    for (const QPoint corner :
        {QPoint(320, 240), QPoint(320, 2), QPoint(2, 240), QPoint(637, 240), QPoint(320, 477)})
        EXPECT_NE(framed.pixelColor(corner), Qt::magenta);
    view.setLogoImage(platform::imageNamed("v1_front_logo"));
    EXPECT_NE(drawn(view, {640, 480}).copy(270, 210, 100, 60), framed.copy(270, 210, 100, 60));
}

} // namespace
