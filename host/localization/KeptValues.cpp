#include "KeptValues.h"

#include <cmath>

#include <rapidjson/document.h>

#include "../document/JsonScanner.h"
#include "DocumentLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

KeptValues::KeptValues(const rapidjson::Value& root, const ProjectTerms& terms, const Containers::StringView code) {
    const rapidjson::Value* const values = memberOf(memberOf(memberOf(&root, "localization"_s), "values"_s), code);
    if(!values || !values->IsObject()) return;
    Int position = 0;
    for(const auto& member: values->GetObject()) {
        const Containers::StringView key{member.name.GetString(), member.name.GetStringLength()};
        const Int at = position++;
        const TermPlace place = terms.place(key, _memory);
        if(member.value.IsNull()) {
            _emptyKeys.add(key);
            _emptyPositions.push_back(at);
            continue;
        }
        if(place.nameSpace == -1) continue;
        _keys.add(key);
        _entries.push_back({key, place, &member.value, at});
    }
}

KeptValues::~KeptValues() = default;
KeptValues::KeptValues(KeptValues&&) noexcept = default;
KeptValues& KeptValues::operator=(KeptValues&&) noexcept = default;

Int KeptValues::position(const Containers::StringView key) const {
    const Int known = find(key);
    if(known != -1) return _entries[std::size_t(known)].position;
    const Int empty = _emptyKeys.find(key);
    return empty == -1 ? -1 : _emptyPositions[std::size_t(empty)];
}

Containers::StringView spellingOf(const rapidjson::Value& kept) {
    if(!kept.IsObject() || kept.MemberCount() != 1) return {};
    const rapidjson::Value* const number = memberOf(&kept, "number"_s);
    if(!number || !number->IsString()) return {};
    const Containers::StringView text{number->GetString(), number->GetStringLength()};
    JsonScanner scanner{text};
    const bool isNumber =
        scanner.next() == JsonToken::Number && scanner.text() == text && scanner.next() == JsonToken::End;
    return isNumber ? text : Containers::StringView{};
}

bool isSameValue(const rapidjson::Value& a, const rapidjson::Value& b) {
    if(a.GetType() != b.GetType()) return false;
    if(a.IsObject() || a.IsArray()) return true;
    // The library holds 1 and 1.0 for equal, -1 and the largest number, and 0.0 and -0.0.
    if(a.IsNumber() && (a.IsDouble() != b.IsDouble() || a.IsUint64() != b.IsUint64())) return false;
    if(a.IsDouble() && std::signbit(a.GetDouble()) != std::signbit(b.GetDouble())) return false;
    return a == b;
}

}
