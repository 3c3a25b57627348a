#include "fuzz/SentenceFuzzing.h"
#include "telemetry/ZVKZAVIKNMEASentenceParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    return fuzzSentences<ZVKZAVIKNMEASentenceParser>(input, size, [](std::string_view) { return false; });
}
