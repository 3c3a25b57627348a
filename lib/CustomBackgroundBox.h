#pragma once

#include <QWidget>

/// A box painted in the panel colour (red 0.416, green 0.373, blue 0.357), or clear.
class CustomBackgroundBox : public QWidget {
    Q_OBJECT

public:
    explicit CustomBackgroundBox(QWidget* parent = nullptr);

    static QColor panelColor();

protected:
    void paintEvent(QPaintEvent* event) override;
};
