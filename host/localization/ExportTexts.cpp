#include "ExportTexts.h"

#include <cstring>
#include <iterator>

#include "Fingerprint.h"
#include "Parallel.h"
#include "QuorvaneEditor/AllLanguages.h"

namespace QuorvaneEngine {

ExportTexts::ExportTexts(const rapidjson::Value& root, const UnsignedInt defaultLanguage,
    const Containers::ArrayView<const UnsignedInt> languages)
    : _defaultLanguage{defaultLanguage}, _terms{root} {
    // The values of the default language come first: their order serves the others.
    _languages.push_back({defaultLanguage, {}, {}, {}});
    for(const UnsignedInt language: languages)
        if(!find(language)) _languages.push_back({language, {}, {}, {}});
    forEachInParallel(_languages.size() + 1, [&](const std::size_t i) {
        if(i == _languages.size()) return readFingerprints();
        Language& one = _languages[i];
        const Containers::StringView code = AllLanguages[one.language].code;
        if(i != 0) one.translations = std::make_unique<ProjectTranslations>(root, _terms, code);
        one.values = std::make_unique<KeptValues>(root, _terms, code);
    });

    // What the default language has something else in place of since is not written.
    const auto hasPlace = [this](const Language& one, const KeptValues::Entry& value) {
        return one.language == _defaultLanguage || _languages.front().values->find(value.key) != -1 ||
            _terms.find(UnsignedInt(value.place.nameSpace), value.place.fileKey) != -1;
    };
    const std::size_t count = _terms.namespaces().size();
    std::vector<std::vector<TermLayout::Key>> others(count), values(count);
    for(Language& one: _languages) {
        if(one.translations)
            for(const ProjectTranslations::Other& other: one.translations->others())
                others[std::size_t(other.place.nameSpace)].push_back({other.key, other.place.fileKey});
        for(const KeptValues::Entry& value: one.values->entries()) {
            if(hasPlace(one, value))
                values[std::size_t(value.place.nameSpace)].push_back({value.key, value.place.fileKey});
            else one.withoutPlace.push_back(value.key);
        }
    }
    _plurals.resize(count);
    _layouts.resize(count);
    std::vector<std::vector<LayoutConflict>> conflicts(count);
    forEachInParallel(count, [&](const std::size_t i) {
        _plurals[i] = std::make_unique<PluralSets>(_terms.fileKeys(UnsignedInt(i)), AllLanguages[defaultLanguage].code);
        _layouts[i] = std::make_unique<TermLayout>(_terms, UnsignedInt(i), *_plurals[i],
            Containers::ArrayView<const TermLayout::Key>{others[i].data(), others[i].size()},
            Containers::ArrayView<const TermLayout::Key>{values[i].data(), values[i].size()}, conflicts[i]);
    });
    bool hasFiles = false;
    for(std::size_t i = 0; i != count; ++i) {
        const bool hasFile = _layouts[i]->size() || _terms.namespaces()[i].isNoted;
        const bool hasTerms = !_terms.fileKeys(UnsignedInt(i)).isEmpty();
        if(hasFile || hasTerms) _exported.push_back(UnsignedInt(i));
        _isHidden.push_back(!hasFile && hasTerms);
        hasFiles = hasFiles || hasFile;
        _conflicts.insert(_conflicts.end(), conflicts[i].begin(), conflicts[i].end());
    }
    if(_exported.empty()) _exported.push_back(0);
    if(!hasFiles) _isHidden[_exported[0]] = false;
}

ExportTexts::~ExportTexts() = default;

void ExportTexts::readFingerprints() {
    if(_languages.size() == 1) return;
    _fingerprints.resize(_terms.terms().size());
    for(std::size_t i = 0; i != _fingerprints.size(); ++i) {
        const Containers::StringView source = _terms.terms()[i].source;
        if(source.isEmpty()) continue;
        const Containers::String digits = fingerprint(source);
        std::memcpy(_fingerprints[i].digits, digits.data(), sizeof(Fingerprint::digits));
    }
}

const ExportTexts::Language* ExportTexts::find(const UnsignedInt language) const {
    for(const Language& one: _languages)
        if(one.language == language) return &one;
    return nullptr;
}

Containers::ArrayView<const Containers::StringView> ExportTexts::keysWithoutPlace(const UnsignedInt language) const {
    const std::vector<Containers::StringView>& keys = find(language)->withoutPlace;
    return {keys.data(), keys.size()};
}

bool ExportTexts::isStale(const ProjectTranslation::Parts& translation, const std::size_t source) const {
    // Every text of every language comes here.
    const char* const digits = _fingerprints[source].digits;
    constexpr std::size_t Size = sizeof(Fingerprint::digits);
    if(translation.source.size() == Size && std::memcmp(translation.source.data(), digits, Size) == 0) return false;
    return !translation.text.isEmpty() && *digits;
}

/** A plural form that only the target language has is a translation of the form that every language has. */
bool ExportTexts::isStale(const ProjectTranslations::Other& form) const {
    const UnsignedInt nameSpace = UnsignedInt(form.place.nameSpace);
    PluralForm parsed;
    if(!parsePluralForm(form.place.fileKey, parsed)) return false;
    const Int set = _plurals[nameSpace]->find(parsed);
    if(set == -1) return false;
    const Int other = _plurals[nameSpace]->sets()[std::size_t(set)].form(PluralCategory::Other);
    return isStale(form.translation.parts(), _terms.termAt(nameSpace, std::size_t(other)));
}

std::vector<ExportTexts::File> ExportTexts::files(const UnsignedInt language) const {
    const Language& one = *find(language);
    std::vector<File> files;
    std::vector<File*> byNamespace(_layouts.size());
    files.reserve(_exported.size());
    for(const UnsignedInt nameSpace: _exported) {
        files.push_back({nameSpace, {}, {}});
        files.back().texts.resize(_layouts[nameSpace]->size());
        byNamespace[nameSpace] = &files.back();
    }
    for(std::size_t i = 0; i != _terms.terms().size(); ++i) {
        const ProjectTerm& term = _terms.terms()[i];
        const Int number = _layouts[term.nameSpace]->term(i);
        if(number == -1) continue;
        File& file = *byNamespace[term.nameSpace];
        if(language == _defaultLanguage) {
            file.texts[std::size_t(number)] = term.source;
            continue;
        }
        const ProjectTranslation::Parts translation = (*one.translations)[i].parts();
        file.texts[std::size_t(number)] = translation.text;
        file.staleCount += isStale(translation, i);
    }
    Int last = -1;
    if(one.translations)
        for(const ProjectTranslations::Other& other: one.translations->others()) {
            const Int number = _layouts[std::size_t(other.place.nameSpace)]->find(other.place.fileKey, last);
            if(number == -1) continue;
            File& file = *byNamespace[std::size_t(other.place.nameSpace)];
            Containers::StringView& text = file.texts[std::size_t(number)];
            if(!text.isEmpty()) continue;
            text = other.translation.text();
            file.staleCount += isStale(other);
        }
    for(const KeptValues::Entry& value: one.values->entries()) {
        const Int number = _layouts[std::size_t(value.place.nameSpace)]->find(value.place.fileKey, last);
        if(number == -1) continue;
        File& file = *byNamespace[std::size_t(value.place.nameSpace)];
        if(!file.texts[std::size_t(number)].isEmpty()) continue;
        file.values.resize(file.texts.size());
        file.values[std::size_t(number)] = value.value;
    }
    return files;
}

}
