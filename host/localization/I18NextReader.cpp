#include "I18NextReader.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <system_error>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "../document/JsonReader.h"
#include "../document/JsonScanner.h"
#include "Catalogue.h"
#include "I18NextVersion3.h"
#include "ReservedNames.h"
#include "TermKey.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Keys repeat the names that lie around them. All of them may be so many times as long as the file, and these bytes more. */
constexpr std::size_t MaxKeyRatio = 16;
constexpr std::size_t MinKeyRoom = 65536;

bool isBlank(const char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}

/** Fills a catalogue with what its own file holds. */
class CatalogueBuilder {
public:
    /** @param catalogue    has its file */
    explicit CatalogueBuilder(Catalogue& catalogue)
        : _catalogue{catalogue},
          _file{catalogue._file},
          _scanner{_file},
          _keyRoom{_file.size() * MaxKeyRatio + MinKeyRoom} {}

    /** @return false where the file is refused: for what it is not, with a reason, or for a text that is wrong, without */
    bool run() {
        for(;;) {
            const JsonToken token = _scanner.next();
            if(token == JsonToken::End) return true;
            if(token == JsonToken::Wrong || !take(token)) return false;
        }
    }

    /** Why the file is refused, and where, in bytes from the beginning. */
    Containers::StringView reason;
    std::size_t offset = 0;

private:
    static constexpr int NoElements = -1;

    struct Level {
        /** Of the path to the container. */
        std::size_t pathSize;
        /** Index of the next element, or @ref NoElements . */
        int element;
    };

    static rapidjson::Value numberOf(const Containers::StringView text) {
        const bool isInteger = !text.contains('.') && !text.contains('e') && !text.contains('E');
        std::int64_t integer;
        std::uint64_t large;
        // There is no integer -0.
        if(isInteger && text != "-0"_s) {
            if(std::from_chars(text.begin(), text.end(), integer).ec == std::errc{}) return rapidjson::Value{integer};
            if(std::from_chars(text.begin(), text.end(), large).ec == std::errc{}) return rapidjson::Value{large};
        }
        double number = 0.0;
        std::from_chars(text.begin(), text.end(), number);
        return rapidjson::Value{number};
    }

    bool take(const JsonToken token) {
        switch(token) {
        case JsonToken::ObjectBegin: return beginObject();
        case JsonToken::ObjectEnd: return endContainer(rapidjson::kObjectType);
        case JsonToken::ArrayBegin: return beginArray();
        case JsonToken::ArrayEnd: return endContainer(rapidjson::kArrayType);
        case JsonToken::Name: return name(_scanner.text());
        case JsonToken::Text: return begin() && append(text(), nullptr);
        case JsonToken::Null: return begin() && append({}, nullptr);
        case JsonToken::Number: return number(_scanner.text());
        default: return begin() && append({}, &_catalogue.copy(rapidjson::Value{token == JsonToken::True}));
        }
    }

    bool name(const Containers::StringView name) {
        Level& level = _levels.back();
        _path.resize(level.pathSize);
        if(_levels.size() > 1) _path += '.';
        TermKey::appendSegment(_path, name);
        const Containers::StringView reason = ReservedNames::memberReason(name);
        if(reason.isEmpty()) return true;
        if(!takeKeyRoom()) return false;
        _catalogue.addNotice(path(), reason);
        return true;
    }

    bool number(const Containers::StringView text) {
        if(!begin()) return false;
        const Catalogue::Spelling spelling{UnsignedInt(_catalogue._entries.size()), text};
        Containers::arrayAppend(_catalogue._spellings, spelling);
        return append({}, &_catalogue.copy(numberOf(text)));
    }

    bool beginObject() {
        if(!_levels.isEmpty() && !begin()) return false;
        Containers::arrayAppend(_levels, Level{_path.size(), NoElements});
        return true;
    }

    bool beginArray() {
        if(!begin()) return false;
        Containers::arrayAppend(_levels, Level{_path.size(), 0});
        return true;
    }

    bool endContainer(const rapidjson::Type type) {
        _path.resize(_levels.back().pathSize);
        Containers::arrayRemoveSuffix(_levels);
        return _scanner.count() != 0 || _levels.isEmpty() || append({}, &_catalogue.copy(rapidjson::Value{type}));
    }

    /** What the scanner decoded goes with it. */
    Containers::StringView text() {
        return _scanner.isInPlace() ? _scanner.text() : _catalogue._texts.add(_scanner.text());
    }

    Containers::StringView path() const { return {_path.data(), _path.size()}; }

    /** Makes the path that of the value which stands here, in an object by @ref name() . */
    bool begin() {
        if(_levels.isEmpty()) {
            const char* const text = JsonReader::withoutMark(_file).begin();
            const char* const value = std::find_if_not(text, _file.end(), isBlank);
            return stop("the file holds no object"_s, std::size_t(value - _file.begin()));
        }
        Level& level = _levels.back();
        if(level.element == NoElements) return true;
        if(level.element == TermKey::MaxElements) return stop("an array has too many elements"_s, _scanner.offset());
        char digits[16];
        const char* const end = std::to_chars(digits, digits + sizeof(digits), level.element++).ptr;
        _path.resize(level.pathSize);
        _path.append(".[").append(digits, std::size_t(end - digits)) += ']';
        return true;
    }

    bool append(const Containers::StringView text, const rapidjson::Value* const value) {
        if(!takeKeyRoom()) return false;
        _catalogue.append(_catalogue._texts.add(path()), text, value);
        return true;
    }

    bool takeKeyRoom() {
        if(_path.size() > _keyRoom) return stop("too many keys repeat long names around them"_s, _scanner.offset());
        _keyRoom -= _path.size();
        return true;
    }

    bool stop(const Containers::StringView why, const std::size_t where) {
        reason = why;
        offset = where;
        return false;
    }

    Catalogue& _catalogue;
    Containers::StringView _file;
    JsonScanner _scanner;
    /** How many bytes may still become keys. */
    std::size_t _keyRoom;
    std::string _path;
    Containers::Array<Level> _levels;
};

bool readI18Next(Containers::String bytes, Catalogue& catalogue, JsonError& error) {
    const Containers::StringView file = catalogue.keepFile(std::move(bytes));
    CatalogueBuilder builder{catalogue};
    if(builder.run()) {
        noticeVersion3(catalogue);
        return true;
    }
    const Containers::StringView text = JsonReader::withoutMark(file);
    if(builder.reason.isEmpty()) JsonReader::findError(file, error);
    else if(JsonReader::check(text, error))
        error = JsonReader::errorAt(text, builder.offset - (file.size() - text.size()), builder.reason);
    return false;
}

}
