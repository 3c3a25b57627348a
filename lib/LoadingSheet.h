#pragma once

#include "lib/LoadingBar.h"

#include <QPointer>
#include <QWidget>

#include <functional>

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

    /// Shows the sheet, or restarts it.
    void showLoading(const QString& title);
    void hideLoading() { bar.stop(); }
    /// Called when the sheet went by itself, before hideLoading.
    void onTimeOut(std::function<void()> work) { timedOut = std::move(work); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setTitle(const QString& title);
    void end(bool isInTime);

    QWidget& covered;
    QLabel* progressTitleField;
    PMProgressIndicator* progressIndicator;
    QPointer<QWidget> focusedBefore;
    LoadingBar bar;
    std::function<void()> timedOut;
};
