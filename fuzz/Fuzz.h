// What every property has: its entry point, which libFuzzer and Main.cpp call alike, and its check.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the run where a property does not hold; whoever calls the property then shows the input.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "%s:%d: the property does not hold\n", file, line);
        std::abort();
    }
}
