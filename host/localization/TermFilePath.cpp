#include "TermFilePath.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Format.h>

#include "LanguageLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

bool parseParts(const Containers::StringView code, const Containers::StringView nameSpace, TermFilePath& parsed) {
    parsed = {code, nameSpace, findLanguage(code)};
    return parsed.language != -1;
}

}

bool TermFilePath::parse(const Containers::StringView path, const bool isEnclosed, TermFilePath& parsed) {
    if(!path.hasSuffix(".json"_s)) return false;
    const Containers::Array<Containers::StringView> parts = path.exceptSuffix(5).split('/');
    const std::size_t count = parts.size();
    // Systems put files of their own beside, with names that begin with a dot.
    if(count == 0 || count > (isEnclosed ? 3 : 2) || parts.front() == "__MACOSX"_s) return false;
    for(const Containers::StringView part: parts)
        if(part.isEmpty() || part.hasPrefix('.')) return false;

    if(count == 1) parseParts(parts[0], DefaultNamespace, parsed);
    else if(!parseParts(parts[count - 2], parts[count - 1], parsed) && count == 2 && isEnclosed) {
        TermFilePath inFolder;
        if(parseParts(parts[1], DefaultNamespace, inFolder)) parsed = inFolder;
    }
    return true;
}

Containers::String TermFilePath::make(const Containers::StringView code, const Containers::StringView nameSpace) {
    return Corrade::Utility::format("{}/{}.json", code, nameSpace);
}

}
