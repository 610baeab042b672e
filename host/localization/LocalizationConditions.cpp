#include "LocalizationConditions.h"

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "JsonPath.h"
#include "LanguageLookup.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

bool isMarkedDefault(const rapidjson::Value& language) {
    if(!language.IsObject()) return false;
    const auto found = language.FindMember("isDefault");
    return found != language.MemberEnd() && found->value.IsTrue();
}

/** Calls @p found with the path of what is no object, of an object of objects that may be missing altogether. */
template <class Found>
void findWrongTypes(const rapidjson::Value* const value, const Containers::StringView path, Found&& found) {
    if(!value) return;
    if(!value->IsObject()) {
        found(Containers::String{path});
        return;
    }
    for(const auto& member: value->GetObject())
        if(!member.value.IsObject()) found(path + jsonPath({viewOf(member.name)}));
}

template <class Found> void findWrongTypes(ProjectFile& project, Found&& found) {
    const ValueAccess root = project.root();
    findWrongTypes(root["languages"_s].value(), "/languages"_s, found);
    const ValueAccess localization = root["localization"_s];
    if(localization.existsInProject() && !localization.isObject()) found(Containers::String{"/localization"_s});
    else findWrongTypes(localization["terms"_s].value(), "/localization/terms"_s, found);
}

/** Whether the languages need a default one and none that is known is marked. */
bool isDefaultMissing(const rapidjson::Value* const languages) {
    if(!languages || !languages->IsObject() || languages->ObjectEmpty()) return false;
    for(const auto& language: languages->GetObject())
        if(isMarkedDefault(language.value) && findLanguage(viewOf(language.name)) != -1) return false;
    return true;
}

/** @return the path of a language that was replaced as a whole, empty where none was */
Containers::String markDefault(ProjectEdit& edit, const rapidjson::Value& languages) {
    rapidjson::Value marked{rapidjson::kObjectType};
    marked.AddMember("isDefault", rapidjson::Value{true}, edit.allocator());
    for(const auto& language: languages.GetObject()) {
        const Containers::StringView code = viewOf(language.name);
        if(findLanguage(code) == -1) continue;
        if(language.value.IsObject()) {
            edit.set({"languages"_s, code, "isDefault"_s}, rapidjson::Value{true});
            return {};
        }
        edit.set({"languages"_s, code}, std::move(marked));
        return jsonPath({"languages"_s, code});
    }
    edit.set({"languages"_s, AllLanguages[FallbackLanguage].code}, std::move(marked));
    return {};
}

}

Containers::Array<LocalizationCondition> checkLocalizationConditions(ProjectFile& project) {
    // A sentence for the first one is enough of many: they are repaired together.
    Containers::String first;
    std::size_t count = 0;
    findWrongTypes(project, [&](const Containers::String& path) {
        if(count++ == 0) first = path;
    });

    Containers::Array<LocalizationCondition> failures;
    if(count == 1)
        Containers::arrayAppend(failures, LocalizationCondition{Corrade::Utility::format("{} is no object.", first)});
    else if(count > 1)
        Containers::arrayAppend(failures,
            LocalizationCondition{
                Corrade::Utility::format("{} is no object, and {} more are none.", first, count - 1)});
    if(isDefaultMissing(project.root()["languages"_s].value()))
        Containers::arrayAppend(failures,
            LocalizationCondition{
                Containers::String{"/languages marks no language that the editor knows as default."_s}});
    return failures;
}

void repairLocalizationConditions(QuorvaneEditor& editor) {
    const rapidjson::Value* const languages = editor.project().root()["languages"_s].value();
    ProjectEdit edit{editor};
    Containers::String replaced;
    if(isDefaultMissing(languages)) replaced = markDefault(edit, *languages);
    findWrongTypes(editor.project(), [&](const Containers::String& path) {
        if(path != replaced) edit.replace(path, rapidjson::Value{rapidjson::kObjectType});
    });
    edit.push();
}

}
