#include "cli/Commands.h"
#include "common/ByteCount.h"

#include <charconv>
#include <ostream>

namespace cli {

namespace {

} // namespace

ExitCode runSize(const Arguments& arguments, Streams streams)
{
    const std::string_view text = arguments.operands.front();
    uint64_t bytes = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), bytes);
    if (error != std::errc() || stop != text.data() + text.size())
        return failure(streams, text, "is no number of bytes");
    streams.out << formatByteCount(bytes) << '\n';
    return ExitCode::success;
}

} // namespace cli
