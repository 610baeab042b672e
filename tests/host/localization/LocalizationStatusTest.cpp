#include "LocalizationStatus.h"

#include <initializer_list>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "Exchange.h"
#include "Fingerprint.h"
#include "PluralSets.h"
#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** "missing stale draft review done" of a language. */
std::string counted(const LanguageStatus& status) {
    std::string text;
    for(const UnsignedInt count: status.counts) text += (text.empty() ? "" : " ") + std::to_string(count);
    return text;
}

std::string statusOf(TestProject& project, const char* const code, const char* const defaultCode = "en") {
    const Containers::Array<LanguageStatus> status =
        localizationStatus(project.project().document(), languagesOf({code}), UnsignedInt(findLanguage(defaultCode)));
    EXPECT_EQ(status.size(), 1u);
    EXPECT_EQ(status[0].language, UnsignedInt(findLanguage(code)));
    return counted(status[0]);
}

/** An entry of a language: a text that translates @p source . */
std::string entry(
    const std::string& key, const std::string& text, const std::string& source, const std::string& more = "") {
    return '"' + key + R"(": {"text": ")" + text + R"(", "source": ")" + copied(fingerprint(viewed(source))) + '"' +
        more + '}';
}

/** A project whose source texts are their keys with "!". */
std::string projectOf(
    const std::initializer_list<std::string> keys, const std::string& translations, const std::string& more = "") {
    std::string terms, strings;
    for(const std::string& key: keys) {
        terms += (terms.empty() ? "\"" : ", \"") + key + R"(": {"sourceText": "/localization/strings/)" + key +
            R"(", "translatable": true})";
        strings += (strings.empty() ? "\"" : ", \"") + key + R"(": ")" + key + "!\"";
    }
    return R"({"localization": {"terms": {)" + terms + R"(}, "strings": {)" + strings + R"(}, "translations": {)" +
        translations + '}' + more + "}}";
}

}

TEST(TranslationState, IsTheFirstOneThatHolds) {
    const Containers::String source = fingerprint("Door");
    const auto stateOf = [&](const std::string& json) {
        rapidjson::Document document;
        document.Parse(json.c_str());
        EXPECT_FALSE(document.HasParseError()) << json;
        return copied(translationStateName(translationState(&document, source)));
    };
    const std::string rest = R"("source": ")" + copied(source) + '"';
    EXPECT_EQ(copied(translationStateName(translationState(nullptr, source))), "missing");
    for(const char* const json: {"{}", "null", "1", "[]", "\"Tür\"", R"({"text": ""})", R"({"text": 1})",
            R"({"text": null, "state": "draft"})"})
        EXPECT_EQ(stateOf(json), "missing") << json;
    EXPECT_EQ(stateOf(R"({"text": "", "state": "review", )" + rest + "}"), "missing");

    EXPECT_EQ(stateOf(R"({"text": "Tür"})"), "stale");
    EXPECT_EQ(stateOf(R"({"text": "Tür", "source": ""})"), "stale");
    EXPECT_EQ(stateOf(R"({"text": "Tür", "source": 7})"), "stale");
    EXPECT_EQ(stateOf(R"({"text": "Tür", "source": "0123456789abcdef", "state": "draft"})"), "stale");

    EXPECT_EQ(stateOf(R"({"text": "Tür", "state": "draft", )" + rest + "}"), "draft");
    EXPECT_EQ(stateOf(R"({"text": "Tür", "state": "review", )" + rest + "}"), "review");
    EXPECT_EQ(stateOf(R"({"text": "Tür", )" + rest + "}"), "done");
    for(const char* const state: {"\"\"", "\"Draft\"", "\"approved\"", "1", "null", "{}"})
        EXPECT_EQ(stateOf(R"({"text": "Tür", "state": )" + std::string{state} + ", " + rest + "}"), "done") << state;
}

