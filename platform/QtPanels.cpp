#include "platform/QtPanels.h"

#include <QFileDialog>
#include <QMessageBox>

#include <utility>

namespace platform {

void QtPanels::chooseFolder(QWidget& window, const std::string& title, Answer answer)
{
    auto* dialog = new QFileDialog(&window, QString::fromStdString(title));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, reply = std::move(answer)](int result) {
        const QStringList chosen = dialog->selectedFiles();
        if (result == QDialog::Accepted && !chosen.isEmpty())
            reply(QFile::encodeName(chosen.first()).toStdString());
        else
            reply(std::nullopt);
    });
    dialog->open();
}

void QtAlerts::alertSheet(
    QWidget& window, const std::string& title, const std::string& message, std::function<void()> dismissed)
{
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Warning);
    box->setText(QString::fromStdString(title));
    box->setInformativeText(QString::fromStdString(message));
    box->setStandardButtons(QMessageBox::Ok);
    QObject::connect(box, &QMessageBox::finished, box, [reply = std::move(dismissed)](int) {
        if (reply)
            reply();
    });
    box->open();
}

} // namespace platform
