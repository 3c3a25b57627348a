#pragma once

#include <QLineEdit>

/// The field for a vehicle's plate number. When the user has finished editing, only what the camera accepts
/// is left: the first 8 ASCII letters and digits. What is not accepted is reported as soon as it is there.
class ZVKCarNumberTextField : public QLineEdit {
    Q_OBJECT

public:
    explicit ZVKCarNumberTextField(QWidget* parent = nullptr);

    void textDidEndEditing();
    /// Shows the number; the field counts as unedited then.
    void setCarNumber(const QString& number);
    /// The part of the text that the camera accepts.
    QString carNumber() const;

signals:
    /// The user typed or pasted something: whether the text has what the camera does not accept.
    void refused(bool something);

private:
    bool edited = false;
};
