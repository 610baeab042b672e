#include "TextIndex.h"

namespace QuorvaneEngine {

TextIndex::TextIndex() = default;
TextIndex::~TextIndex() = default;
TextIndex::TextIndex(TextIndex&&) noexcept = default;
TextIndex& TextIndex::operator=(TextIndex&&) noexcept = default;

void TextIndex::reserve(const std::size_t count) {
    if(!_texts.empty()) return;
    _texts.reserve(count);
    _index.reset(count);
}

UnsignedInt TextIndex::add(const Containers::StringView text) {
    const Int found = find(text);
    if(found != -1) return UnsignedInt(found);
    const UnsignedInt number = UnsignedInt(_texts.size());
    _texts.push_back(text);
    if(!_index.insert(HashIndex::hash(text), number)) _crowded.emplace(text, Int(number));
    return number;
}

Int TextIndex::find(const Containers::StringView text) const {
    const std::uint32_t number =
        _index.find(HashIndex::hash(text), [&](const std::uint32_t candidate) { return _texts[candidate] == text; });
    if(number != HashIndex::None) return Int(number);
    if(_crowded.empty()) return -1;
    const auto found = _crowded.find(text);
    return found == _crowded.end() ? -1 : found->second;
}

Int TextIndex::find(const Containers::StringView text, Int& last) const {
    const std::size_t next = std::size_t(last) + 1;
    const Int found = next < _texts.size() && _texts[next] == text ? Int(next) : find(text);
    if(found != -1) last = found;
    return found;
}

}
