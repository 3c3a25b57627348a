#include "platform/cups/IppTexts.h"

namespace platform::cups {

std::vector<std::string> texts(ipp_attribute_t* attribute)
{
    std::vector<std::string> result;
    for (int i = 0; i < ippGetCount(attribute); ++i) {
        if (const char* const text = ippGetString(attribute, i, nullptr))
            result.emplace_back(text);
    }
    return result;
}

} // namespace platform::cups
