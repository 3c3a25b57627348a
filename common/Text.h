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

/// The text as a terminal may show it, on one line: control characters (C0, DEL, C1) and those that turn the
/// direction of what follows (U+202A to U+202E, U+2066 to U+2069) are written as "\x1b" or "\u202e", a byte
/// that is no UTF-8 as "\xff". Everything else stays, so the text can pass twice. Everything that comes from
/// outside (names, paths, arguments) goes through here before it is printed or logged.
std::string visibleText(std::string_view bytes);
