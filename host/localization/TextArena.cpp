#include "TextArena.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>

#include "../document/LargeText.h"

namespace QuorvaneEngine {

namespace {

/** In bytes. Pieces double, so that a small arena is small and a large one has few. */
constexpr std::size_t FirstPiece = 1024;
constexpr std::size_t LargestPiece = std::size_t(1) << 18;

}

TextArena::TextArena() = default;
TextArena::~TextArena() = default;

TextArena::TextArena(TextArena&& other) noexcept { append(std::move(other)); }

TextArena& TextArena::operator=(TextArena&& other) noexcept {
    std::swap(_pieces, other._pieces);
    std::swap(_free, other._free);
    std::swap(_left, other._left);
    std::swap(_nextSize, other._nextSize);
    return *this;
}

Containers::StringView TextArena::add(const Containers::StringView text) {
    return add(Containers::ArrayView<const Containers::StringView>{&text, 1});
}

Containers::StringView TextArena::add(const Containers::ArrayView<const Containers::StringView> pieces) {
    std::size_t size = 0;
    for(const Containers::StringView piece: pieces) size += piece.size();
    if(size == 0) return "";
    char* const begin = allocate(size);
    char* end = begin;
    for(const Containers::StringView piece: pieces) {
        if(piece.isEmpty()) continue;
        std::memcpy(end, piece.data(), piece.size());
        end += piece.size();
    }
    return {begin, size};
}

void TextArena::append(TextArena&& other) {
    for(Containers::String& piece: other._pieces) Containers::arrayAppend(_pieces, std::move(piece));
    if(other._left > _left) {
        _free = other._free;
        _left = other._left;
    }
    _nextSize = std::max(_nextSize, other._nextSize);
    other._pieces = {};
    other._free = nullptr;
    other._left = other._nextSize = 0;
}

char* TextArena::allocate(const std::size_t size) {
    if(size > _left) {
        // A large text gets a piece of its own, and the one that is being filled goes on.
        if(size > LargestPiece / 4) {
            Containers::arrayAppend(_pieces, largeText(size, true));
            return _pieces.back().data();
        }
        _nextSize = std::clamp(2 * _nextSize, FirstPiece, LargestPiece);
        while(_nextSize < size) _nextSize *= 2;
        Containers::arrayAppend(_pieces, largeText(_nextSize, false));
        _free = _pieces.back().data();
        _left = _nextSize;
    }
    char* const begin = _free;
    _free += size;
    _left -= size;
    return begin;
}

}
