#include "Utils/StringWriter.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine::Utils {

using Corrade::Containers::Array;
using Corrade::Containers::StringView;

StringWriter::StringWriter(StringWriter&& other) noexcept
    : _data{std::move(other._data)}, _size{std::exchange(other._size, 0)} {}

StringWriter& StringWriter::operator=(StringWriter&& other) noexcept {
    std::swap(_data, other._data);
    std::swap(_size, other._size);
    return *this;
}

void StringWriter::appendInto(const StringView text) {
    if(available() <= text.size()) {
        Corrade::Utility::Error{} << "Assertion available() > bytes failed at Utils/StringWriter:83";
        std::abort();
    }
    _data[_size + text.size()] = '\0';
    // A text of no bytes may be null.
    if(!text.isEmpty()) std::memcpy(_data.data() + _size, text.data(), text.size());
    _size += text.size();
}

/** @return the former buffer */
Array<char> StringWriter::grow(const std::uint64_t capacity) {
    Array<char> former = std::exchange(_data, Array<char>{Corrade::NoInit, capacity});
    const std::uint64_t written = std::exchange(_size, 0);
    appendInto(former.prefix(written));
    return former;
}

void StringWriter::reserve(const std::uint64_t capacity) {
    if(_data.size() < capacity) grow(capacity);
}

void StringWriter::append(const StringView text) {
    Array<char> former;
    if(available() <= text.size())
        former = grow(std::max(std::uint64_t(float(_data.size()) * 1.5f), _size + text.size() + 1));
    appendInto(text);
}

StringView StringWriter::text() const { return {_data.data(), _size}; }

}
