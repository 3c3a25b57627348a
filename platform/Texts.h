#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace platform {

/// Chooses the language of the texts: "en", "ko", or "auto" to follow the user's system
/// (Korean where the system's first language is Korean, English otherwise).
void setTextLanguage(const std::string& language);

/// "en" or "ko": what `setTextLanguage` would choose.
std::string resolvedLanguage(const std::string& language);

/// "en" or "ko".
std::string textLanguage();

/// The text of a key in the table "InfoPlist"; empty when the key is unknown.
QString localized(std::string_view key);

} // namespace platform
