#include "JsonOutput.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace QuorvaneEngine {

namespace {

/** Characters that are looked at, and copied, at once. */
constexpr std::size_t BlockSize = 16;

constexpr std::size_t FirstCapacity = 4096;

/** A character takes no more than this, as "\u0000" does. */
constexpr std::size_t LongestEscape = 6;

bool isEscaped(const char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; }

/** Copies characters up to the first one that is escaped.
    @param to   with room for @ref BlockSize more than there are
    @return how many were copied */
std::size_t copyPlain(const char* const from, const std::size_t size, char* const to) {
    std::size_t i = 0;
#ifdef __SSE2__
    const __m128i quote = _mm_set1_epi8('"'), backslash = _mm_set1_epi8('\\'), lastControl = _mm_set1_epi8(0x1f);
    for(; size - i >= BlockSize; i += BlockSize) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), block);
        const __m128i escaped =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(block, quote), _mm_cmpeq_epi8(block, backslash)),
                _mm_cmpeq_epi8(_mm_min_epu8(block, lastControl), block));
        if(const int mask = _mm_movemask_epi8(escaped)) return i + std::size_t(__builtin_ctz(unsigned(mask)));
    }
#endif
    for(; i != size && !isEscaped(from[i]); ++i) to[i] = from[i];
    return i;
}

/** @return behind the escape (RFC 8259, section 7) */
char* escape(const char c, char* to) {
    constexpr const char* kinds = "btn?fr";
    *to++ = '\\';
    if(c == '"' || c == '\\') *to++ = c;
    else if(c >= '\b' && c <= '\r' && c != '\v') *to++ = kinds[c - '\b'];
    else {
        for(const char digit: {'u', '0', '0', c < 0x10 ? '0' : '1', "0123456789ABCDEF"[c & 15]}) *to++ = digit;
    }
    return to;
}

}

JsonOutput::JsonOutput() = default;

JsonOutput::~JsonOutput() { std::free(_data); }

void JsonOutput::reserve(const std::size_t more) {
    if(_capacity - _size >= more) return;
    _capacity = std::max({FirstCapacity, 2 * _capacity, _size + more});
    _data = static_cast<char*>(std::realloc(_data, _capacity));
    if(!_data) std::abort();
}

void JsonOutput::put(const char character) {
    reserve(1);
    _data[_size++] = character;
}

void JsonOutput::put(const Containers::StringView text) {
    if(text.isEmpty()) return;
    reserve(text.size());
    std::memcpy(_data + _size, text.data(), text.size());
    _size += text.size();
}

void JsonOutput::putNewLine(const std::size_t depth) {
    reserve(1 + 2 * depth);
    _data[_size] = '\n';
    std::memset(_data + _size + 1, ' ', 2 * depth);
    _size += 1 + 2 * depth;
}

void JsonOutput::putString(Containers::StringView text) {
    put('"');
    while(!text.isEmpty()) {
        reserve(text.size() + BlockSize + LongestEscape);
        const std::size_t plain = copyPlain(text.data(), text.size(), _data + _size);
        _size += plain;
        if(plain == text.size()) break;
        _size = std::size_t(escape(text[plain], _data + _size) - _data);
        text = text.exceptPrefix(plain + 1);
    }
    put('"');
}

Containers::String JsonOutput::take() {
    put('\0');
    const std::size_t size = std::exchange(_size, 0) - 1;
    _capacity = 0;
    return Containers::String{std::exchange(_data, nullptr), size, [](char* data, std::size_t) { std::free(data); }};
}

}
