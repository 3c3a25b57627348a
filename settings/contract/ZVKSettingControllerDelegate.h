#pragma once

#include <QString>
#include <QWidget>

#include <optional>
#include <string>

struct _FILEDATA;

/// What a settings page needs of the window that shows it: the loading sheet, which covers the window.
class SettingPageHost {
public:
    virtual ~SettingPageHost() = default;

    virtual void showLoading(const QString& title) = 0;
    virtual void hideLoading() = 0;
};

/// What the settings window asks of every page. All on the main thread.
class ZVKSettingControllerDelegate {
public:
    virtual ~ZVKSettingControllerDelegate() = default;

    /// The live record, which outlives the page's use of it; the page keeps the pointer and shows the record.
    /// Called again when the record was changed as a whole.
    virtual void setFileData(_FILEDATA* record) = 0;
    /// Copies the controls into the record, but only when the page's own validation passes.
    virtual void populate() = 0;
    /// A text for the user when the input is not valid; nothing when it is.
    virtual std::optional<QString> validateUserInput() = 0;
    virtual void setMainController(SettingPageHost* controller) = 0;
    /// Whether the user has changed anything on the page since it was shown.
    virtual bool isTouched() const { return false; }
    /// The page goes out of sight.
    virtual void onHide() { }
    /// Whether the page shows or reads a file of the card that is mounted there.
    virtual bool holds(const std::string&) const { return false; }
};

/// A page is the view itself.
class SettingPage : public QWidget, public ZVKSettingControllerDelegate {
public:
    using QWidget::QWidget;

    /// Whether the user has changed something since the record was shown, also what is not valid yet.
    bool isTouched() const override { return false; }
};
