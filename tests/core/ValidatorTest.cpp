#include "settings/record/ZVKValidator.h"

#include <gtest/gtest.h>

TEST(Validator, ThresholdsOfTheGSensor)
{
    const std::string range = "msg.gsensor_outofrange_fmt";
    const std::string noNumber = "msg.input_value_invalid_format";
    const std::pair<const char*, std::string> cases[] = {{"", ""}, {"0.05", ""}, {"1.5", ""},
        {" \n+1.5 ", ""}, {"0.5g", ""}, {".5", ""}, {"5e-1x", ""}, {"1e", ""}, {"0.049", range},
        {"1.51", range}, {"-0.5", range}, {"1e999", range}, {"1e-999", range}, {"-1e999", range},
        {"abc", noNumber}, {" ", noNumber}, {".", noNumber}, {"+-1", noNumber}, {"inf", noNumber},
        {"nan", noNumber}, {",5", noNumber}, {"0,5", range}};
    for (const auto& [text, key] : cases) {
        SCOPED_TRACE(text);
        const auto message = ZVKValidator::validateGsensorThreshold(text);
        EXPECT_EQ(message ? message->key : "", key);
        EXPECT_EQ(message && message->range.has_value(), key == range);
    }
}
