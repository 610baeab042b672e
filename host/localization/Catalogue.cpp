#include "Catalogue.h"

#include <algorithm>
#include <new>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

namespace QuorvaneEngine {

namespace {

/** In bytes: values are few, or none. */
constexpr std::size_t ValueBlock = 1024;

}

Catalogue::Catalogue() = default;
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue&&) noexcept = default;
Catalogue& Catalogue::operator=(Catalogue&&) noexcept = default;

bool Catalogue::add(const Containers::StringView key, const Containers::StringView text) {
    if(find(key) != -1) return false;
    append(_texts.add(key), _texts.add(text), nullptr);
    return true;
}

bool Catalogue::addValue(const Containers::StringView key, const rapidjson::Value& value) {
    if(find(key) != -1) return false;
    append(_texts.add(key), {}, &copy(value));
    return true;
}

Containers::StringView Catalogue::keepFile(Containers::String&& bytes) {
    // What is small would move with the catalogue.
    _file = bytes.isSmall() ? Containers::String{Corrade::Containers::AllocatedInit, bytes} : std::move(bytes);
    return _file;
}

void Catalogue::append(
    const Containers::StringView key, const Containers::StringView text, const rapidjson::Value* const value) {
    Containers::arrayAppend(_entries, CatalogueEntry{key, text, value});
}

const rapidjson::Value& Catalogue::copy(const rapidjson::Value& value) {
    if(!_values) _values.emplace(ValueBlock);
    return *new(_values->Malloc(sizeof(rapidjson::Value))) rapidjson::Value{value, *_values};
}

void Catalogue::addNotice(const Containers::StringView key, const Containers::StringView reason) {
    Containers::arrayAppend(_notices, CatalogueNotice{Containers::String{key}, Containers::String{reason}});
}

Int Catalogue::find(const Containers::StringView key) const {
    updateIndex();
    const std::uint32_t found =
        _index.find(HashIndex::hash(key), [&](const std::uint32_t position) { return _entries[position].key == key; });
    if(found != HashIndex::None) return Int(found);
    const auto crowded = _crowded.find(key);
    return crowded == _crowded.end() ? -1 : crowded->second;
}

void Catalogue::updateIndex() const {
    if(_indexed == 0) _index.reset(_entries.size());
    for(; _indexed != _entries.size(); ++_indexed) {
        const Containers::StringView key = _entries[_indexed].key;
        if(!_index.insert(HashIndex::hash(key), std::uint32_t(_indexed))) _crowded.emplace(key, Int(_indexed));
    }
}

Containers::StringView Catalogue::spelling(const std::size_t entry) const {
    const Spelling* const found = std::lower_bound(_spellings.begin(), _spellings.end(), entry,
        [](const Spelling& spelling, const std::size_t index) { return spelling.entry < index; });
    return found != _spellings.end() && found->entry == entry ? found->text : Containers::StringView{};
}

bool Catalogue::isFlat() const {
    bool isDistinct = false;
    for(const CatalogueEntry& entry: _entries) {
        if(entry.value && (entry.value->IsObject() || entry.value->IsArray())) return false;
        for(std::size_t i = 0; i != entry.key.size(); ++i) {
            const char c = entry.key[i];
            if(c == '.') return false;
            const Containers::StringView rest = entry.key.exceptPrefix(i);
            isDistinct = isDistinct || c == ' ' || rest.hasPrefix("%2E") || rest.hasPrefix("%3A");
        }
    }
    return isDistinct;
}

}
