#include "TermSource.h"

#include "JsonPath.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"

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

Containers::String stringsPath(const Containers::StringView term) {
    return jsonPath({"localization"_s, "strings"_s, term});
}

}
