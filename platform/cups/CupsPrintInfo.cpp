#include "platform/cups/CupsPrintInfo.h"

#include <QPrintEngine>
#include <QPrinter>

#include <cmath>

namespace platform {

namespace {

constexpr const char* portrait = "3";
constexpr const char* landscape = "4";

/// Name after value, as the dialog's advanced pages leave them with the print engine under its own key.
void addAdvanced(const QPrinter& printer, cups::JobOptions& options)
{
    constexpr auto advancedOptions = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);
    const QStringList pairs = printer.printEngine()->property(advancedOptions).toStringList();
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2)
        options[pairs[i].toStdString()] = pairs[i + 1].toStdString();
}

void addPaper(const QPrinter& printer, cups::JobOptions& options)
{
    const QPageLayout layout = printer.pageLayout();
    const QSizeF size = layout.pageSize().size(QPageSize::Millimeter);
    const auto hundredths = [](double millimetres) { return int(std::lround(millimetres * 100)); };
    const std::string media = cups::mediaName(hundredths(size.width()), hundredths(size.height()));
    if (!media.empty())
        options["media"] = media;
    options["orientation-requested"] = layout.orientation() == QPageLayout::Landscape ? landscape : portrait;
}

} // namespace

CupsPrintInfo::Settings::~Settings() = default;

cups::JobOptions jobOptions(const CupsPrintInfo::Settings& settings)
{
    cups::JobOptions options;
    if (const QPrinter* printer = settings.printer.get()) {
        addAdvanced(*printer, options);
        addPaper(*printer, options);
        options["copies"] = std::to_string(printer->copyCount());
        if (printer->colorMode() == QPrinter::GrayScale)
            options["print-color-mode"] = "monochrome";
    }
    for (const auto& [name, value] : settings.values)
        options[name] = value;
    return options;
}

} // namespace platform
