#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <Corrade/Containers/StringView.h>

/** What every fuzzer defines: reads an input that may be anything, and aborts where what must always hold does not. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace QuorvaneEngine::Fuzz {

namespace Containers = Corrade::Containers;

/** Says what did not hold, and aborts. */
inline void require(const bool holds, const char* const what) {
    if(holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

inline Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

inline std::string copied(const Containers::StringView text) { return {text.data(), text.size()}; }

}
