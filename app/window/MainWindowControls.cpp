#include "app/window/MainWindowControls.h"

#include "app/window/CustomWindow.h"
#include "app/window/Watch.h"
#include "lib/TKImageButton.h"
#include "platform/Texts.h"

#include <QAbstractItemView>
#include <QKeySequence>
#include <QListView>
#include <QMenu>
#include <QSlider>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

int combined(const QKeyEvent& event, Qt::KeyboardModifiers without)
{
    // The plus keys of the number pad and of the digits' row count as one key.
    const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | without);
    return QKeyCombination(modifiers, Qt::Key(event.key())).toCombined();
}

bool isOneOf(const QKeyEvent& event, std::initializer_list<Qt::Key> keys)
{
    return std::ranges::find(keys, event.key()) != keys.end();
}

QString keyText(int key)
{
    return QKeySequence(key).toString(QKeySequence::NativeText);
}

/// A row's choice and what is under way have places of their own.
bool isForMenu(const Command& command)
{
    return command.buttons.empty() && !command.keys.empty() && command.keys.front() != Qt::Key_Return
        && command.keys.front() != Qt::Key_Escape;
}

QString withKey(const QString& text, int key)
{
    return QStringLiteral("%1 (%2)").arg(text, keyText(key));
}

} // namespace

MainWindowControls::MainWindowControls(
    CustomWindow& controlled, const std::vector<QAbstractItemView*>& lists, std::vector<Command> table)
    : window(controlled),
      commands(std::move(table))
{
    for (const Command& command : commands) {
        for (const char* name : command.buttons) {
            auto* button = window.findChild<TKImageButton*>(QLatin1String(name));
            describe(*button, command.textKey);
            QObject::connect(button, &TKImageButton::clicked, &window, command.run);
        }
    }
    QObject::connect(&window, &CustomWindow::keyPressed, &window, [this](QKeyEvent* event) {
        if (pressKey(*event))
            event->accept();
    });
    window.setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(&window, &QWidget::customContextMenuRequested, &window,
        [this](const QPoint& place) { showMenu(window.mapToGlobal(place)); });
    for (QAbstractItemView* list : lists) {
        // In a table they would move within the row.
        const bool keepsEnds = qobject_cast<QListView*>(list);
        (new Watch(list))->keyPressed = [this, keepsEnds](QKeyEvent& event) {
            const bool isOwn = isOneOf(event, {Qt::Key_Up, Qt::Key_Down})
                || (keepsEnds && isOneOf(event, {Qt::Key_Home, Qt::Key_End}));
            return !isOwn && pressKey(event);
        };
    }
    for (QWidget* control : window.findChildren<QWidget*>())
        if (qobject_cast<TKImageButton*>(control) || qobject_cast<QSlider*>(control))
            (new Watch(control))->keyPressed = [this](QKeyEvent& event) {
                return !isOneOf(event, {Qt::Key_Space, Qt::Key_Home, Qt::Key_End}) && pressKey(event);
            };
}

void MainWindowControls::describe(QWidget& button, const char* textKey) const
{
    const QString text = platform::localized(textKey);
    button.setAccessibleName(text);
    const auto command = std::ranges::find_if(commands, [&](const Command& candidate) {
        return std::ranges::any_of(
            candidate.buttons, [&](const char* name) { return button.objectName() == QLatin1String(name); });
    });
    const bool hasKey = command != commands.end() && !command->keys.empty();
    button.setToolTip(hasKey ? withKey(text, command->keys.front()) : text);
}

void MainWindowControls::setPossible(
    QWidget& button, const char* textKey, bool isPossible, const char* whyNotKey) const
{
    if (button.isEnabledTo(&window) == isPossible)
        return;
    const QString reason = isPossible ? QString() : platform::localized(whyNotKey);
    button.setEnabled(isPossible);
    describe(button, textKey);
    button.setAccessibleDescription(reason);
    if (!isPossible)
        button.setToolTip(button.toolTip() + u'\n' + reason);
}

void MainWindowControls::showMenu(const QPoint& place) const
{
    auto* menu = new QMenu(&window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Command& command : commands) {
        if (isForMenu(command))
            menu->addAction(
                platform::localized(command.textKey) + u'\t' + keyText(command.keys.front()), command.run);
    }
    menu->popup(place);
}

bool MainWindowControls::pressKey(const QKeyEvent& event) const
{
    const auto commandOf = [&](int key) {
        return std::ranges::find_if(commands, [key](const Command& candidate) {
            return std::ranges::find(candidate.keys, key) != candidate.keys.end();
        });
    };
    auto command = commandOf(combined(event, {}));
    if (command == commands.end())
        command = commandOf(combined(event, Qt::ShiftModifier));
    if (command == commands.end() || (command->takesKeys && !command->takesKeys()))
        return false;
    command->run();
    return true;
}
