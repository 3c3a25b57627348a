// The format window from the press of the format button to the report.

#include "cardtools/format/FormatReport.h"
#include "cardtools/format/ZVKFormatWindowController.h"
#include "cardtools/volumes/CardHolder.h"
#include "lib/PMProgressIndicatorController.h"
#include "platform/Texts.h"
#include "platform/disks/OpenFiles.h"
#include "ui_ZVKFormatWindowController.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QStandardPaths>

#include <chrono>
#include <utility>

namespace {

using platform::localized;
using Phase = CardFormat::Phase;

constexpr LoadingBar::Pace pace{std::chrono::milliseconds(300), std::chrono::seconds(1000)};

// Where the bar is when the writing begins and when it ends.
constexpr double writingFrom = 25;
constexpr double writingTo = 75;

// For files of the card that take their time to close.
constexpr auto lettingGoInterval = std::chrono::milliseconds(100);
constexpr int lettingGoTries = 30;

/// The folder for copies from a card, where the user can find them.
std::string copiesFolder()
{
    return QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
               .toStdString()
        + "/Zavik";
}

} // namespace

void ZVKFormatWindowController::doFormat(const TKUSBDiskEntity& card)
{
    const auto count = [ask = desktop.writtenBytes, device = card.deviceFilePath] {
        return ask ? ask(device) : std::nullopt;
    };
    using Writing = std::shared_ptr<FormatWriting>;
    const std::function<void(Phase, Writing)> show = life.guarded([this](Phase phase, Writing writes) {
        showPhase(phase);
        writing = std::move(writes);
    });
    const auto say = [&queue = desktop.dispatcher, show, size = card.volumeSize, count](Phase phase) {
        // Before the first byte: made here, not when the main thread comes to it.
        auto writes = phase == Phase::formatting ? std::make_shared<FormatWriting>(size, count) : nullptr;
        queue.onMain([show, phase, writes] { show(phase, writes); });
    };
    lookingAtCards.request_stop();
    setFormatting(std::make_shared<CardFormat>(desktop.scripts, desktop.disks, copiesFolder(), say));
    showProgressBar("Formatting...");
    desktop.dispatcher.inBackgroundThen([work = job, card] { return work->prepare(card); },
        life.guarded([this](const CardFormat::Outcome& outcome) { prepared(outcome); }));
}

void ZVKFormatWindowController::prepared(const CardFormat::Outcome& outcome)
{
    if (outcome.step == CardFormat::Step::done)
        letGo();
    else if (outcome.step == CardFormat::Step::copyAsideFailed)
        askAboutConfig(outcome);
    else
        formatDidFinished(outcome);
}

void ZVKFormatWindowController::askAboutConfig(const CardFormat::Outcome& outcome)
{
    const FormatReport question = configQuestion(outcome);
    desktop.alerts.ask(window(), question.title.toStdString(), question.message.toStdString(),
        {localized("format.anyway").toStdString(), localized("cancel").toStdString()},
        life.guarded([this](size_t button) {
            if (button != 0)
                cancel();
            letGo();
        }));
}

void ZVKFormatWindowController::letGo()
{
    letGoPath = job->mountPath();
    if (letGoPath.empty() || job->isCancelled())
        return runJob(job->isCancelled() ? &CardFormat::giveUp : &CardFormat::run);
    showStep(localized("format.letting_go"), 10);
    platform::leaveFolder(letGoPath);
    if (cardHolder)
        cardHolder->letGoOf(letGoPath);
    awaitLettingGo(lettingGoTries);
}

/// Does not wait for a read that hangs; unmounting then fails and is reported.
void ZVKFormatWindowController::awaitLettingGo(int tries)
{
    const auto open = platform::openFilesBelow(letGoPath);
    if (open.empty() || tries == 0 || job->isCancelled())
        return runJob(job->isCancelled() ? &CardFormat::giveUp : &CardFormat::run);
    showStep(localized("format.still_reading").arg(QString::fromStdString(open.front())), progress);
    desktop.dispatcher.after(lettingGoInterval, life.guarded([this, tries] { awaitLettingGo(tries - 1); }));
}

void ZVKFormatWindowController::runJob(CardFormat::Outcome (CardFormat::*part)())
{
    desktop.dispatcher.inBackgroundThen([work = job, part] { return (*work.*part)(); },
        life.guarded([this](const CardFormat::Outcome& outcome) { formatDidFinished(outcome); }));
}

void ZVKFormatWindowController::formatDidFinished(const CardFormat::Outcome& outcome)
{
    showDisks(outcome.disks);
    selectAgain(outcome.card);
    setFormatting(nullptr);
    hideProgressBar();
    if (takeWaitingAlertAway)
        std::exchange(takeWaitingAlertAway, nullptr)();
    if (const std::string from = std::exchange(letGoPath, {}); !from.empty() && cardHolder)
        cardHolder->cardFormatted(from, outcome.isThere ? outcome.card.mountedURL : std::string());
    if (outcome.step == CardFormat::Step::cancelled) {
        outlets->progressMessageField->setText(localized("format.cancelled"));
        outlets->progressMessageField->show();
        return;
    }
    const FormatReport report = formatReport(outcome);
    alert(report.title, report.message, report.closesWindow ? [this] { cancel(); } : std::function<void()>());
}

