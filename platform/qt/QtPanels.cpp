#include "platform/qt/QtPanels.h"

#include "platform/Dispatcher.h"
#include "platform/UserDefaults.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <filesystem>
#include <functional>
#include <utility>

using namespace std::chrono_literals;

namespace platform {

namespace {

constexpr const char* lastFolderKey = "LastPanelFolder";
/// After this time the panel opens without a card.
constexpr auto patience = 500ms;

/// Whether the folder can be listed; waits for a card that hangs.
bool isAtHand(const std::string& folder)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(folder, error);
    return !error;
}

/// The defaults keep texts only.
bool isText(const std::string& path)
{
    return QFile::encodeName(QFile::decodeName(path.c_str())).toStdString() == path;
}

QMessageBox& madeAlert(QWidget& window, const std::string& title, const std::string& message)
{
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setText(QString::fromStdString(title));
    box->setInformativeText(QString::fromStdString(message));
    // Success and failure use the same alert, so it shows the program's icon.
    box->setIconPixmap(QApplication::windowIcon().pixmap(QSize(48, 48), window.devicePixelRatioF()));
    box->setStyleSheet(QStringLiteral("QLabel#qt_msgbox_informativelabel { min-width: 20em; }"));
    return *box;
}

} // namespace

void QtPanels::chooseFolder(QWidget& window, const std::string& title, Answer answer)
{
    openWhereThingsAre(window, {PanelRequest::Kind::folder, {title, {}, {}}}, std::move(answer));
}

void QtPanels::chooseFile(QWidget& window, const OpenPanel& panel, Answer answer)
{
    openWhereThingsAre(
        window, {PanelRequest::Kind::file, {panel.title, {}, {}, panel.type}}, std::move(answer));
}

void QtPanels::chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer)
{
    PanelRequest request{PanelRequest::Kind::save, panel};
    if (panel.folder)
        show(window, request, std::move(answer));
    else
        openWhereThingsAre(window, std::move(request), std::move(answer));
}

void QtPanels::show(QWidget& window, const PanelRequest& request, Answer answer)
{
    const bool isFolder = request.kind == PanelRequest::Kind::folder;
    showPanel(
        window, request, [this, isFolder, reply = std::move(answer)](const std::optional<std::string>& path) {
            if (path) {
                const std::string folder =
                    isFolder ? *path : std::filesystem::path(*path).parent_path().native();
                if (isText(folder))
                    defaults.setStringList(lastFolderKey, {folder});
            }
            reply(path);
        });
}

/// The folders are looked at in the background: a card may hang.
void QtPanels::openWhereThingsAre(QWidget& window, PanelRequest request, Answer answer)
{
    // A second request while the first one's panel opens replaces it.
    if (const auto before = std::exchange(waiting, std::nullopt); before && before->window)
        before->answer(std::nullopt);
    waiting = Waiting{&window, std::move(request), std::move(answer)};
    lookingAround.renew();
    const std::function<void(const std::optional<std::string>&)> once =
        lookingAround.guarded([this](const std::optional<std::string>& folder) {
            auto panel = std::exchange(waiting, std::nullopt);
            if (!panel)
                return;
            panel->request.panel.folder = folder;
            if (panel->window)
                show(*panel->window, panel->request, std::move(panel->answer));
        });
    const auto find = [findCard = findCard, used = defaults.stringList(lastFolderKey)] {
        std::optional<std::string> folder = findCard();
        if (folder && !isAtHand(*folder))
            folder.reset();
        if (!folder && !used.empty() && isAtHand(used.front()))
            folder = used.front();
        return folder;
    };
    dispatcher.inBackgroundThen(find, once);
    dispatcher.after(patience, [once] { once({}); });
}

void QtAlerts::alertSheet(
    QWidget& window, const std::string& title, const std::string& message, std::function<void()> dismissed)
{
    QMessageBox& box = madeAlert(window, title, message);
    box.setStandardButtons(QMessageBox::Ok);
    box.button(QMessageBox::Ok)->setIcon({});
    QObject::connect(&box, &QMessageBox::finished, &box, [reply = std::move(dismissed)](int) {
        if (reply)
            reply();
    });
    box.open();
}

std::function<void()> QtAlerts::ask(QWidget& window, const std::string& title, const std::string& message,
    const std::vector<std::string>& buttons, std::function<void(size_t)> answered)
{
    QMessageBox& box = madeAlert(window, title, message);
    for (const std::string& text : buttons) {
        const bool isLast = &text == &buttons.back();
        QPushButton* const button = box.addButton(QString::fromStdString(text).replace('&', "&&"),
            isLast ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        if (!isLast)
            continue;
        box.setDefaultButton(button);
        box.setEscapeButton(button);
    }
    const auto isTakenAway = std::make_shared<bool>(false);
    QObject::connect(
        &box, &QMessageBox::finished, &box, [&box, isTakenAway, reply = std::move(answered)](int) {
            const auto all = box.buttons();
            // Escape and the window's own button press no other.
            const qsizetype pressed =
                all.indexOf(box.clickedButton() ? box.clickedButton() : box.escapeButton());
            if (reply && !*isTakenAway)
                reply(static_cast<size_t>(pressed));
        });
    box.open();
    return [isTakenAway, sheet = QPointer(&box)] {
        *isTakenAway = true;
        if (sheet)
            sheet->close();
    };
}

} // namespace platform
