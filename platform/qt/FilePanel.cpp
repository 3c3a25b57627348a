#include "platform/qt/FilePanel.h"

#include "platform/Texts.h"
#include "platform/qt/ShownFolders.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>
#include <QWindow>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>

using namespace std::chrono_literals;

namespace platform {

namespace {

constexpr int placesWidth = 140;
constexpr auto beat = 500ms;
constexpr quint64 longestRequest = 1U << 20U;

QByteArray bytesOf(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

/// The home folder where there is no documents folder.
QString documentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
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

void setKind(QFileDialog& dialog, const PanelRequest& request)
{
    switch (request.kind) {
    case PanelRequest::Kind::folder:
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
        break;
    case PanelRequest::Kind::file:
        dialog.setFileMode(QFileDialog::ExistingFile);
        break;
    case PanelRequest::Kind::save:
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.panel.asksBeforeReplacing);
        dialog.setFilter(dialog.filter().setFlag(QDir::Hidden, !request.panel.hidesHiddenFiles));
        break;
    }
}

/// Centred on it, as far as the screen allows.
void moveOver(QFileDialog& dialog, const QRect& place)
{
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    const QRect area = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    QRect at(QPoint(), dialog.size());
    at.moveCenter(place.center());
    at.moveTopLeft({std::max(area.left(), std::min(at.left(), area.right() - at.width())),
        std::max(area.top(), std::min(at.top(), area.bottom() - at.height()))});
    dialog.move(at.topLeft());
}

/// Above the window that asks, which is another process's. The returned window represents it.
std::unique_ptr<QWindow> placeAbove(QFileDialog& dialog, const PanelRequest& request)
{
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.adjustSize();
    if (request.place.isValid())
        moveOver(dialog, request.place);
    if (request.window == 0 || QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    std::unique_ptr<QWindow> asking(QWindow::fromWinId(static_cast<WId>(request.window)));
    dialog.winId(); // makes the window
    dialog.windowHandle()->setTransientParent(asking.get());
    return asking;
}

bool readAll(char* bytes, size_t length)
{
    while (length > 0) {
        const ssize_t count = read(STDIN_FILENO, bytes, length);
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        const auto got = static_cast<size_t>(count < 0 ? 0 : count);
        bytes += got;
        length -= got;
    }
    return true;
}

std::optional<PanelRequest> readRequest()
{
    quint64 length = 0;
    if (!readAll(reinterpret_cast<char*>(&length), sizeof length) || length > longestRequest)
        return std::nullopt;
    QByteArray bytes(static_cast<qsizetype>(length), '\0');
    return readAll(bytes.data(), length) ? PanelRequest::parsed(bytes) : std::nullopt;
}

bool say(const std::string& text)
{
    return write(STDOUT_FILENO, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

} // namespace

QByteArray PanelRequest::bytes() const
{
    QByteArray result;
    QDataStream stream(&result, QIODevice::WriteOnly);
    stream << kind << bytesOf(panel.title) << bytesOf(panel.name) << panel.folder.has_value()
           << bytesOf(panel.folder.value_or("")) << bytesOf(panel.type) << panel.asksBeforeReplacing
           << panel.hidesHiddenFiles << bytesOf(language) << window << place;
    return result;
}

std::optional<PanelRequest> PanelRequest::parsed(const QByteArray& bytes)
{
    PanelRequest result;
    QByteArray title, name, folder, type, language;
    bool hasFolder = false;
    QDataStream stream(bytes);
    stream >> result.kind >> title >> name >> hasFolder >> folder >> type >> result.panel.asksBeforeReplacing
        >> result.panel.hidesHiddenFiles >> language >> result.window >> result.place;
    if (stream.status() != QDataStream::Ok || !stream.atEnd() || result.kind > Kind::save)
        return std::nullopt;
    result.panel.title = title.toStdString();
    result.panel.name = name.toStdString();
    if (hasFolder)
        result.panel.folder = folder.toStdString();
    result.panel.type = type.toStdString();
    result.language = language.toStdString();
    return result;
}

QFileDialog& makeFilePanel(const PanelRequest& request, ShownFolders& folders, QWidget* parent)
{
    const QString place = request.panel.folder ? folders.shown(*request.panel.folder) : QString();
    auto* dialog = new QFileDialog(
        parent, QString::fromStdString(request.panel.title), place.isEmpty() ? documentsFolder() : place);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // A desktop's own panel uses the desktop's language, and may ignore the options for overwriting and
    // hidden files.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    // Names only: details would be cut off, and are in the system's language.
    dialog->setViewMode(QFileDialog::List);
    setKind(*dialog, request);
    setType(*dialog, request.panel.type);
    // The proposed name is one of the folder that the panel is in.
    if (!request.panel.name.empty())
        dialog->selectFile(QFile::decodeName(request.panel.name.c_str()));
    // Its popup list would grab the whole screen's input while a card hangs.
    if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
        name->setCompleter(nullptr);
    if (auto* places = dialog->findChild<QWidget*>(QStringLiteral("sidebar")))
        places->setMinimumWidth(placesWidth);
    for (QPushButton* button : dialog->findChildren<QPushButton*>())
        button->setIcon({});
    return *dialog;
}

std::optional<std::string> chosenPath(const QFileDialog& panel, const ShownFolders& folders)
{
    const QStringList chosen = panel.selectedFiles();
    return chosen.isEmpty() ? std::nullopt : std::optional(folders.real(chosen.first()));
}

void runFilePanel()
{
    const auto request = readRequest();
    if (!request)
        std::_Exit(2);
    (void)say("."); // from here on the disk may hang
    setTextLanguage(request->language);
    auto folders = std::make_unique<ShownFolders>();
    QFileDialog& dialog = makeFilePanel(*request, *folders, nullptr);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    QTimer life;
    QObject::connect(&life, &QTimer::timeout, &life, [] { (void)say("."); });
    life.start(beat);
    QObject::connect(&dialog, &QFileDialog::finished, &dialog, [&](int result) {
        const auto path = result == QDialog::Accepted ? chosenPath(dialog, *folders) : std::nullopt;
        folders.reset(); // who reads the answer may kill this process
        const bool isSaid = say('\0' + path.value_or("") + '\0');
        // The dialog's destructor would wait for its thread, which may hang on a card.
        std::_Exit(isSaid ? 0 : 1);
    });
    const auto asking = placeAbove(dialog, *request);
    dialog.show();
    dialog.activateWindow();
    QApplication::exec();
    folders.reset();
    std::_Exit(0);
}

} // namespace platform
