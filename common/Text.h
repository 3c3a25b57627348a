#pragma once

#include <string>
#include <string_view>

/// Whether the bytes are well-formed UTF-8 (RFC 3629: no surrogates, no overlong forms).
bool isValidUtf8(std::string_view bytes);

/// The text as UTF-16 code units, the unit in which names are measured.
/// A byte that belongs to no well-formed UTF-8 sequence becomes one U+FFFD, so a name in another
/// encoding still has a length and never equals a well-formed one by accident.
std::u16string utf16Units(std::string_view bytes);

/// ASCII letters in lower case, everything else as it is.
std::string asciiLower(std::string_view text);
