#pragma once

#include <functional>
#include <string_view>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Tells within one process whether texts, in their order, are those of before. */
class TextDigest {
public:
    void add(const Containers::StringView text) { add(std::hash<std::string_view>{}({text.data(), text.size()})); }

    /** Adds what another one has. */
    void add(const TextDigest& other) { add(other._value); }

    bool operator==(const TextDigest&) const = default;

private:
    void add(const std::size_t value) { _value = (_value ^ value) * 0x9e3779b97f4a7c15u; }

    std::size_t _value = 1;
};

}
