#include "DefaultValues.h"

#include <cstring>

#include "PathTokens.h"

namespace QuorvaneEngine {

namespace {

/** A pattern is a path in which "*" stands for any one token; the default is JSON text. */
struct Row {
    const char* pattern;
    const char* json;
};

constexpr Row Table[]{
    {"/languages/*/isDefault", "false"},
    {"/localization/terms/*/sourceText", R"("")"},
    {"/localization/terms/*/translatable", "false"},
    {"/localization/terms/*/note", R"("")"},
    {"/localization/terms/*/maxLength", "0"},
    {"/localization/strings/*", R"("")"},
    {"/localization/translations/*/*/text", R"("")"},
    {"/localization/translations/*/*/source", R"("")"},
    {"/localization/translations/*/*/state", R"("")"},
    {"/localization/translations/*/*/note", R"("")"},
    {"/animations/*/name", R"("")"},
    {"/fonts/*/name", R"("")"},
    {"/images/*/name", R"("")"},
    {"/materials/*/name", R"("")"},
    {"/meshes/*/name", R"("")"},
    {"/objects/*/name", R"("")"},
    {"/pipelines/*/name", R"("")"},
    {"/shaders/*/name", R"("")"},
    {"/skins/*/name", R"("")"},
    {"/textures/*/name", R"("")"},
};

/** Compares token by token. No token of the table can be written with escapes, so none needs to be resolved. */
bool matches(const char* pattern, Containers::StringView path) {
    const char* at = path.begin();
    const char* const end = path.end();
    for(; *pattern; ++pattern) {
        if(*pattern == '*') {
            while(at != end && *at != '/') ++at;
        } else if(at == end || *at++ != *pattern) return false;
    }
    return at == end;
}

}

DefaultValues::DefaultValues(): _values{rapidjson::kObjectType, nullptr, 1} {
    for(const Row& row: Table) {
        rapidjson::Document value{&_values.GetAllocator(), 64};
        value.Parse(row.json);
        _values.AddMember(
            rapidjson::StringRef(row.pattern), static_cast<rapidjson::Value&>(value), _values.GetAllocator());
    }
}

rapidjson::Value* DefaultValues::find(Containers::StringView path) {
    if(!PathTokens{path}.isValid()) return nullptr;
    for(auto row = _values.MemberBegin(), end = _values.MemberEnd(); row != end; ++row)
        if(matches(row->name.GetString(), path)) return &row->value;
    return nullptr;
}

}
