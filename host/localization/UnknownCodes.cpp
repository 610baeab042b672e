#include "UnknownCodes.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>

#include "../document/PrintableText.h"
#include "LanguageLookup.h"
#include "PseudoLocale.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::format;

constexpr std::size_t MaxSearches = 100;

}

void UnknownCodes::clear() {
    _codes.clear();
    _indices.clear();
}

bool UnknownCodes::hasLanguages() {
    return std::any_of(_codes.begin(), _codes.end(),
        [this](const Code& code) { return code.code != PseudoLocale::Code && nearest(code.code) != -1; });
}

Int UnknownCodes::nearest(const Containers::StringView code) {
    const auto known = _nearest.find(code);
    if(known != _nearest.end()) return known->second;
    if(_nearest.size() == MaxSearches) return -1;
    Int language = nearestLanguage(code);
    if(language != -1)
        if(const Int same = sameLanguage(UnsignedInt(language), _known); same != -1) language = same;
    _nearest.emplace(Containers::String{code}, language);
    return language;
}

void UnknownCodes::add(const Containers::StringView code, const Containers::StringView file) {
    const auto [place, isNew] = _indices.emplace(Containers::String{code}, _codes.size());
    if(isNew) _codes.push_back({Containers::String{code}, Containers::String{file}, 0});
    else ++_codes[place->second].moreFiles;
}

void UnknownCodes::describe(
    const Containers::ArrayView<const UnsignedInt> taken, Containers::Array<FileNotice>& notices) {
    for(const Code& code: _codes) {
        const Containers::String shown = printable(code.code);
        const bool isPseudo = code.code == PseudoLocale::Code;
        const Int language = isPseudo ? -1 : nearest(code.code);
        Containers::String reason = isPseudo ? Containers::String{"made-up texts of an export are not read"}
                                             : format("no language has the code {}", shown);
        if(code.moreFiles)
            reason = format("{} ({} more file{})", reason, code.moreFiles, code.moreFiles == 1 ? "" : "s");
        if(language != -1) {
            const Containers::StringView known = AllLanguages[language].code;
            const bool isTaken = std::find(taken.begin(), taken.end(), UnsignedInt(language)) != taken.end();
            reason = isTaken
                ? format("{}; the nearest is {}, of which there are other files", reason, known)
                : format("{}; the nearest is {}: rename it, or map it with --map {}={}", reason, known, shown, known);
        }
        Containers::arrayAppend(notices, FileNotice{printable(code.firstFile), std::move(reason)});
    }
}

}
