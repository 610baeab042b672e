#include "fonts/FontCoverage.h"

#include <initializer_list>
#include <string>

#include <Corrade/Containers/Array.h>

#include "host/localization/TestProject.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

constexpr const char* Project = R"({"languages": {"en": {"isDefault": true}, "de": {}, "ja": {}, "ar": {}, "th": {}},
"objects": {"door": {"text": "A door — open"}},
"localization": {"terms": {"door": {"sourceText": "/objects/door/text"}, "gone": {"sourceText": "/nowhere"}, "odd": 7},
"translations": {"de": {"door": {"text": "Tür"}, "odd": []}, "ja": {"door": {"text": "灯台灯"}}, "ar": {"door": {"text": "باب"}},
"th": {"door": {"text": "ที่"}}}}})";

class FontCoverageTest: public testing::Test {
protected:
    /** Goes through all of them.
        @return the steps that it took */
    int run(std::initializer_list<const char*> codes, std::size_t texts = 1000) {
        std::vector<UnsignedInt> languages;
        for(const char* code: codes) languages.push_back(UnsignedInt(findLanguage(code)));
        coverage.restart({languages.data(), languages.size()});
        int steps = 0;
        for(; !coverage.isFinished() && steps != 1000; ++steps) coverage.advance(project.project(), texts);
        return steps;
    }

    void addAll(const char32_t* letters) {
        for(; *letters; ++letters) drawn.add(*letters);
    }

    TestProject project{Project};
    LetterSet drawn;
    FontCoverage coverage{drawn};
};

TEST_F(FontCoverageTest, CountsTheLettersThatNoFontHas) {
    addAll(U"ü—");
    run({"en", "de", "ja"});
    const auto languages = coverage.languages();
    ASSERT_EQ(languages.size(), 3u);
    EXPECT_EQ(languages[0].undrawn + languages[1].undrawn, 0u);
    EXPECT_EQ(languages[2].undrawn, 2u);
    EXPECT_EQ(unsigned(languages[2].firstUndrawn), unsigned(U'灯'));
    EXPECT_FALSE(languages[2].needsShaping);
    EXPECT_EQ(coverage.summary(), "ja cannot be drawn");
}

TEST_F(FontCoverageTest, TheDefaultLanguageHasTheSourceTexts) {
    addAll(U"ü");
    run({"en", "de"});
    EXPECT_EQ(coverage.summary(), "en cannot be drawn");
    EXPECT_EQ(unsigned(coverage.languages()[0].firstUndrawn), unsigned(U'—'));
}

TEST_F(FontCoverageTest, AsciiIsAlwaysDrawn) {
    project.project().getValue("/objects/door/text", false)->SetString("A door!");
    run({"en"});
    EXPECT_EQ(coverage.summary(), "");
}

TEST_F(FontCoverageTest, JoinedLettersAndMarksNeedShaping) {
    addAll(U"بابที่üไ灯台—");
    run({"ar", "th", "de", "ja", "en"});
    EXPECT_EQ(coverage.summary(), "ar, th need shaping");
    run({"th", "de"});
    EXPECT_EQ(coverage.summary(), "th needs shaping");
}

TEST_F(FontCoverageTest, WhichLettersNeedShaping) {
    const std::pair<const char*, bool> texts[]{{"Grüße, ñ ß Œ", false}, {"Привет", false}, {"Γειά", false},
        {"שלום", true}, {"سلام", true}, {"नमस्ते", true}, {"กา", false}, {"ที่", true}, {"こんにちは", false},
        {"한국어", false}, {"\u1112\u1161\u11ab", true}, {"中文", false}, {"e\u0301", true}, {"“…”\u00a0—", false},
        {"a\u200bb\u2060\ufe0f", false}};
    for(const auto& [text, needs]: texts) {
        rapidjson::Value& value = *project.project().getValue("/localization/translations/de/door/text", false);
        value.SetString(text, project.project().document().GetAllocator());
        run({"de"});
        EXPECT_EQ(coverage.languages()[0].needsShaping, needs) << text;
    }
}

TEST_F(FontCoverageTest, BothAreTold) {
    run({"en", "de", "ja", "ar"});
    EXPECT_EQ(coverage.summary(), "en, de, ja, ar cannot be drawn; ar needs shaping");
}

TEST_F(FontCoverageTest, ManyLanguagesAreCounted) {
    std::string text = R"({"localization": {"translations": {)";
    for(const char* code: {"de", "fr", "ja", "pl", "ru", "sv", "tr"})
        text += '"' + std::string{code} + R"(": {"a": {"text": "ß"}}, )";
    TestProject many{text + R"("en": {}}}})"};
    std::vector<UnsignedInt> languages;
    for(const char* code: {"de", "fr", "ja", "pl", "ru", "sv", "tr"})
        languages.push_back(UnsignedInt(findLanguage(code)));
    coverage.restart({languages.data(), languages.size()});
    coverage.advance(many.project(), 1000);
    EXPECT_EQ(coverage.summary(), "de, fr, ja, pl, ru and 2 more cannot be drawn");
}

TEST_F(FontCoverageTest, SmallStepsFindTheSame) {
    EXPECT_EQ(run({"en", "de", "ja", "ar"}), 1);
    const std::string summary = coverage.summary();
    EXPECT_EQ(run({"en", "de", "ja", "ar"}, 1), 7);
    EXPECT_EQ(coverage.summary(), summary);
}

TEST_F(FontCoverageTest, WhatWasFoundStaysUntilTheEnd) {
    run({"ja"});
    const UnsignedInt german = UnsignedInt(findLanguage("de"));
    coverage.restart({&german, 1});
    EXPECT_FALSE(coverage.isFinished());
    EXPECT_EQ(coverage.summary(), "ja cannot be drawn");
    coverage.advance(project.project(), 1000);
    EXPECT_TRUE(coverage.isFinished());
    EXPECT_EQ(coverage.summary(), "de cannot be drawn");
}

TEST_F(FontCoverageTest, WithoutLanguagesThereIsNothingToTell) {
    run({"ja"});
    EXPECT_EQ(run({}), 0);
    EXPECT_EQ(coverage.summary(), "");
}

TEST_F(FontCoverageTest, DocumentsOfWrongTypesHaveNoTexts) {
    for(const char* text: {"{}", R"({"localization": 7})", R"({"localization": {"terms": [], "translations": "x"}})",
            R"({"languages": [], "localization": {"translations": {"de": {"a": "b", "c": {"text": null}}}}})"}) {
        TestProject odd{text};
        const UnsignedInt german = UnsignedInt(findLanguage("de"));
        coverage.restart({&german, 1});
        coverage.advance(odd.project(), 1000);
        EXPECT_TRUE(coverage.isFinished()) << text;
        EXPECT_EQ(coverage.summary(), "") << text;
    }
}

}
}
