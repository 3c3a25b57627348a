#pragma once

#include "cli/Program.h"

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

struct Outcome {
    int code;
    std::string out;
    std::string err;
};

inline Outcome zavikctl(const std::vector<std::string>& words, const cli::VolumesSource& volumes = {})
{
    const std::vector<std::string_view> views(words.begin(), words.end());
    std::ostringstream out;
    std::ostringstream err;
    const auto code = cli::run(views, {out, err}, volumes);
    return {static_cast<int>(code), out.str(), err.str()};
}
