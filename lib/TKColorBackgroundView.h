#pragma once

#include <QColor>
#include <QWidget>

#include <optional>

/// A view filled with one colour, or with nothing.
/// Part of the widget library; not used by the program's own windows.
class TKColorBackgroundView : public QWidget {
    Q_OBJECT

public:
    explicit TKColorBackgroundView(QWidget* parent = nullptr);

    void setBackgroundColor(std::optional<QColor> color);
    const std::optional<QColor>& backgroundColor() const { return bgcolor; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<QColor> bgcolor;
};
