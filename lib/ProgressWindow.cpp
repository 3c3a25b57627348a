#include "lib/ProgressWindow.h"

#include "lib/PMProgressIndicator.h"
#include "platform/Texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr std::chrono::milliseconds patience{500};
constexpr std::chrono::seconds longestSilence{15};

} // namespace

ProgressWindow::ProgressWindow(
    platform::Dispatcher& queue, QWidget& part, const QString& what, const QString& asked)
    : dispatcher(queue),
      page(&part),
      below(part.isVisible() ? part.window() : nullptr),
      words(what),
      question(asked),
      wordsLabel(new QLabel(this)),
      timeLabel(new QLabel(this)),
      bar(new PMProgressIndicator(this)),
      stopButton(new QPushButton(platform::localized("progress.stop"), this)),
      continueButton(new QPushButton(platform::localized("progress.continue"), this))
{
    setWindowTitle(platform::localized("app.name"));
    setWindowModality(Qt::WindowModal);
    bar->setDrawDockProgress(false);
    bar->setDisplayPercentage(true);
    bar->setProgressText(timeLabel);
    wordsLabel->setWordWrap(true);
    connect(stopButton, &QPushButton::clicked, this,
        [this] { question.isEmpty() || !continueButton->isHidden() ? stop() : ask(true); });
    connect(continueButton, &QPushButton::clicked, this, [this] { ask(false); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(stopButton);
    buttons->addWidget(continueButton);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 18);
    column->setSpacing(12);
    for (QWidget* line :
        {static_cast<QWidget*>(wordsLabel), static_cast<QWidget*>(bar), static_cast<QWidget*>(timeLabel)})
        column->addWidget(line);
    column->addLayout(buttons);
    ask(false);
    // The size stays whatever the texts are.
    wordsLabel->setMinimumHeight(2 * wordsLabel->fontMetrics().lineSpacing());
    setFixedSize(420, sizeHint().height());
    comeLater();
    awaitReport();
}

/// Work that reports no progress for a while is shown as hanging until it reports again.
void ProgressWindow::awaitReport()
{
    dispatcher.after(longestSilence, life.guarded([this, heard = reports] {
        if (reports == heard && continueButton->isHidden())
            wordsLabel->setText(platform::localized("progress.no_answer"));
        awaitReport();
    }));
}

ProgressWindow::Report ProgressWindow::report()
{
    std::function<void(int)> tell = life.guarded([this](int percent) { setDone(percent); });
    return [&queue = dispatcher, tell, last = 0](int64_t done, int64_t all) mutable {
        const int percent = all > 0 ? static_cast<int>(done * 100 / all) : 0;
        if (percent != std::exchange(last, percent))
            queue.onMain([tell, percent] { tell(percent); });
    };
}

void ProgressWindow::comeLater()
{
    dispatcher.after(patience, life.guarded([this] { come(); }));
}

/// A page that was not shown yet has no window.
void ProgressWindow::come()
{
    if (page && page->isVisible())
        below = page->window();
    if (!below || !below->isVisible()) {
        comeLater();
        return;
    }
    if (isVisible())
        return;
    setParent(below, windowFlags());
    bar->setDrawDockProgress(true);
    bar->updateProgressText();
    show();
}

void ProgressWindow::setDone(int percent)
{
    ++reports;
    bar->setDoubleValue(percent);
    if (continueButton->isHidden())
        wordsLabel->setText(words);
}

void ProgressWindow::reject()
{
    question.isEmpty() ? stop() : ask(continueButton->isHidden());
}

bool ProgressWindow::asksBeforeStopping()
{
    if (!question.isEmpty())
        ask(true);
    return !question.isEmpty();
}

void ProgressWindow::ask(bool isAsking)
{
    if (isAsking)
        come();
    wordsLabel->setText(isAsking ? question : words);
    continueButton->setVisible(isAsking);
    (isAsking ? continueButton : stopButton)->setDefault(true);
    (isAsking ? continueButton : stopButton)->setFocus();
}

void ProgressWindow::stop()
{
    hide();
    if (stopped)
        stopped();
}
