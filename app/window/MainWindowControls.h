#pragma once

#include <functional>
#include <vector>

class CustomWindow;
class QAbstractItemView;
class QKeyEvent;
class QPoint;
class QWidget;

/// One thing that the user can do, with its keys (key and modifiers in one number; the first stands in the
/// tooltips) and its buttons (by name). Shift counts where a command has the key with it.
struct Command {
    const char* textKey;
    std::function<void()> run;
    std::vector<int> keys;
    std::vector<const char*> buttons;
    /// While this returns false the keys are not taken; none: always taken.
    std::function<bool()> takesKeys = {};
};

/// The commands of the main window on its buttons and keys. Keys work wherever the focus is; a button keeps
/// Space, a slider Home and End, a list what moves its selection. What has no button stands in the window's
/// context menu. Lives as long as the window.
class MainWindowControls {
public:
    MainWindowControls(
        CustomWindow& window, const std::vector<QAbstractItemView*>& lists, std::vector<Command> commands);

    /// Tooltip and accessible name of a button; its command's key stands in the tooltip.
    void describe(QWidget& button, const char* textKey) const;
    /// Disables the button of what cannot be done now; its tooltip says why. Does nothing without a change.
    void setPossible(QWidget& button, const char* textKey, bool isPossible, const char* whyNotKey) const;

private:
    bool pressKey(const QKeyEvent& event) const;
    void showMenu(const QPoint& place) const;

    CustomWindow& window;
    std::vector<Command> commands;
};
