#include "ReservedNames.h"

namespace QuorvaneEngine::ReservedNames {

using namespace Containers::Literals;

namespace {

constexpr Containers::StringView Proto = "__proto__"_s;

struct Name {
    Containers::StringView name;
    Containers::StringView reason;
};

constexpr Containers::StringView IsLost = "is lost where the i18next library merges a file into another one"_s;

constexpr Name Members[]{
    {Proto, IsLost},
    {"constructor"_s, IsLost},
    {"prototype"_s, "is lost in many programs that merge files, though not in the i18next library"_s},
};

}

Containers::StringView memberReason(const Containers::StringView name) {
    // Nearly all names are told by their length.
    if(name.size() != 9 && name.size() != 11) return {};
    for(const Name& reserved: Members)
        if(name == reserved.name) return reserved.reason;
    return {};
}

Containers::StringView namespaceReason(const Containers::StringView name) {
    return name == Proto
        ? "is a namespace that the i18next library finds, but does not hold for loaded, so that it loads it again and again"_s
        : Containers::StringView{};
}

}
