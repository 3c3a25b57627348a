#include "fuzz/Require.h"
#include "platform/cups/IppTexts.h"

#include <memory>

namespace {

ssize_t read(void* context, ipp_uchar_t* buffer, size_t count)
{
    auto& rest = *static_cast<std::string_view*>(context);
    count = std::min(count, rest.size());
    std::memcpy(buffer, rest.data(), count);
    rest.remove_prefix(count);
    return static_cast<ssize_t>(count);
}

} // namespace

/// An answer of a printer, as IPP (RFC 8010).
void fuzz(std::string_view rest)
{
    const std::unique_ptr<ipp_t, decltype(&ippDelete)> answer(ippNew(), ippDelete);
    ippReadIO(&rest, read, 1, nullptr, answer.get());
    for (ipp_attribute_t* each = ippFirstAttribute(answer.get()); each; each = ippNextAttribute(answer.get()))
        require(platform::cups::texts(each).size() <= static_cast<size_t>(ippGetCount(each)));
    require(platform::cups::texts(nullptr).empty());
}
