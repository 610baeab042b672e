#include "SteppedJsonWriter.h"

#include <string_view>
#include <utility>

#include "JsonText.h"

namespace QuorvaneEngine {

namespace {

/** As deep as the objects that may have many members. */
constexpr std::size_t Depth = 4;

}

SteppedJsonWriter::SteppedJsonWriter(const rapidjson::Value& document): _open{{&document, 0}}, _text{"{"} {}

bool SteppedJsonWriter::write(std::size_t members) {
    while(!_open.empty() && members) {
        if(_text.size() >= PartSize) {
            _parts.push_back(std::move(_text));
            _text = {};
            _text.reserve(PartSize + PartSize / 8);
        }
        Object& object = _open.back();
        if(object.next == object.value->MemberCount()) {
            _text += '}';
            _open.pop_back();
            continue;
        }
        const auto& member = object.value->MemberBegin()[std::ptrdiff_t(object.next)];
        if(object.next++) _text += ',';
        appendJsonString(_text, std::string_view{member.name.GetString(), member.name.GetStringLength()});
        _text += ':';
        --members;
        if(member.value.IsObject() && _open.size() < Depth) {
            _text += '{';
            _open.push_back({&member.value, 0});
        } else appendJson(_text, member.value);
    }
    return _open.empty();
}

std::vector<std::string> SteppedJsonWriter::takeParts() {
    _parts.push_back(std::move(_text));
    _text = {};
    return std::exchange(_parts, {});
}

}
