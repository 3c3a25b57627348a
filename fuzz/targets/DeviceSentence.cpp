#include "fuzz/Require.h"
#include "telemetry/ZVKZAVIKNMEASentenceParser.h"

/// Feeds the lines of the input to one parser, so that fields persist from sentence to sentence.
void fuzz(std::string_view rest)
{
    ZVKZAVIKNMEASentenceParser parser;
    while (!rest.empty()) {
        const std::string_view sentence = nextPart(rest, '\n');
        const auto before = parser.m_Current.duplicate();
        require(parser.parse(sentence) || parser.m_Current == before);
    }
}
