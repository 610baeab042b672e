#include "ProjectReview.h"

#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/ProjectStorage.h"
#include "JsonPath.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t MaxFindings = 20;

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
constexpr Type Kept{"a string, a number, true, false, or an empty container", [](const rapidjson::Value& value) {
                        if(value.IsObject()) return value.ObjectEmpty();
                        return value.IsArray() ? value.Empty() : !value.IsNull();
                    }};

/* By rapidjson::Type */
constexpr const char* TypeNames[]{"null", "false", "true", "an object", "an array", "a string", "a number"};

struct Row {
    /** A path in which "*" stands for any member. */
    Containers::StringView pattern;
    const Type* type;
};

const Row Rows[]{
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
    {"/localization/translations/*/*"_s, &Object},
    {"/localization/translations/*/*/text"_s, &Text},
    {"/localization/translations/*/*/source"_s, &Text},
    {"/localization/translations/*/*/state"_s, &Text},
    {"/localization/translations/*/*/note"_s, &Text},
};

constexpr Containers::StringView Collections[]{"animations"_s, "fonts"_s, "images"_s, "materials"_s, "meshes"_s,
    "objects"_s, "pipelines"_s, "shaders"_s, "skins"_s, "textures"_s};

const Row CollectionRows[]{{""_s, &Object}, {"/*"_s, &Object}, {"/*/name"_s, &Text}};

using Names = std::vector<Containers::StringView>;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

/** The messages are kept line by line. */
Containers::String printable(const Containers::StringView text) {
    constexpr const char* Digits = "0123456789abcdef";
    std::string printed;
    for(const char c: text) {
        const auto byte = static_cast<unsigned char>(c);
        if(byte < 0x20) printed.append("\\u00").append({Digits[byte >> 4], Digits[byte & 15]});
        else printed += c;
    }
    return Containers::String{printed.data(), printed.size()};
}

/** The file that holds a value, and the value's place in it. */
Containers::String placeOf(const Names& names) {
    constexpr std::size_t FilePart = 3;
    const bool hasFile = names.size() > FilePart && names[0] == "localization"_s && names[1] == "translations"_s &&
        ProjectStorage::isLanguageCode(names[2]);
    if(!hasFile) return "project.json: " + printable(jsonPath(Containers::arrayView(names.data(), names.size())));
    return Corrade::Utility::format("localization/{}.json: {}", names[2],
        printable(jsonPath(Containers::arrayView(names.data() + FilePart, names.size() - FilePart))));
}

/** Findings of one kind. */
class Findings {
public:
    explicit Findings(Containers::Array<Containers::String>& lines, const char* more): _lines{&lines}, _more{more} {}

    ~Findings() {
        if(_count > MaxFindings)
            Containers::arrayAppend(*_lines, Corrade::Utility::format("and {} more {}", _count - MaxFindings, _more));
    }

    Findings(const Findings&) = delete;
    Findings& operator=(const Findings&) = delete;

    /** @param line     makes the line, for the first findings alone */
    template <class Line> void add(Line&& line) {
        if(++_count <= MaxFindings) Containers::arrayAppend(*_lines, line());
    }

private:
    Containers::Array<Containers::String>* _lines;
    const char* _more;
    std::size_t _count = 0;
};

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

void checkType(const rapidjson::Value& value, const Type& type, const Names& names, Findings& findings) {
    if(type.holds(value)) return;
    findings.add([&] {
        return Corrade::Utility::format(
            "{}: is {}, but must be {}", placeOf(names), TypeNames[value.GetType()], type.name);
    });
}

void checkTypes(const rapidjson::Value& root, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "values have a wrong type"};
    Names names;
    for(const Row& row: Rows)
        forEachMatch(root, row.pattern, names,
            [&](const rapidjson::Value& value) { checkType(value, *row.type, names, findings); });
    for(const Containers::StringView collection: Collections) {
        const auto found =
            root.FindMember(rapidjson::Value{rapidjson::StringRef(collection.data(), collection.size())});
        if(found == root.MemberEnd()) continue;
        names.push_back(collection);
        for(const Row& row: CollectionRows)
            forEachMatch(found->value, row.pattern, names,
                [&](const rapidjson::Value& value) { checkType(value, *row.type, names, findings); });
        names.pop_back();
    }
}

void checkSources(ProjectFile& project, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "terms have no source text"};
    Names names;
    forEachMatch(project.document(), "/localization/terms/*/sourceText"_s, names, [&](const rapidjson::Value& value) {
        if(!value.IsString() || !value.GetStringLength() || TermSource::value(project, viewOf(value))) return;
        findings.add([&] {
            const Containers::StringView source = viewOf(value);
            return Corrade::Utility::format(
                "{}: {}", placeOf(names), TermSource::fault(source, project.getValue(TermSource::path(source), false)));
        });
    });
}

void checkFiles(ProjectFile& project, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "languages have no file"};
    Names names;
    forEachMatch(project.document(), "/languages/*"_s, names, [&](const rapidjson::Value& language) {
        const Containers::StringView code = names.back();
        const bool isDefault = language.IsObject() && language.HasMember("isDefault") && language["isDefault"].IsTrue();
        if(isDefault || !ProjectStorage::isLanguageCode(code)) return;
        if(project.getValue(jsonPath({"localization"_s, "translations"_s, code}), false)) return;
        findings.add([&] { return Corrade::Utility::format("localization/{0}.json: missing, no texts of {0}", code); });
    });
}

}

Containers::Array<Containers::String> reviewProject(ProjectFile& project) {
    Containers::Array<Containers::String> lines;
    if(!project.document().IsObject()) return lines;
    checkTypes(project.document(), lines);
    checkSources(project, lines);
    checkFiles(project, lines);
    return lines;
}

}
