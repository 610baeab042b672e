#include "ProjectTypes.h"

#include <rapidjson/document.h>

#include "JsonPath.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** Collects lines of what is found. */
struct Lines {
    std::string all;

    ProjectTypes::WrongType collect() {
        return
            [this](const std::vector<Containers::StringView>& names, const char* const is, const char* const mustBe) {
                const Containers::String path = jsonPath(Containers::arrayView(names.data(), names.size()));
                all += copied(ProjectTypes::wrongType(path, is, mustBe)) + '\n';
            };
    }
};

rapidjson::Document parsed(const char* const json) {
    rapidjson::Document document;
    document.Parse(json);
    return document;
}

}

TEST(ProjectTypes, TellOfLanguagesAndTermsWithoutTheirTranslations) {
    const rapidjson::Document document = parsed(R"({"languages": {"de": 1}, "objects": 1, "localization": {
        "terms": {"a": {"translatable": "yes", "maxLength": -1}}, "checks": [],
        "translations": {"fr": [], "de": {"a": "A"}}}})");
    Lines lines;
    ProjectTypes::checkLocalization(document, lines.collect());
    EXPECT_EQ(lines.all,
        "/languages/de is a number, but must be an object\n"
        "/localization/terms/a/translatable is a string, but must be true or false\n"
        "/localization/terms/a/maxLength is a number, but must be a whole number from 0 up\n"
        "/localization/checks is an array, but must be an object\n"
        "/localization/translations/fr is an array, but must be an object\n");
}

TEST(ProjectTypes, TellOfValuesThatNoImportKeeps) {
    const rapidjson::Document document = parsed(R"({"localization": {"values": {"de": {"s": "S", "n": 1, "b": true,
        "nothing": null, "o": {}, "a": [], "number": {"number": "1.50"}, "full": [1], "other": {"number": "one"}}}}})");
    Lines lines;
    ProjectTypes::checkLocalization(document, lines.collect());
    const std::string kept = "must be a string, a number, true, false, null, or an empty container\n";
    EXPECT_EQ(lines.all,
        "/localization/values/de/full is an array, but " + kept + "/localization/values/de/other is an object, but " +
            kept);
}

TEST(ProjectTypes, TellOfTheTranslationsIntoOneLanguage) {
    const rapidjson::Document document = parsed(R"({"localization": {"translations": {
        "de": {"a": "A", "b": {"text": null, "state": 1}}, "fr": {"a": 1}}}})");
    Lines lines;
    ProjectTypes::checkTranslations(document, "de", lines.collect());
    EXPECT_EQ(lines.all,
        "/localization/translations/de/a is a string, but must be an object\n"
        "/localization/translations/de/b/text is null, but must be a string\n"
        "/localization/translations/de/b/state is a number, but must be a string\n");
    lines.all.clear();
    ProjectTypes::checkTranslations(document, "ja", lines.collect());
    EXPECT_EQ(lines.all, "");
}

TEST(ProjectTypes, TellOfResources) {
    const rapidjson::Document document = parsed(R"({"objects": {"door": {"name": 1}, "gate": []}, "fonts": true})");
    Lines lines;
    ProjectTypes::checkResources(document, lines.collect());
    EXPECT_EQ(lines.all,
        "/fonts is true, but must be an object\n"
        "/objects/gate is an array, but must be an object\n"
        "/objects/door/name is a number, but must be a string\n");
}

TEST(ProjectTypes, TakeAnyDocument) {
    for(const char* const json: {"1", "[]", "null", R"({"localization": 1})"}) {
        const rapidjson::Document document = parsed(json);
        Lines lines;
        ProjectTypes::checkTranslations(document, "de", lines.collect());
        ProjectTypes::checkResources(document, lines.collect());
        EXPECT_EQ(lines.all, "") << json;
    }
}

TEST(ProjectTypes, SayWhatIsWrongOnOneLine) {
    EXPECT_EQ(ProjectTypes::wrongType("", "null", "a string"), "is null, but must be a string");
    EXPECT_EQ(ProjectTypes::wrongType("/a\nb", "null", "a string"), "/a\\nb is null, but must be a string");
}

}
