#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The user's defaults: small values kept between runs.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Empty when the key was never set.
    virtual std::vector<std::string> stringList(const std::string& key) const = 0;
    virtual void setStringList(const std::string& key, const std::vector<std::string>& values) = 0;
    virtual std::optional<bool> boolean(const std::string& key) const = 0;
};

} // namespace platform
