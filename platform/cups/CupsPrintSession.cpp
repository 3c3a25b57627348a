#include "platform/cups/CupsPrintSession.h"

#include "platform/Texts.h"
#include "platform/cups/CupsPrintInfo.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>

#include <utility>

namespace platform {

namespace {

using Settings = CupsPrintInfo::Settings;
using PanelAnswer = std::function<void(int)>;

constexpr int printPressed = 1;
constexpr int cancelled = 0;

/// Blocks the window's input while the server is asked; becomes visible when that takes long.
QProgressDialog* waitingSheet(QWidget& window, const PanelAnswer& answer)
{
    constexpr int patienceMs = 300;
    auto* sheet = new QProgressDialog(localized("print.searching"), localized("cancel"), 0, 0, &window);
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setMinimumDuration(patienceMs);
    sheet->setValue(0);
    QObject::connect(sheet, &QProgressDialog::canceled, sheet, [sheet, answer] {
        sheet->deleteLater();
        answer(cancelled);
    });
    return sheet;
}

/// Tells that there is no printer and disables Print.
void sayNoPrinter(QDialog& panel)
{
    auto* text = new QLabel(localized("print.no_printer"), &panel);
    text->setObjectName(QStringLiteral("noPrinterLabel"));
    text->setWordWrap(true);
    if (auto* layout = qobject_cast<QBoxLayout*>(panel.layout()))
        layout->insertWidget(0, text);
    if (const auto* buttons = panel.findChild<QDialogButtonBox*>())
        buttons->button(QDialogButtonBox::Ok)->setEnabled(false);
}

/// The toolkit's panel in the program's look: no cut button texts, no icons of another style.
void dressButtons(QDialog& panel)
{
    for (QPushButton* button : panel.findChildren<QPushButton*>()) {
        button->setIcon({});
        button->ensurePolished();
        button->setMinimumWidth(button->sizeHint().width());
    }
}

void openPanel(
    QWidget& window, const std::shared_ptr<Settings>& settings, bool hasPrinters, const PanelAnswer& answer)
{
    cups::setServerUsable(hasPrinters);
    if (!settings->printer)
        settings->printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    auto* panel = new QPrintDialog(settings->printer.get(), &window);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    panel->setOptions(QPrintDialog::PrintShowPageSize);
    panel->setOption(QPrintDialog::PrintToFile, hasPrinters);
    if (!hasPrinters)
        sayNoPrinter(*panel);
    dressButtons(*panel);
    QObject::connect(panel, &QDialog::finished, panel,
        [settings, answer](int result) { answer(result == QDialog::Accepted ? printPressed : cancelled); });
    panel->open();
}

} // namespace

CupsPrintSession::CupsPrintSession(Dispatcher& where)
    : dispatcher(where)
{
}

std::unique_ptr<PrintInfo> CupsPrintSession::makePrintInfo()
{
    return std::make_unique<CupsPrintInfo>();
}

void CupsPrintSession::showPanel(QWidget& window, PrintInfo& info, PanelAnswer answer)
{
    // Weak, so that the settings never go away on a background thread.
    const std::weak_ptr settings = static_cast<CupsPrintInfo&>(info).settings;
    if (std::exchange(settings.lock()->isPanelOnItsWay, true))
        return;
    PanelAnswer reply = [settings, answer = std::move(answer)](int code) {
        if (const auto kept = settings.lock())
            kept->isPanelOnItsWay = false;
        answer(code);
    };
    const QPointer waiting = waitingSheet(window, reply);
    dispatcher.inBackgroundThen(cups::serverHasPrinters, [waiting, settings, reply](bool hasPrinters) {
        const auto kept = settings.lock();
        if (!waiting || waiting->wasCanceled() || !kept)
            return;
        QWidget& parent = *waiting->parentWidget();
        delete waiting;
        openPanel(parent, kept, hasPrinters, reply);
    });
}

void CupsPrintSession::setValue(PrintInfo& info, const std::string& key, const std::string& value)
{
    CupsPrintInfo::of(info).values[key] = value;
}

std::optional<PrintSession::Destination> CupsPrintSession::destinationType(const PrintInfo& info)
{
    const Settings& settings = CupsPrintInfo::of(info);
    if (!settings.printer)
        return {};
    return settings.printer->outputFormat() == QPrinter::PdfFormat ? Destination::file : Destination::printer;
}

PrintSession::Printer CupsPrintSession::currentPrinter(const PrintInfo& info)
{
    const Settings& settings = CupsPrintInfo::of(info);
    if (!settings.printer || settings.printer->printerName().isEmpty())
        return {cups::noSuchPrinter(), {}};
    return {0, settings.printer->printerName().toStdString()};
}

void CupsPrintSession::mimeTypes(
    const std::string& printer, const PrintInfo&, std::function<void(Types)> answer)
{
    dispatcher.inBackgroundThen([printer] { return cups::documentFormats(printer); }, std::move(answer));
}

void CupsPrintSession::printFile(const std::string& printer, const PrintInfo& info,
    const std::string& mimeType, std::string contents, std::function<void(int)> answer)
{
    dispatcher.inBackgroundThen(
        [printer, options = jobOptions(CupsPrintInfo::of(info)), mimeType, data = std::move(contents)] {
            return cups::print(printer, options, mimeType, data);
        },
        std::move(answer));
}

} // namespace platform
