#pragma once

#include "common/Log.h"

#include <cstdlib>

/// What must hold for every input; a finding otherwise.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Keeps the program's log lines out of the fuzzer's own.
extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setLogSink({});
    return 0;
}
