#include "ImportedValues.h"

#include <string>

#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/JsonText.h"
#include "Catalogue.h"
#include "ProjectEdit.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** The spelling of a number, where it is not ours. */
Containers::StringView ownSpelling(const CatalogueEntry& entry, const Containers::StringView spelling) {
    if(!entry.value || !entry.value->IsNumber()) return {};
    std::string ours;
    appendJsonNumber(ours, *entry.value);
    return spelling == Containers::StringView{ours.data(), ours.size()} ? Containers::StringView{} : spelling;
}

bool isSame(const rapidjson::Value& known, const CatalogueEntry& entry, const Containers::StringView spelling) {
    if(!spelling.isEmpty()) return spellingOf(known) == spelling;
    if(!spellingOf(known).isEmpty()) return false;
    if(entry.value) return isSameValue(known, *entry.value);
    return known.IsString() && Containers::StringView{known.GetString(), known.GetStringLength()} == entry.text;
}

}

ImportedValues::ImportedValues(
    const rapidjson::Value& root, const ProjectTerms& terms, const Containers::StringView code)
    : _code{code}, _known{root, terms, code} {}

ImportedValues::~ImportedValues() = default;

TermOutcome ImportedValues::keep(const Containers::StringView key, const UnsignedInt nameSpace,
    const CatalogueEntry& entry, const Containers::StringView spelling) {
    const Containers::StringView own = ownSpelling(entry, spelling);
    const Int known = _known.find(key);
    const KeptValues::Entry* const before = known == -1 ? nullptr : &_known.entries()[std::size_t(known)];
    if(before && isSame(*before->value, entry, own)) return TermOutcome::Unchanged;
    _changes.push_back({_memory.add(key), &entry, nameSpace, _known.position(key), own});
    return before ? TermOutcome::Changed : TermOutcome::Added;
}

bool ImportedValues::drop(const Containers::StringView key) {
    const Int known = _known.entries().isEmpty() ? -1 : _known.find(key);
    if(known == -1 || (!_isDropped.empty() && _isDropped[std::size_t(known)])) return false;
    _isDropped.resize(_known.entries().size());
    _isDropped[std::size_t(known)] = true;
    const KeptValues::Entry& entry = _known.entries()[std::size_t(known)];
    _changes.push_back({entry.key, nullptr, UnsignedInt(entry.place.nameSpace), entry.position, {}});
    return true;
}

void ImportedValues::appendKeys(const UnsignedInt nameSpace, std::vector<TermLayout::Key>& keys) const {
    const auto known = _known.entries();
    for(std::size_t i = 0; i != known.size(); ++i)
        if(known[i].place.nameSpace == Int(nameSpace) && (_isDropped.empty() || !_isDropped[i]))
            keys.push_back({known[i].key, known[i].place.fileKey});
    for(const Change& change: _changes)
        if(change.entry && change.nameSpace == nameSpace) keys.push_back({change.key, change.entry->key});
}

TextDigest ImportedValues::replaced() const {
    TextDigest digest;
    std::string text;
    for(const Change& change: _changes) {
        const Int known = _known.find(change.key);
        if(known == -1) continue;
        text.clear();
        appendJson(text, *_known.entries()[std::size_t(known)].value);
        digest.add({text.data(), text.size()});
    }
    return digest;
}

void ImportedValues::collect(ProjectEdit& edit) {
    for(Change& change: _changes) change.key = edit.keep(change.key);
    edit.setMembers({"localization"_s, "values"_s, _code},
        {_changes.size(), [this](const std::size_t i) { return _changes[i].key; },
            [this](const std::size_t i) { return _changes[i].position; },
            [this](const std::size_t i, rapidjson::Document& out) {
                const CatalogueEntry* const entry = _changes[i].entry;
                const Containers::StringView spelling = _changes[i].spelling;
                if(!entry) out.Null();
                else if(!spelling.isEmpty()) {
                    out.StartObject();
                    out.Key("number", 6, true);
                    out.String(spelling.data(), rapidjson::SizeType(spelling.size()), true);
                    out.EndObject(1);
                } else if(entry->value) entry->value->Accept(out);
                else out.String(entry->text.data(), rapidjson::SizeType(entry->text.size()), true);
            }});
}

void KeptNotice::add(const Containers::StringView key, const Containers::StringView reason) {
    if(_count++) return;
    _key = key;
    _reason = reason;
}

void KeptNotice::report(
    LocalizationReport& report, const UnsignedInt language, const Containers::StringView file) const {
    if(_count == 0) return;
    const Containers::String more =
        _count == 1 ? Containers::String{} : Corrade::Utility::format(", and so are {} more", _count - 1);
    report.add(language, TermOutcome::Notice, _key, _reason + ": it is kept as it is"_s + more, file);
}

Containers::StringView describeValue(const rapidjson::Value& value) {
    if(value.IsNumber()) return "is a number and no text"_s;
    if(value.IsBool()) return "is true or false and no text"_s;
    return value.IsArray() ? "is an empty array and no text"_s : "is an empty object and no text"_s;
}

}
