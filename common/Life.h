#pragma once

#include <memory>
#include <utility>

/// Guards work that runs later against the end of its owner: what was guarded by an owner's life does nothing
/// once the owner is gone or has begun a new life. Any thread may carry and drop such work; it is called on
/// the thread that the owner lives on.
class Life {
public:
    Life() = default;
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    /// The work with the same arguments and no result.
    template <typename Work> auto guarded(Work work) const
    {
        return [owner = std::weak_ptr(token), work = std::move(work)]<typename... Arguments>(
                   Arguments&&... arguments) mutable {
            if (!owner.expired())
                work(std::forward<Arguments>(arguments)...);
        };
    }

    /// Voids whatever was guarded up to now.
    void renew() { token = std::make_shared<const bool>(true); }

private:
    std::shared_ptr<const bool> token = std::make_shared<const bool>(true);
};
