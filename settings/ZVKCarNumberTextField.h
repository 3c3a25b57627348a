#pragma once

#include <QLineEdit>

/// The field for a vehicle's plate number. When the user has finished editing, only what the camera accepts
/// is left: the first 8 ASCII letters and digits.
class ZVKCarNumberTextField : public QLineEdit {
    Q_OBJECT

public:
    explicit ZVKCarNumberTextField(QWidget* parent = nullptr);

    void textDidEndEditing();
    /// Shows the number and forgets that the user typed something.
    void setCarNumber(const QString& number);
    /// Whether the user changed the text since setCarNumber.
    bool isEdited() const { return edited; }

private:
    bool edited = false;
};
