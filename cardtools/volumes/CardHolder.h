#pragma once

#include <string>

/// An object that may have files of a card open. Main thread only.
class CardHolder {
public:
    virtual ~CardHolder() = default;

    /// The card that is mounted there is about to be unmounted and formatted: closes its files and gives up
    /// reading. Does not wait.
    virtual void letGoOf(const std::string& mountPath) = 0;
    /// Formatting has ended, done or failed: the card was mounted at the first path and is now at the second,
    /// or not mounted (empty).
    virtual void cardFormatted(const std::string& from, const std::string& to) = 0;
};
