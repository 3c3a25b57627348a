#include "fuzz/Require.h"
#include "telemetry/ZVKZAVIKNMEASentenceParser.h"

/// Feeds the lines of the input to one parser, so that fields persist from sentence to sentence.
void fuzz(std::string_view rest)
{
    ZVKZAVIKNMEASentenceParser parser;
    while (!rest.empty()) {
        const std::string_view sentence = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(sentence.size() == rest.size() ? rest.size() : sentence.size() + 1);
        const auto before = parser.m_Current.duplicate();
        require(parser.parse(sentence) || parser.m_Current == before);
    }
}
