#include "PathParts.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include <rapidjson/pointer.h>

namespace QuorvaneEngine {

bool isPointer(const Containers::StringView path) {
    if(path.isEmpty() || path[0] != '/') return false;
    for(std::size_t i = 0; i != path.size(); ++i)
        if(path[i] == '~' && (i + 1 == path.size() || (path[i + 1] != '0' && path[i + 1] != '1'))) return false;
    return true;
}

std::size_t lastSlash(const Containers::StringView path) {
    for(std::size_t i = path.size(); i != 0; --i)
        if(path[i - 1] == '/') return i - 1;
    return NoSlash;
}

Containers::String unescaped(const Containers::StringView token) {
    Containers::String key{Corrade::ValueInit, token.size()};
    std::size_t size = 0;
    for(std::size_t i = 0; i != token.size(); ++i) {
        if(token[i] == '~') key[size++] = token[++i] == '0' ? '~' : '/';
        else key[size++] = token[i];
    }
    return Containers::StringView{key}.prefix(size);
}

Containers::String escaped(const Containers::StringView key) {
    const auto isSpecial = [](const char c) { return c == '~' || c == '/'; };
    const auto special = std::size_t(std::count_if(key.begin(), key.end(), isSpecial));
    Containers::String token{Corrade::ValueInit, key.size() + special};
    std::size_t size = 0;
    for(const char c: key) {
        token[size++] = isSpecial(c) ? '~' : c;
        if(isSpecial(c)) token[size++] = c == '~' ? '0' : '1';
    }
    return token;
}

TokenIndex tokenIndex(const Containers::StringView token) {
    TokenIndex index;
    const char* digit = token.begin();
    if(digit != token.end() && *digit == '-') {
        index.negative = true;
        ++digit;
    }
    const char* const first = digit;
    while(digit != token.end() && *digit >= '0' && *digit <= '9') ++digit;
    index.valid = digit != first && (digit == token.end() || *digit == '\0');
    if(std::from_chars(first, digit, index.value).ec != std::errc{}) index.value = ~std::uint64_t{};
    const bool isCanonical =
        index.valid && digit == token.end() && !index.negative && (digit - first == 1 || *first != '0');
    index.isElement = isCanonical && index.value < rapidjson::kPointerInvalidIndex;
    if(index.value == 0) index.negative = false;
    return index;
}

}
