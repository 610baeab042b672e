#include "Utils/StrHash.h"

#include <Corrade/Utility/MurmurHash2.h>

namespace QuorvaneEngine {

std::size_t StrHash::operator()(const Corrade::Containers::StringView text) const {
    static_assert(sizeof(std::size_t) == 8);
    return std::size_t(Corrade::Utility::Implementation::MurmurHash2<8>{}(0, text.data(), text.size()));
}

}
