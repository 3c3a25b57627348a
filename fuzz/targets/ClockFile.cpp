#include "cardtools/clock/TimeSet.h"
#include "fuzz/Require.h"

void fuzz(std::string_view text)
{
    if (const auto moment = timeSetFromText(text))
        require(timeSetText(*moment) == text);
}
