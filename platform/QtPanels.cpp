#include "platform/QtPanels.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include <utility>

namespace platform {

namespace {

/// The home folder where there is no documents folder.
QString documentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QFileDialog& madePanel(QWidget& window, const std::string& title)
{
    auto* dialog = new QFileDialog(&window, QString::fromStdString(title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    return *dialog;
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

void openPanel(QFileDialog& dialog, Panels::Answer answer)
{
    QObject::connect(
        &dialog, &QFileDialog::finished, &dialog, [&dialog, reply = std::move(answer)](int result) {
            const QStringList chosen = dialog.selectedFiles();
            if (result == QDialog::Accepted && !chosen.isEmpty())
                reply(QFile::encodeName(chosen.first()).toStdString());
            else
                reply(std::nullopt);
        });
    dialog.open();
}

} // namespace

void QtPanels::chooseFolder(QWidget& window, const std::string& title, Answer answer)
{
    QFileDialog& dialog = madePanel(window, title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    openPanel(dialog, std::move(answer));
}

void QtPanels::chooseFile(QWidget& window, const OpenPanel& panel, Answer answer)
{
    QFileDialog& dialog = madePanel(window, panel.title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    setType(dialog, panel.type);
    openPanel(dialog, std::move(answer));
}

void QtPanels::chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer)
{
    QFileDialog& dialog = madePanel(window, panel.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // A desktop's own dialog may ask about replacing, or hide hidden files, whatever it is told.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !panel.asksBeforeReplacing);
    dialog.setFilter(dialog.filter().setFlag(QDir::Hidden, !panel.hidesHiddenFiles));
    dialog.setDirectory(panel.folder ? QFile::decodeName(panel.folder->c_str()) : documentsFolder());
    setType(dialog, panel.type);
    dialog.selectFile(QFile::decodeName(panel.name.c_str()));
    openPanel(dialog, std::move(answer));
}

void QtAlerts::alertSheet(
    QWidget& window, const std::string& title, const std::string& message, std::function<void()> dismissed)
{
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setText(QString::fromStdString(title));
    box->setInformativeText(QString::fromStdString(message));
    box->setStandardButtons(QMessageBox::Ok);
    box->button(QMessageBox::Ok)->setIcon({});
    // Good and bad news come the same way, so the picture says only who speaks.
    box->setIconPixmap(QApplication::windowIcon().pixmap(QSize(48, 48), window.devicePixelRatioF()));
    box->setStyleSheet(QStringLiteral("QLabel#qt_msgbox_informativelabel { min-width: 20em; }"));
    QObject::connect(box, &QMessageBox::finished, box, [reply = std::move(dismissed)](int) {
        if (reply)
            reply();
    });
    box->open();
}

} // namespace platform
