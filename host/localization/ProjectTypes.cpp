#include "ProjectTypes.h"

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/PrintableText.h"
#include "DocumentLookup.h"
#include "KeptValues.h"

namespace QuorvaneEngine::ProjectTypes {

using namespace Containers::Literals;

namespace {

struct Type {
    const char* name;
    bool (*holds)(const rapidjson::Value& value);
};

constexpr Type Object{"an object", [](const rapidjson::Value& value) { return value.IsObject(); }};
constexpr Type Text{"a string", [](const rapidjson::Value& value) { return value.IsString(); }};
constexpr Type Flag{"true or false", [](const rapidjson::Value& value) { return value.IsBool(); }};
constexpr Type Count{"a whole number from 0 up", [](const rapidjson::Value& value) { return value.IsUint64(); }};

constexpr Type Texts{"an array of strings", [](const rapidjson::Value& value) {
                         if(!value.IsArray()) return false;
                         for(const rapidjson::Value& element: value.GetArray())
                             if(!element.IsString()) return false;
                         return true;
                     }};
constexpr Type Kept{"a string, a number, true, false, null, or an empty container", [](const rapidjson::Value& value) {
                        if(value.IsObject()) return value.ObjectEmpty() || !spellingOf(value).isEmpty();
                        return !value.IsArray() || value.Empty();
                    }};

/* By rapidjson::Type */
constexpr const char* TypeNames[]{"null", "false", "true", "an object", "an array", "a string", "a number"};

struct Row {
    /** A path in which "*" stands for any member. */
    Containers::StringView pattern;
    const Type* type;
};

const Row LocalizationRows[]{
    {"/languages"_s, &Object},
    {"/languages/*"_s, &Object},
    {"/languages/*/isDefault"_s, &Flag},
    {"/localization"_s, &Object},
    {"/localization/terms"_s, &Object},
    {"/localization/terms/*"_s, &Object},
    {"/localization/terms/*/sourceText"_s, &Text},
    {"/localization/terms/*/translatable"_s, &Flag},
    {"/localization/terms/*/note"_s, &Text},
    {"/localization/terms/*/maxLength"_s, &Count},
    {"/localization/terms/*/silenced"_s, &Object},
    {"/localization/terms/*/silenced/*"_s, &Text},
    {"/localization/checks"_s, &Object},
    {"/localization/checks/*"_s, &Text},
    {"/localization/namespaces"_s, &Object},
    {"/localization/namespaces/*"_s, &Object},
    {"/localization/namespaces/*/flat"_s, &Flag},
    {"/localization/namespaces/*/order"_s, &Object},
    {"/localization/namespaces/*/order/*"_s, &Texts},
    {"/localization/values"_s, &Object},
    {"/localization/values/*"_s, &Object},
    {"/localization/values/*/*"_s, &Kept},
    {"/localization/strings"_s, &Object},
    {"/localization/strings/*"_s, &Text},
    {"/localization/translations"_s, &Object},
    {"/localization/translations/*"_s, &Object},
};

/** From the translations into one language. */
const Row TranslationRows[]{
    {"/*"_s, &Object},
    {"/*/text"_s, &Text},
    {"/*/source"_s, &Text},
    {"/*/state"_s, &Text},
    {"/*/note"_s, &Text},
};

constexpr Containers::StringView Collections[]{"animations"_s, "fonts"_s, "images"_s, "materials"_s, "meshes"_s,
    "objects"_s, "pipelines"_s, "shaders"_s, "skins"_s, "textures"_s};

const Row CollectionRows[]{{""_s, &Object}, {"/*"_s, &Object}, {"/*/name"_s, &Text}};

using Names = std::vector<Containers::StringView>;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

/** Calls @p visit with every value that a pattern leads to.
    @param names    of the members that lead to @p value; as before when it returns */
template <class Visit>
void forEachMatch(
    const rapidjson::Value& value, const Containers::StringView pattern, Names& names, const Visit& visit) {
    if(pattern.isEmpty()) {
        visit(value);
        return;
    }
    if(!value.IsObject()) return;
    const Containers::StringView rest = pattern.exceptPrefix(1);
    const Containers::StringView name = rest.prefix(rest.findOr('/', rest.end()).begin());
    const Containers::StringView next = rest.exceptPrefix(name.size());
    for(const auto& member: value.GetObject()) {
        const Containers::StringView key = viewOf(member.name);
        if(name != "*"_s && key != name) continue;
        names.push_back(key);
        forEachMatch(member.value, next, names, visit);
        names.pop_back();
    }
}

/** @param names    of the members that lead to @p value */
void checkRows(
    const rapidjson::Value& value, const Containers::ArrayView<const Row> rows, Names& names, const WrongType& found) {
    for(const Row& row: rows)
        forEachMatch(value, row.pattern, names, [&](const rapidjson::Value& match) {
            if(!row.type->holds(match)) found(names, TypeNames[match.GetType()], row.type->name);
        });
}

}

Containers::String wrongType(const Containers::StringView path, const char* const is, const char* const mustBe) {
    return Corrade::Utility::format(
        "{}{}is {}, but must be {}", printable(path), path.isEmpty() ? "" : " ", is, mustBe);
}

void checkLocalization(const rapidjson::Value& root, const WrongType& found) {
    Names names;
    checkRows(root, LocalizationRows, names, found);
}

void checkTranslations(const rapidjson::Value& root, const Containers::StringView code, const WrongType& found) {
    const rapidjson::Value* const translations =
        memberOf(memberOf(memberOf(&root, "localization"_s), "translations"_s), code);
    if(!translations) return;
    Names names{"localization"_s, "translations"_s, code};
    checkRows(*translations, TranslationRows, names, found);
}

void checkResources(const rapidjson::Value& root, const WrongType& found) {
    for(const Containers::StringView collection: Collections) {
        const rapidjson::Value* const resources = memberOf(&root, collection);
        if(!resources) continue;
        Names names{collection};
        checkRows(*resources, CollectionRows, names, found);
    }
}

}
