#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What every target defines: takes one input. Called by the fuzzer, or by `Corpus.cpp` for each file of a folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process as a crash does when something does not hold that must hold for every input.
inline void demand(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace fuzz
