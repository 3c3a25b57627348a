#pragma once

#include <QFrame>

#include <functional>

class QLabel;
class QPushButton;

/// One line of plain text across a window, with a button for what can be done about it.
class NoticeBar final : public QFrame {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// The button is hidden when its text is empty.
    void setNotice(const QString& text, const QString& buttonText = {}, std::function<void()> work = {});

private:
    QLabel* label;
    QPushButton* button;
    std::function<void()> action;
};
