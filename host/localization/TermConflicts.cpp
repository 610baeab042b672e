#include "TermConflicts.h"

#include <Corrade/Utility/Format.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

Containers::String describe(const TermConflict conflict, const Containers::StringView other) {
    switch(conflict) {
    case TermConflict::None: break;
    case TermConflict::SamePath: return Corrade::Utility::format("has the same place in a file as {}", other);
    case TermConflict::LeafAndBranch:
        return Corrade::Utility::format("cannot stand beside {}: one is a text, and the other lies below it", other);
    case TermConflict::MemberAndElement:
        return Corrade::Utility::format("cannot stand beside {}: one is an element, and the other has a name", other);
    case TermConflict::RootElement: return "is an element, and a file holds no array"_s;
    case TermConflict::TooDeep: return "is nested deeper than 256 levels"_s;
    }
    return {};
}

}
