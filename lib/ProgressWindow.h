#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"

#include <QDialog>
#include <QPointer>

#include <cstdint>
#include <functional>
#include <memory>

class PMProgressIndicator;
class QLabel;
class QPushButton;

/// Tells how far a long work is: its words, a bar, the percentage and the time that it still takes, and a
/// button that stops it. It lies over the window of a page and takes its input. It comes half a second after
/// the work began, so that a short work shows nothing; its bar is on the application's icon then, too.
/// The owner of the work deletes it at the end. Main thread only.
class ProgressWindow final : public QDialog {
    Q_OBJECT

public:
    /// `question` is asked before the work is stopped; when it is empty, the work is stopped at once.
    ProgressWindow(
        platform::Dispatcher& dispatcher, QWidget& page, const QString& words, const QString& question);

    /// How much is done, for the thread that works: a percentage that changes is shown.
    using Report = std::function<void(int64_t done, int64_t all)>;
    [[nodiscard]] Report report();

    /// The user wants the work stopped.
    std::function<void()> stopped;

    /// False when there is no question.
    bool asksBeforeStopping();
    /// Escape and the window's own closing: asks, or takes the question back.
    void reject() override;

private:
    void comeLater();
    void awaitReport();
    void come();
    void setDone(int percent);
    void ask(bool isAsking);
    void stop();

    platform::Dispatcher& dispatcher;
    QPointer<QWidget> page;
    QPointer<QWidget> below; // the page's window, even after it switched to another page
    const QString words;
    const QString question;
    int reports = 0;
    QLabel* wordsLabel;
    QLabel* timeLabel;
    PMProgressIndicator* bar;
    QPushButton* stopButton;
    QPushButton* continueButton;
    Life life;
};
