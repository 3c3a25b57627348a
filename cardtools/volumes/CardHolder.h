#pragma once

#include <string>

/// An object that may have files of a card open. Main thread only.
class CardHolder {
public:
    virtual ~CardHolder() = default;

    /// The card that is mounted there is about to be unmounted and formatted: whatever is open of it is
    /// closed, whatever is being read given up. Waits for nothing.
    virtual void letGoOf(const std::string& mountPath) = 0;
    /// That is over, well or not: what was mounted at the one path is at the other now, or nowhere (empty).
    virtual void cardFormatted(const std::string& from, const std::string& to) = 0;
};
