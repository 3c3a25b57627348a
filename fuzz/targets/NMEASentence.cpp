#include "fuzz/SentenceFuzzing.h"
#include "telemetry/ZVKNMEASentenceParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    // The place in a series is the process's; every input has to start from the same one.
    ZVKNMEASentenceParser().parse("$GPGSV,1,1,1*00");
    // A message out of sequence is refused after its number of satellites has been taken.
    const auto isSeries = [](std::string_view sentence) { return sentence.starts_with("$GPGSV,"); };
    return fuzzSentences<ZVKNMEASentenceParser>(input, size, isSeries);
}