TEST(LocalizationStatus, CountsEveryTranslatableTermOnce) {
    TestProject project{projectOf({"a", "b", "c", "d", "e", "f"},
        "\"de\": {" + entry("a", "A", "a!") + ", " + entry("b", "B", "b before") + ", " +
            entry("c", "C", "c!", R"(, "state": "draft")") + ", " + entry("d", "D", "d!", R"(, "state": "review")") +
            ", " + entry("e", "", "e!") + "}")};
    EXPECT_EQ(statusOf(project, "de"), "2 1 1 1 1");
    EXPECT_EQ(statusOf(project, "fr"), "6 0 0 0 0");
    EXPECT_EQ(statusOf(project, "en"), "0 0 0 0 6");
}

TEST(LocalizationStatus, LanguagesComeBackInTheOrderAskedFor) {
    TestProject project{projectOf({"a"}, "\"fr\": {" + entry("a", "A", "a!") + "}")};
    const Containers::Array<LanguageStatus> status = localizationStatus(
        project.project().document(), languagesOf({"ja", "fr", "en", "ja"}), UnsignedInt(FallbackLanguage));
    ASSERT_EQ(status.size(), 4u);
    EXPECT_EQ(counted(status[0]), "1 0 0 0 0");
    EXPECT_EQ(counted(status[1]), "0 0 0 0 1");
    EXPECT_EQ(counted(status[2]), "0 0 0 0 1");
    EXPECT_EQ(counted(status[3]), "1 0 0 0 0");
    EXPECT_EQ(status[1].count(TranslationState::Done), 1u);
    EXPECT_EQ(status[1].total(), 1u);
    EXPECT_EQ(localizationStatus(project.project().document(), {}, FallbackLanguage).size(), 0u);
}

TEST(LocalizationStatus, WhatIsNotToBeTranslatedIsNotCounted) {
    TestProject project{R"({"title": "T", "localization": {"terms": {
        "root": {"sourceText": "title", "translatable": true},
        "fixed": {"sourceText": "title", "translatable": false}, "unsaid": {"sourceText": "title"},
        "gone": {"sourceText": "/objects/gone/text", "translatable": true}, "none": {"translatable": true},
        "empty": {"sourceText": "/localization/strings/empty", "translatable": true}},
        "strings": {"empty": ""}, "translations": {"de": {)" +
        entry("fixed", "F", "T") + ", " + entry("gone", "G", "g") + ", " + entry("unknown", "U", "u") + "}}}}"};
    EXPECT_EQ(statusOf(project, "de"), "1 0 0 0 0");
    EXPECT_EQ(statusOf(project, "en"), "0 0 0 0 1");
}

TEST(LocalizationStatus, FormsThatALanguageDoesNotUseAreNotCounted) {
    TestProject project{projectOf({"door_one", "door_other", "x"},
        "\"ja\": {" + entry("door_one", "D", "door_one!") + ", " + entry("door_other", "D", "door_other!") + "}")};
    EXPECT_EQ(statusOf(project, "ja"), "1 0 0 0 1");
    EXPECT_EQ(statusOf(project, "de"), "3 0 0 0 0");
}

TEST(LocalizationStatus, FormsThatALanguageNeedsBesideAreCounted) {
    const std::string polish = entry("door_one", "D", "door_one!") + ", " + entry("door_few", "D", "door_other!") +
        ", " + entry("door_many", "D", "door_one!") + ", " + entry("door_two", "D", "door_other!");
    TestProject project{projectOf({"door_one", "door_other"}, "\"pl\": {" + polish + "}")};
    EXPECT_EQ(statusOf(project, "pl"), "1 1 0 0 2");
    EXPECT_EQ(statusOf(project, "ar"), "6 0 0 0 0");
    EXPECT_EQ(statusOf(project, "fr"), "3 0 0 0 0");
    EXPECT_EQ(statusOf(project, "en"), "0 0 0 0 2");
}

