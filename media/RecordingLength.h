#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

/// How many bytes of a recording tell its length.
inline constexpr size_t recordingHeaderSize = 512;

/// How long a recording is, as the header of its AVI file tells: the number of pictures and the rate of the
/// first video stream, else those of the main header. File layout (little-endian): "RIFF", size, "AVI ",
/// "LIST", size, "hdrl", then "avih" with the main header and a "LIST" of type "strl" for each stream, which
/// begins with "strh". `header` is the file's beginning, `recordingHeaderSize` bytes or what there is.
/// Nothing when the header is none or tells no length (a recording that was cut off), or more than a day.
std::optional<std::chrono::microseconds> recordingLength(std::span<const std::byte> header);

/// The same of a file, with one small read. Nothing as well for what is no regular file and for what cannot
/// be read. Blocks as long as the card.
std::optional<std::chrono::microseconds> recordingLengthOfFile(const std::string& path);