void ZVKFormatWindowController::cancel()
{
    if (!isFormatting()) {
        if (loaded)
            loaded->close();
        return;
    }
    outlets->cancelButton->setEnabled(false);
    if (job->cancel())
        outlets->progressMessageField->setText(localized("format.cancelling"));
}

void ZVKFormatWindowController::setFormatting(std::shared_ptr<CardFormat> formatting)
{
    const bool on = formatting != nullptr;
    if (isFormatting() == on)
        return;
    job = std::move(formatting);
    writing.reset();
    outlets->usbDiskList->setEnabled(!on);
    outlets->formatButton->setEnabled(!on);
    outlets->cancelButton->setEnabled(true);
    outlets->hintLabel->setText(localized("format.hint"));
    outlets->progressBar->setDrawDockProgress(on);
    if (!on) // at once: what is told next shows the icon
        PMProgressIndicatorController::sharedInstance().drawProgressIndicators();
    if (on)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

bool ZVKFormatWindowController::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<QWidget*>(watched);
    const bool closes =
        event->type() == QEvent::Close && widget && widget->isWindow() && widget->windowType() == Qt::Window;
    const bool quits = event->type() == QEvent::Quit && watched == qApp;
    if (!isFormatting() || !(closes || quits))
        return false;
    event->ignore();
    tellThatItIsFormatting();
    return true;
}

void ZVKFormatWindowController::tellThatItIsFormatting()
{
    showWindow();
    if (takeWaitingAlertAway)
        return;
    takeWaitingAlertAway = [] {}; // `ask` may answer before it returns
    auto takeAway = desktop.alerts.ask(window(), "ZAVIK", localized("format.running").toStdString(),
        {localized("format.ok").toStdString()},
        life.guarded([this](size_t) { takeWaitingAlertAway = nullptr; }));
    if (takeWaitingAlertAway)
        takeWaitingAlertAway = std::move(takeAway);
}

void ZVKFormatWindowController::showPhase(Phase phase)
{
    if (!isFormatting())
        return;
    switch (phase) {
    case Phase::looking:
        return showStep("Formatting...", 0);
    case Phase::copying:
        return showStep(localized("format.copying"), 5);
    case Phase::unmounting:
        return showStep("unmount disk...", 15);
    case Phase::formatting:
        outlets->cancelButton->setEnabled(false);
        outlets->hintLabel->setText(localized("format.no_cancel"));
        return showStep("formatting...", writingFrom);
    case Phase::mounting:
        return showStep("try mount...", writingTo);
    case Phase::finishing:
        return showStep("Format completed!", 85);
    }
}

void ZVKFormatWindowController::showStep(const QString& message, double done)
{
    progress = done;
    outlets->progressBar->setDisplayTimeRemaining(false);
    outlets->progressBar->restartEstimate(); // the number of steps says nothing about the time
    outlets->progressBar->setDoubleValue(progress);
    outlets->progressMessageField->setText(message);
}

/// The counters of the system are read on the main thread: that takes some microseconds and waits for no
/// card. Before the first byte the user may be asked for a password, after the last one the card is read
/// back: no time is told then.
void ZVKFormatWindowController::followWriting()
{
    const double share = writing->share();
    progress = writingFrom + share * (writingTo - writingFrom);
    outlets->progressBar->setDisplayTimeRemaining(share > 0 && share < 1);
    if (share == 0)
        outlets->progressBar->restartEstimate();
    outlets->progressBar->setDoubleValue(progress);
    outlets->progressBar->updateProgressText(); // also of a card that does not get on
}

void ZVKFormatWindowController::setBarVisible(bool visible)
{
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             outlets->progressBar, outlets->progressMessageField, outlets->progressTextField})
        widget->setVisible(visible);
}

void ZVKFormatWindowController::makeBar()
{
    setBarVisible(false);
    bar = std::make_unique<LoadingBar>(desktop.dispatcher, pace,
        LoadingBar::Look{[this](double percent) { outlets->progressBar->setDoubleValue(percent); },
            [this](bool isInTime) {
                if (!isInTime)
                    setBarVisible(false);
                outlets->progressBar->stopAnimation();
            },
            [this] { outlets->progressBar->startAnimation(); }, [this] { return measured(); }});
}

void ZVKFormatWindowController::showProgressBar(const QString& message)
{
    setBarVisible(true);
    outlets->progressBar->setIndeterminate(!isFormatting());
    progress = 0;
    outlets->progressTextField->clear();
    outlets->progressMessageField->setText(message);
    bar->start();
}

/// How far the format is; nothing while cards are looked for.
std::optional<double> ZVKFormatWindowController::measured()
{
    if (!isFormatting())
        return std::nullopt;
    if (writing)
        followWriting();
    return progress;
}

void ZVKFormatWindowController::hideProgressBar()
{
    setBarVisible(false);
    bar->stop();
}
