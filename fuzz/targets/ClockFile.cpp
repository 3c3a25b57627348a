#include "cardtools/TimeSet.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    const std::string_view text = textOf(input, size);
    if (const auto moment = timeSetFromText(text))
        require(timeSetText(*moment) == text);
    return 0;
}
