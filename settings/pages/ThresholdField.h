#pragma once

#include <QLineEdit>

/// A field for an impact threshold in g, shown as "0.00". Typing is limited to one digit before the point and
/// two after it; any other text can still be pasted and is left for the page to judge. A value that the text
/// shows rounded is kept exactly until the text is changed.
class ThresholdField : public QLineEdit {
    Q_OBJECT

public:
    explicit ThresholdField(QWidget* parent = nullptr);

    void setHundredths(int32_t value);
    /// Whether the text differs from what setHundredths showed.
    bool isChanged() const { return text() != shownText; }
    /// What was set; of a changed text the number that it begins with, in hundredths, truncated toward zero,
    /// 0 without one.
    int32_t hundredths() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showTwoDigits();

    QString shownText;
    int32_t shownValue = 0;
};
