#include "ProjectReview.h"

#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "../document/ProjectStorage.h"
#include "DocumentLookup.h"
#include "JsonPath.h"
#include "ProjectTypes.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t MaxFindings = 20;

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

void checkTypes(const rapidjson::Value& root, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "values have a wrong type"};
    const auto add = [&](const Names& names, const char* const is, const char* const mustBe) {
        findings.add([&] { return placeOf(names) + ": "_s + ProjectTypes::wrongType({}, is, mustBe); });
    };
    ProjectTypes::checkLocalization(root, add);
    const rapidjson::Value* const translations = memberOf(memberOf(&root, "localization"_s), "translations"_s);
    if(translations && translations->IsObject())
        for(const auto& language: translations->GetObject())
            ProjectTypes::checkTranslations(root, viewOf(language.name), add);
    ProjectTypes::checkResources(root, add);
}

void checkSources(ProjectFile& project, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "terms have no source text"};
    const rapidjson::Value* const terms = memberOf(memberOf(&project.document(), "localization"_s), "terms"_s);
    if(!terms || !terms->IsObject()) return;
    for(const auto& term: terms->GetObject()) {
        const rapidjson::Value* const value = memberOf(&term.value, "sourceText"_s);
        if(!value || !value->IsString() || !value->GetStringLength() || TermSource::value(project, viewOf(*value)))
            continue;
        findings.add([&] {
            const Containers::StringView source = viewOf(*value);
            return Corrade::Utility::format("{}: {}",
                placeOf({"localization"_s, "terms"_s, viewOf(term.name), "sourceText"_s}),
                TermSource::fault(source, project.getValue(TermSource::path(source), false)));
        });
    }
}

void checkFiles(ProjectFile& project, Containers::Array<Containers::String>& lines) {
    Findings findings{lines, "languages have no file"};
    const rapidjson::Value* const languages = memberOf(&project.document(), "languages"_s);
    if(!languages || !languages->IsObject()) return;
    for(const auto& language: languages->GetObject()) {
        const Containers::StringView code = viewOf(language.name);
        const rapidjson::Value* const isDefault = memberOf(&language.value, "isDefault"_s);
        if((isDefault && isDefault->IsTrue()) || !ProjectStorage::isLanguageCode(code)) continue;
        if(project.getValue(jsonPath({"localization"_s, "translations"_s, code}), false)) continue;
        findings.add([&] { return Corrade::Utility::format("localization/{0}.json: missing, no texts of {0}", code); });
    }
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
