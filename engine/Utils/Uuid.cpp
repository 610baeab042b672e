#include "Utils/Uuid.h"

#include <uuid/uuid.h>

namespace QuorvaneEngine {

namespace {

constexpr std::size_t TextSize = 36;

}

Corrade::Containers::String generateUUID() {
    uuid_t uuid;
    uuid_generate_random(uuid);
    Corrade::Containers::String text{Corrade::NoInit, TextSize};
    // 37 bytes, the last of which is the zero that every string has behind its text.
    uuid_unparse_upper(uuid, text.data());
    return text;
}

}