TEST(LocalizationStatus, OrdinalsHaveRulesOfTheirOwn) {
    TestProject project{
        projectOf({"floor_ordinal_one", "floor_ordinal_two", "floor_ordinal_few", "floor_ordinal_other"},
            "\"it\": {" + entry("floor_ordinal_many", "F", "floor_ordinal_other!") + "}")};
    EXPECT_EQ(statusOf(project, "it"), "1 0 0 0 1");
    EXPECT_EQ(statusOf(project, "de"), "1 0 0 0 0");
    EXPECT_EQ(statusOf(project, "cy"), "6 0 0 0 0");
}

TEST(LocalizationStatus, ZeroIsNeededWhereThereIsATermOfIt) {
    TestProject project{projectOf({"a_zero", "a_one", "a_other", "b_one", "b_other"}, "")};
    EXPECT_EQ(statusOf(project, "ja"), "3 0 0 0 0");
    EXPECT_EQ(statusOf(project, "de"), "5 0 0 0 0");
    EXPECT_EQ(statusOf(project, "lv"), "6 0 0 0 0");
}

TEST(LocalizationStatus, KeysThatOnlyLookLikeFormsAreTermsLikeAnyOther) {
    TestProject project{projectOf({"file_other", "file_image", "a_few", "a_other"}, "")};
    for(const char* const code: {"ja", "pl", "de", "ar"}) EXPECT_EQ(statusOf(project, code), "4 0 0 0 0") << code;
}

TEST(LocalizationStatus, ALanguageWithoutRulesNeedsTheFormsThatThereAre) {
    TestProject project{
        projectOf({"door_one", "door_other"}, "\"la\": {" + entry("door_few", "D", "door_other!") + "}")};
    EXPECT_EQ(statusOf(project, "la"), "2 0 0 0 0");
    EXPECT_EQ(statusOf(project, "pl", "la"), "2 0 0 0 0");
}

TEST(LocalizationStatus, AFormWhoseOtherIsNotTranslatedIsNotNeeded) {
    TestProject project{R"({"text": "T", "localization": {"terms": {
        "a_one": {"sourceText": "text", "translatable": true}, "a_other": {"sourceText": "text", "translatable": false},
        "b_one": {"sourceText": "text", "translatable": false}, "b_other": {"sourceText": "text", "translatable": true}}}})"};
    EXPECT_EQ(statusOf(project, "pl"), "4 0 0 0 0");
    EXPECT_EQ(statusOf(project, "en"), "0 0 0 0 2");
}

TEST(LocalizationStatus, PluralsAreThoseOfOneNamespace) {
    TestProject project{projectOf({"door_one", "shop:door_other", "shop:key_one", "shop:key_other"},
        "\"pl\": {" + entry("shop:key_few", "K", "shop:key_other!") + ", " + entry("key_few", "K", "shop:key_other!") +
            ", " + entry("shop:door_few", "D", "shop:door_other!") + "}")};
    EXPECT_EQ(statusOf(project, "ja"), "3 0 0 0 0");
    EXPECT_EQ(statusOf(project, "pl"), "5 0 0 0 1");
}

TEST(LocalizationStatus, FlatNamespacesHavePluralsToo) {
    TestProject project{projectOf({"menu.door_one", "menu.door_other"},
        "\"pl\": {" + entry("menu.door_few", "D", "menu.door_other!") + "}",
        R"(, "namespaces": {"translation": {"flat": true}})")};
    EXPECT_EQ(statusOf(project, "pl"), "3 0 0 0 1");
}

TEST(LocalizationStatus, AnyDocumentHasAStatus) {
    for(const char* const json:
        {"{}", R"({"localization": 1})", R"({"localization": {"terms": [], "translations": 3}})",
            R"({"localization": {"terms": {"a": 1, "b": []}, "translations": {"de": "x"}}})"}) {
        TestProject project{json};
        EXPECT_EQ(statusOf(project, "de"), "0 0 0 0 0") << json;
    }
    TestProject project{
        projectOf({"a_one", "a_other"}, R"("de": {"a_one": 1, "a_few": [], "a_other": null}, "pl": [])")};
    EXPECT_EQ(statusOf(project, "de"), "2 0 0 0 0");
    EXPECT_EQ(statusOf(project, "pl"), "4 0 0 0 0");
}

