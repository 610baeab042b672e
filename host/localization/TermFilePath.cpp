#include "TermFilePath.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Format.h>

#include "LanguageLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

TermFilePath parsedParts(const Containers::StringView code, const Containers::StringView nameSpace,
    const Containers::ArrayView<const LanguageMapping> map) {
    for(const LanguageMapping& mapping: map)
        if(mapping.code == code) return {code, nameSpace, Int(mapping.language)};
    return {code, nameSpace, findLanguage(code)};
}

}

bool TermFilePath::parse(const Containers::StringView path, const bool isEnclosed,
    const Containers::ArrayView<const LanguageMapping> map, TermFilePath& parsed) {
    if(!path.hasSuffix(".json"_s)) return false;
    const Containers::Array<Containers::StringView> parts = path.exceptSuffix(5).split('/');
    const std::size_t count = parts.size();
    // Systems put files of their own beside, with names that begin with a dot.
    if(count == 0 || count > (isEnclosed ? 3 : 2) || parts.front() == "__MACOSX"_s) return false;
    for(const Containers::StringView part: parts)
        if(part.isEmpty() || part.hasPrefix('.')) return false;

    parsed = count == 1 ? parsedParts(parts[0], DefaultNamespace, map)
                        : parsedParts(parts[count - 2], parts[count - 1], map);
    if(parsed.language == -1 && count == 2 && isEnclosed) {
        const TermFilePath inFolder = parsedParts(parts[1], DefaultNamespace, map);
        if(inFolder.language != -1) parsed = inFolder;
    }
    return true;
}

Containers::String TermFilePath::make(const Containers::StringView code, const Containers::StringView nameSpace) {
    return Corrade::Utility::format("{}/{}.json", code, nameSpace);
}

}
