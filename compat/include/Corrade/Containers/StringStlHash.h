#pragma once

/** @file Makes String and StringView keys of `std::unordered_map`, with the same hash for the same text. */

#include <cstring>
#include <functional>

#include "Corrade/Containers/String.h"
#include "Corrade/Utility/MurmurHash2.h"

namespace std {

template <> struct hash<Corrade::Containers::StringView> {
    std::size_t operator()(Corrade::Containers::StringView key) const {
        const auto digest = Corrade::Utility::MurmurHash2{}(key.data(), key.size());
        std::size_t out;
        std::memcpy(&out, digest.byteArray(), sizeof out);
        return out;
    }
};
template <> struct hash<Corrade::Containers::MutableStringView>: hash<Corrade::Containers::StringView> {};
template <> struct hash<Corrade::Containers::String>: hash<Corrade::Containers::StringView> {};

} // namespace std
