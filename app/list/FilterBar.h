#pragma once

#include "media/RecordingFilter.h"

#include <QObject>

#include <functional>
#include <vector>

namespace Ui {
class ListPanel;
}

/// The filter above the list of recordings: text, kind, camera, day and "with an impact". Hidden, it filters
/// nothing. Main thread only.
class FilterBar : public QObject {
public:
    /// `changed` is called when another filter holds.
    FilterBar(Ui::ListPanel& outlets, std::function<void()> changed);

    /// What holds now.
    RecordingFilter filter() const;
    /// Shows the bar with the text selected.
    void open();
    bool isOpen() const;
    /// Hides the bar; everything passes.
    void close();
    /// The days that there are to choose from, rising; the one that is chosen stays where it is among them.
    void setDays(const std::vector<std::chrono::local_days>& days);
    /// How many recordings the filter hides; `isSearching`: recordings are still being read.
    void showHidden(int64_t hidden, bool isSearching);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    Ui::ListPanel& outlets;
    std::function<void()> changed;
    bool isSettingUp = true;
};
