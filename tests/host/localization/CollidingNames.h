#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** Names that share a place in a table of hashes, more of them than it takes: what somebody might send on purpose. */
inline std::vector<std::string> collidingNames() {
    constexpr std::size_t Count = 1100;
    std::vector<std::string> names;
    for(unsigned i = 0; names.size() != Count; ++i) {
        std::string name = std::to_string(i);
        const std::size_t hash = StrHash{}({name.data(), name.size()});
        if(((hash ^ (hash >> 32)) & 0xfff) == 0) names.push_back(std::move(name));
    }
    return names;
}

}
