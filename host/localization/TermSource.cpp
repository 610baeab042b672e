#include "TermSource.h"

#include <Corrade/Utility/Format.h>

#include "JsonPath.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TextComparison.h"

#include <rapidjson/document.h>

namespace QuorvaneEngine::TermSource {

using namespace Containers::Literals;

Containers::String path(const Containers::StringView sourceText) {
    return sourceText.hasPrefix('/') ? Containers::String{sourceText} : jsonPath({sourceText});
}

rapidjson::Value* value(ProjectFile& project, const Containers::StringView sourceText) {
    if(sourceText.isEmpty()) return nullptr;
    rapidjson::Value* const found = project.root()[sourceText].value();
    return found && found->IsString() ? found : nullptr;
}

Containers::String fault(const Containers::StringView sourceText, const rapidjson::Value* const found) {
    const Containers::String shown = TextComparison::shown(sourceText);
    if(found) return Corrade::Utility::format("leads to {}, which is no text", shown);
    if(sourceText.hasPrefix('/')) return Corrade::Utility::format("leads to {}, which is not there", shown);
    return Corrade::Utility::format(
        "names {} as its source, which is no member of the project's root and no path, as it has no \"/\" in front",
        shown);
}

Containers::String stringsPath(const Containers::StringView term) {
    return jsonPath({"localization"_s, "strings"_s, term});
}

}
