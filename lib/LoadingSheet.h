#pragma once

#include "platform/Dispatcher.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

class PMProgressIndicator;
class QLabel;

/// The sheet that covers a window while something is loaded: a title and a bar. What it covers takes no input
/// meanwhile; the event loop goes on. It goes half a second after hideLoading at the latest, and by itself
/// after 15 seconds.
class LoadingSheet : public QWidget {
    Q_OBJECT

public:
    /// Lies over `covered`, in the same parent.
    LoadingSheet(platform::Dispatcher& dispatcher, QWidget& covered);

    /// Shows the sheet, or begins anew when it is there already.
    void showLoading(const QString& title);
    void hideLoading();
    /// Called when the sheet went by itself: what it waits for is not there yet.
    void onTimeOut(std::function<void()> work) { timedOut = std::move(work); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setTitle(const QString& title);
    void scheduleUpdate(double seconds);
    void updateLoadingWindow(double seconds);
    void end();

    platform::Dispatcher& dispatcher;
    QWidget& covered;
    QLabel* progressTitleField;
    PMProgressIndicator* progressIndicator;
    QPointer<QWidget> focusedBefore;
    double progress = 0;
    bool stopLoadingWindow = true;
    std::function<void()> timedOut;
    std::shared_ptr<const bool> alive = std::make_shared<bool>(true);
};
