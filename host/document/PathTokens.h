#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include <rapidjson/document.h>

namespace QuorvaneEngine {

namespace Containers = Corrade::Containers;

/** Reads the tokens of a JSON Pointer (RFC 6901), one after another. Allocates only for a token of more than 256 bytes that
    holds an escape. */
class PathTokens {
public:
    /** @param path     is viewed, not copied */
    explicit PathTokens(Containers::StringView path);

    /** Whether the path is a pointer: empty, or begins with "/" and has no "~" but in "~0" and "~1". */
    bool isValid() const { return _valid; }

    /** Moves to the next token, unescaped; false at the end and for a path that is not valid.
        @param token    receives a view that is valid until the next call */
    bool next(Containers::StringView& token);

private:
    Containers::StringView unescape(const char* begin, const char* end);

    const char* _at;
    const char* _end;
    bool _valid;
    bool _escapes;
    char _buffer[256];
    Containers::Array<char> _long;
};

/** The element that a token addresses, or null: an index is "0" or digits without a leading zero.
    @param array    must be an array */
rapidjson::Value* arrayElement(rapidjson::Value& array, Containers::StringView token);

/** An empty text, NUL-terminated. */
Containers::StringView emptyText();

/** The text of a JSON string, NUL-terminated; an empty text for any other value. */
Containers::StringView textOf(const rapidjson::Value& value);

/** The member of a value by comparing one key after another; null where there is none, and for what is no object. */
rapidjson::Value* scanMembers(rapidjson::Value& object, Containers::StringView key);

/** The value at a path, or null.
    @param member   finds members: `rapidjson::Value*(rapidjson::Value& object, StringView key)` */
template <class FindMember>
rapidjson::Value* valueAt(rapidjson::Value& root, Containers::StringView path, FindMember&& member) {
    PathTokens tokens{path};
    if(!tokens.isValid()) return nullptr;
    rapidjson::Value* value = &root;
    Containers::StringView token;
    while(value && tokens.next(token)) {
        if(value->IsObject()) value = member(*value, token);
        else if(value->IsArray()) value = arrayElement(*value, token);
        else value = nullptr;
    }
    return value;
}

}
