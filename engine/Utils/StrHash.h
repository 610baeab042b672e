#pragma once

#include <cstddef>

#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine {

/** Hash of an unordered map that is keyed by `String` and looked up by `StringView`, which then allocates no key: the 64-bit
    MurmurHash2 of the view's bytes with seed 0. */
struct StrHash {
    using is_transparent = void;

    std::size_t operator()(Corrade::Containers::StringView text) const;
};

/** Equality that goes with @ref StrHash : same size and same bytes. */
struct StrEq {
    using is_transparent = void;

    bool operator()(Corrade::Containers::StringView a, Corrade::Containers::StringView b) const { return a == b; }
};

}
