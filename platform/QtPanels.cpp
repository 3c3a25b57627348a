#include "platform/QtPanels.h"

#include "platform/Dispatcher.h"
#include "platform/UserDefaults.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStandardPaths>

#include <filesystem>
#include <memory>
#include <utility>

using namespace std::chrono_literals;

namespace platform {

namespace {

constexpr const char* lastFolderKey = "LastPanelFolder";
/// A card that has not been found by then does not hold the panel up.
constexpr auto patience = 500ms;
constexpr int placesWidth = 140;

/// The home folder where there is no documents folder.
QString documentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QFileDialog& madePanel(QWidget& window, const std::string& title)
{
    // Without a folder it would look into the last one, on a card that may hang.
    auto* dialog = new QFileDialog(&window, QString::fromStdString(title), documentsFolder());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    // A desktop's own panel speaks the desktop's language, and may ask about replacing or hide hidden files
    // whatever it is told.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    // Names alone: the details would be cut off, and their words are the system's.
    dialog->setViewMode(QFileDialog::List);
    return *dialog;
}

/// Whether the folder can be listed; waits for a card that hangs.
bool isAtHand(const std::string& folder)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(folder, error);
    return !error;
}

/// Both cases of the ending, as cards carry either.
void setType(QFileDialog& dialog, const std::string& type)
{
    if (type.empty())
        return;
    const QString ending = QString::fromStdString(type);
    dialog.setNameFilter(QStringLiteral("*.%1 (*.%1 *.%2)").arg(ending, ending.toUpper()));
    dialog.setDefaultSuffix(ending);
}

QMessageBox& madeAlert(QWidget& window, const std::string& title, const std::string& message)
{
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setText(QString::fromStdString(title));
    box->setInformativeText(QString::fromStdString(message));
    // Good and bad news come the same way, so the picture says only who speaks.
    box->setIconPixmap(QApplication::windowIcon().pixmap(QSize(48, 48), window.devicePixelRatioF()));
    box->setStyleSheet(QStringLiteral("QLabel#qt_msgbox_informativelabel { min-width: 20em; }"));
    return *box;
}

} // namespace

void QtPanels::chooseFolder(QWidget& window, const std::string& title, Answer answer)
{
    QFileDialog& dialog = madePanel(window, title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    connectAnswer(dialog, std::move(answer));
    openWhereThingsAre(dialog);
}

void QtPanels::chooseFile(QWidget& window, const OpenPanel& panel, Answer answer)
{
    QFileDialog& dialog = madePanel(window, panel.title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    setType(dialog, panel.type);
    connectAnswer(dialog, std::move(answer));
    openWhereThingsAre(dialog);
}

void QtPanels::chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer)
{
    QFileDialog& dialog = madePanel(window, panel.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !panel.asksBeforeReplacing);
    dialog.setFilter(dialog.filter().setFlag(QDir::Hidden, !panel.hidesHiddenFiles));
    setType(dialog, panel.type);
    dialog.setProperty("proposedName", QFile::decodeName(panel.name.c_str()));
    connectAnswer(dialog, std::move(answer));
    if (panel.folder)
        start(dialog, panel.folder);
    else
        openWhereThingsAre(dialog);
}

/// In the documents where there is no folder or it cannot be shown.
void QtPanels::start(QFileDialog& dialog, const std::optional<std::string>& folder)
{
    // The proposed name is one of the folder that the panel is in.
    const QString name = dialog.property("proposedName").toString();
    const QString place = folder ? folders.shown(*folder) : QString();
    dialog.setDirectory(place.isEmpty() ? documentsFolder() : place);
    if (!name.isEmpty())
        dialog.selectFile(name);
    if (auto* places = dialog.findChild<QWidget*>(QStringLiteral("sidebar")))
        places->setMinimumWidth(placesWidth);
    dialog.open();
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        button->setIcon({});
}

void QtPanels::connectAnswer(QFileDialog& dialog, Answer answer)
{
    QObject::connect(
        &dialog, &QFileDialog::finished, &dialog, [this, &dialog, reply = std::move(answer)](int result) {
            const QStringList chosen = dialog.selectedFiles();
            if (result != QDialog::Accepted || chosen.isEmpty()) {
                reply(std::nullopt);
                return;
            }
            const std::string path = folders.real(chosen.first());
            const bool isFolder = dialog.fileMode() == QFileDialog::Directory;
            const std::string folder = isFolder ? path : std::filesystem::path(path).parent_path().native();
            // A link goes with the program, and the defaults keep texts only.
            if (folders.real(QFile::decodeName(folder.c_str())) == folder)
                defaults.setStringList(lastFolderKey, {folder});
            reply(path);
        });
}

/// The folders are looked at in the background: a card may hang.
void QtPanels::openWhereThingsAre(QFileDialog& dialog)
{
    // Whoever asks twice means one panel.
    if (waiting) {
        waiting->reject();
        waiting->deleteLater();
    }
    waiting = &dialog;
    const auto once = [this, panel = QPointer(&dialog)](const std::optional<std::string>& folder) {
        if (!panel || panel != waiting)
            return;
        waiting.clear();
        start(*panel, folder);
    };
    dispatcher.inBackground(
        [&queues = dispatcher, once, find = findCard, used = defaults.stringList(lastFolderKey)] {
            std::optional<std::string> folder = find();
            if (folder && !isAtHand(*folder))
                folder.reset();
            if (!folder && !used.empty() && isAtHand(used.front()))
                folder = used.front();
            queues.onMain([once, folder] { once(folder); });
        });
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
