#pragma once

#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Feeds the lines of the input to one parser, so that fields persist from sentence to sentence.
/// `mayChange` tells which refused sentences may still have changed the record.
template <typename Parser, typename MayChange>
int fuzzSentences(const uint8_t* input, size_t size, MayChange mayChange)
{
    std::string_view rest(reinterpret_cast<const char*>(input), size);
    Parser parser;
    while (!rest.empty()) {
        const std::string_view sentence = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(sentence.size() == rest.size() ? rest.size() : sentence.size() + 1);
        const auto before = parser.m_Current.duplicate();
        const bool isAccepted = parser.parse(sentence);
        require(isAccepted || mayChange(sentence) || parser.m_Current == before);
    }
    return 0;
}