TEST(LocalizationStatus, OfAnyProjectIsThatOfTheDefinition) {
    std::mt19937 random{11};
    const std::vector<std::string> keys{"a", "a_zero", "a_one", "a_two", "a_few", "a_many", "a_other", "b_one",
        "b_other", "b_ordinal_one", "b_ordinal_two", "b_ordinal_few", "b_ordinal_many", "b_ordinal_other", "m.c_one",
        "m.c_other", "m.c_few", "d_x"};
    const char* const codes[]{"de", "pl", "ja", "ar", "it", "la", "cy"};
    std::size_t total = 0;
    for(int round = 0; round != 400; ++round) {
        // A project by chance.
        std::map<std::string, bool> terms;
        for(const std::string& key: keys)
            if(random() % 3 != 0) terms[key] = random() % 5 != 0;
        const char* const code = codes[random() % std::size(codes)];
        std::map<std::string, int> translated;
        std::string termText, entries;
        for(const auto& [key, isTranslatable]: terms)
            termText += (termText.empty() ? "\"" : ", \"") + key + R"(": {"sourceText": "text", "translatable": )" +
                (isTranslatable ? "true}" : "false}");
        for(const std::string& key: keys) {
            const int state = int(random() % 6) - 1;
            if(state == -1) continue;
            translated[key] = state;
            const char* const more[]{"", "", R"(, "state": "draft")", R"(, "state": "review")", ""};
            entries += (entries.empty() ? "" : ", ") +
                entry(key, state == 0 ? "" : "T", state == 1 ? "before" : "T", more[state]);
        }
        TestProject project{R"({"text": "T", "localization": {"terms": {)" + termText + R"(}, "translations": {")" +
            code + "\": {" + entries + "}}}}"};

        // The definition, key by key.
        std::vector<Containers::StringView> views;
        for(const auto& term: terms) views.push_back(viewed(term.first));
        const PluralSets sets{{views.data(), views.size()}, "en"};
        std::set<std::string> needed;
        for(const std::string& key: keys) {
            PluralForm form;
            const bool isForm = sets.find(viewed(key)) != -1 && parsePluralForm(viewed(key), form);
            const bool isTerm = terms.count(key);
            const PluralCategories rules = isForm ? pluralCategories(code, form.kind) : PluralCategories{};
            const bool isUsed = !isForm || !rules || rules & form.category;
            if(isTerm && terms[key] && (isUsed || form.category == PluralCategory::Zero)) needed.insert(key);
            const std::string other =
                isForm ? copied(pluralKey(form.base, form.kind, PluralCategory::Other)) : std::string{};
            if(!isTerm && isForm && rules && isUsed && terms[other]) needed.insert(key);
        }
        // Forms that no key of the list has.
        std::size_t more = 0;
        for(const PluralSet& set: sets.sets())
            for(const PluralCategory category: AllPluralCategories) {
                const std::string key = copied(pluralKey(set.base, set.kind, category));
                const std::string other = copied(pluralKey(set.base, set.kind, PluralCategory::Other));
                if(std::find(keys.begin(), keys.end(), key) == keys.end() &&
                    pluralCategories(code, set.kind) & category && terms[other])
                    ++more;
            }
        std::size_t counts[5]{more, 0, 0, 0, 0};
        for(const std::string& key: needed) ++counts[translated.count(key) ? translated[key] : 0];
        std::string expected;
        for(const std::size_t count: counts) expected += (expected.empty() ? "" : " ") + std::to_string(count);
        EXPECT_EQ(statusOf(project, code), expected) << code << ' ' << project.text();
        total += needed.size();
    }
    EXPECT_GT(total, 2000u);
}

}
