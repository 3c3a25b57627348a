#pragma once

#include <QLineEdit>

/// A field for an impact threshold in g, shown as "0.00". Typing is limited to one digit before the point and
/// two after it; any other text can still be pasted and is left for the page to judge.
class ThresholdField : public QLineEdit {
    Q_OBJECT

public:
    explicit ThresholdField(QWidget* parent = nullptr);

    void setHundredths(int32_t value);
    /// The number that the text begins with, in hundredths, truncated toward zero; 0 without one.
    int32_t hundredths() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showTwoDigits();
};
