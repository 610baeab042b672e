#include "PathTokens.h"

#include <cstring>

namespace QuorvaneEngine {

PathTokens::PathTokens(Containers::StringView path)
    : _at{path.begin()},
      _end{path.end()},
      _valid{path.isEmpty() || *path.begin() == '/'},
      _escapes{!path.isEmpty() && std::memchr(path.data(), '~', path.size())} {
    if(!_escapes || !_valid) return;
    for(const char* at = _at; at != _end; ++at)
        if(*at == '~' && (at + 1 == _end || (at[1] != '0' && at[1] != '1'))) _valid = false;
}

bool PathTokens::next(Containers::StringView& token) {
    if(!_valid || _at == _end) return false;
    const char* const begin = _at + 1;
    const void* const slash = begin == _end ? nullptr : std::memchr(begin, '/', std::size_t(_end - begin));
    _at = slash ? static_cast<const char*>(slash) : _end;
    token = _escapes ? unescape(begin, _at) : Containers::StringView{begin, std::size_t(_at - begin)};
    return true;
}

Containers::StringView PathTokens::unescape(const char* begin, const char* end) {
    const std::size_t size = std::size_t(end - begin);
    if(!size || !std::memchr(begin, '~', size)) return {begin, size};

    char* buffer = _buffer;
    if(size > sizeof(_buffer)) {
        _long = Containers::Array<char>{Corrade::ValueInit, size};
        buffer = _long.data();
    }
    char* out = buffer;
    for(const char* at = begin; at != end; ++at) *out++ = *at != '~' ? *at : *++at == '0' ? '~' : '/';
    return {buffer, std::size_t(out - buffer)};
}

rapidjson::Value* arrayElement(rapidjson::Value& array, Containers::StringView token) {
    // Ten digits hold every index and do not overflow below.
    if(token.isEmpty() || token.size() > 10 || (token.size() > 1 && token.front() == '0')) return nullptr;
    std::uint64_t index = 0;
    for(const char digit: token) {
        if(digit < '0' || digit > '9') return nullptr;
        index = index * 10 + std::uint64_t(digit - '0');
    }
    return index < array.Size() ? &array[rapidjson::SizeType(index)] : nullptr;
}

Containers::StringView emptyText() {
    return {"", 0, Containers::StringViewFlag::Global | Containers::StringViewFlag::NullTerminated};
}

Containers::StringView textOf(const rapidjson::Value& value) {
    if(!value.IsString()) return emptyText();
    return {value.GetString(), value.GetStringLength(), Containers::StringViewFlag::NullTerminated};
}

rapidjson::Value* scanMembers(rapidjson::Value& object, Containers::StringView key) {
    if(!object.IsObject()) return nullptr;
    for(auto member = object.MemberBegin(), end = object.MemberEnd(); member != end; ++member)
        if(textOf(member->name) == key) return &member->value;
    return nullptr;
}

}
