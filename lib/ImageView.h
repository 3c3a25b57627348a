#pragma once

#include "platform/Images.h"

#include <QWidget>

/// Shows one picture at its own size in the middle of the view.
class ImageView : public QWidget {
    Q_OBJECT

public:
    explicit ImageView(QWidget* parent = nullptr);

    void setImage(const platform::Image& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    platform::Image image;
};
