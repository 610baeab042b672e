#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

namespace Containers = Corrade::Containers;

/** What stands next in a JSON text. */
enum class JsonToken {
    ObjectBegin,
    ObjectEnd,
    ArrayBegin,
    ArrayEnd,
    /** The name of a member; its value follows. */
    Name,
    Text,
    Number,
    True,
    False,
    Null,
    /** Nothing more: the whole text is right. */
    End,
    /** What @ref JsonReader would refuse. Where and why, it can say. */
    Wrong
};

/** Steps through JSON text (RFC 8259) that may come from anywhere, in one pass, without a document in memory.

    Refuses all that @ref JsonReader::read() refuses, with the same limits, as soon as it gets there: members that are twice in one
    object when the object ends. Takes time in proportion to the text, and never aborts. */
class QUORVANE_API JsonScanner {
public:
    /** @param text     all bytes of a file; a byte order mark in front is skipped. Must outlive the scanner and its views. */
    explicit JsonScanner(Containers::StringView text);
    ~JsonScanner();
    JsonScanner(const JsonScanner&) = delete;
    JsonScanner& operator=(const JsonScanner&) = delete;

    /** Steps on. After @ref JsonToken::End and @ref JsonToken::Wrong it may not be called again. */
    JsonToken next();

    /** The decoded name or text, or the number as it is written, if that is what stands here; valid as long as the scanner. */
    Containers::StringView text() const { return _text; }

    /** Whether @ref text() is a part of the scanned text, as it is where nothing is escaped. */
    bool isInPlace() const { return _isInPlace; }

    /** The number that stands here, of the type that @ref JsonReader gives it. */
    const rapidjson::Value& number() const { return _number; }

    /** Where what stands here ends, in bytes from the beginning. */
    std::size_t offset() const { return std::size_t(_at - _begin); }

    /** How many members or elements the object or array had that ended here. */
    UnsignedInt count() const { return _count; }

    /** Whether a double can hold a number with an exponent of @ref JsonReader::MaxExponentDigits digits; the JSON library takes some
        for others that are not.
        @param number   as JSON writes it */
    static bool isInRange(Containers::StringView number);

private:
    struct Level {
        bool isObject;
        bool isValueNext;
        UnsignedInt count;
        std::size_t firstName;
    };

    void skipBlanks();
    bool take(char character);
    bool takeWord(Containers::StringView word);
    JsonToken value();
    JsonToken member(Level& level);
    JsonToken begin(bool isObject);
    JsonToken end();
    bool string();
    bool decode(const char* begin);
    bool decodeEscape(std::string& decoded);
    Int codeUnit();
    JsonToken numberToken();
    bool hasNameTwice(std::size_t first) const;

    const char* _begin;
    const char* _at;
    const char* _end;
    bool _isStarted = false;
    std::vector<Level> _levels;

    Containers::StringView _text;
    bool _isInPlace = true;
    rapidjson::Value _number;
    UnsignedInt _count = 0;

    /** Of the objects that are open, the innermost last. */
    std::vector<Containers::StringView> _names;
    /** What is not in place; does not move what it holds. */
    std::deque<std::string> _decoded;
};

}
