#include "fonts/FontCoverage.h"

#include <initializer_list>
#include <string>

#include <Corrade/Containers/Array.h>

#include "QuorvaneEditor/AllLanguages.h"
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
    int run(std::initializer_list<const char*> codes, std::size_t bytes = 100000) {
        coverage.restart(indices(codes));
        return finish(bytes);
    }

    int finish(std::size_t bytes = 100000) {
        int steps = 0;
        for(; !coverage.isFinished() && steps != 1000; ++steps) coverage.advance(project.project(), bytes);
        return steps;
    }

    static Containers::Array<UnsignedInt> indices(std::initializer_list<const char*> codes) {
        Containers::Array<UnsignedInt> languages{Corrade::NoInit, codes.size()};
        std::size_t i = 0;
        for(const char* code: codes) languages[i++] = language(code);
        return languages;
    }

    static UnsignedInt language(const char* code) { return UnsignedInt(findLanguage(code)); }

    /** "ja 2, ar shaped" */
    static std::string told(Containers::ArrayView<const LanguageLetters> languages) {
        std::string text;
        for(const LanguageLetters& letters: languages) {
            if(letters.isWell()) continue;
            text += (text.empty() ? "" : ", ") + copied(AllLanguages[letters.language].code);
            if(letters.undrawn) text += ' ' + std::to_string(letters.undrawn);
            if(letters.needsShaping()) text += " shaped";
        }
        return text;
    }

    std::string told() const { return told(coverage.languages()); }

    void set(const char* path, const char* text) {
        project.project().getValue(path, false)->SetString(text, project.project().document().GetAllocator());
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
    EXPECT_EQ(told(), "ja 2");
    EXPECT_EQ(unsigned(coverage.languages()[2].firstUndrawn), unsigned(U'灯'));
}

TEST_F(FontCoverageTest, TheDefaultLanguageHasTheSourceTexts) {
    addAll(U"ü");
    run({"en", "de"});
    EXPECT_EQ(told(), "en 1");
    EXPECT_EQ(unsigned(coverage.languages()[0].firstUndrawn), unsigned(U'—'));
    ASSERT_EQ(coverage.sourceMembers().size(), 2u);
    EXPECT_EQ(copied(coverage.sourceMembers()[0]), "objects");
    EXPECT_EQ(copied(coverage.sourceMembers()[1]), "nowhere");
}

TEST_F(FontCoverageTest, SourcesAreBelowMembersOfAnyName) {
    TestProject odd{
        R"({"languages": {"en": {"isDefault": true}}, "title": "ß", "a/b~c": {"text": "ü"}, "localization": {"terms": {
        "a": {"sourceText": "title"}, "b": {"sourceText": "/a~1b~0c/text"}, "c": {"sourceText": "/a~1b~0c/more"}, "d": {"sourceText": ""},
        "e": {"sourceText": "/title"}, "f": {"sourceText": "/titles/1"}, "g": {"sourceText": "/~"}}}})"};
    coverage.restart(indices({"en"}));
    coverage.advance(odd.project(), 100000);
    EXPECT_EQ(told(), "en 2");
    std::string members;
    for(const Containers::String& member: coverage.sourceMembers()) members += copied(member) + ' ';
    EXPECT_EQ(members, "title a/b~c titles ");
}

TEST_F(FontCoverageTest, SmallStepsFindTheSame) {
    EXPECT_EQ(run({"en", "de", "ja", "ar"}), 1);
    const std::string found = told();
    EXPECT_EQ(found, "en 1, de 1, ja 2, ar 2 shaped");
    EXPECT_EQ(run({"en", "de", "ja", "ar"}, 1), 7);
    EXPECT_EQ(told(), found);
}

TEST_F(FontCoverageTest, WhatWasFoundStaysUntilTheLanguageHasBeenLookedAt) {
    run({"de", "ja"});
    EXPECT_EQ(told(), "de 1, ja 2");
    set("/localization/translations/ja/door/text", "a");
    set("/localization/translations/de/door/text", "a");
    coverage.restart(indices({"ja", "de"}));
    EXPECT_FALSE(coverage.isFinished());
    EXPECT_EQ(told(), "ja 2, de 1");
    coverage.advance(project.project(), 1);
    EXPECT_EQ(told(), "de 1");
    finish();
    EXPECT_EQ(told(), "");
}

TEST_F(FontCoverageTest, LooksAtATouchedLanguageAndNoOther) {
    run({"de", "ja"});
    set("/localization/translations/ja/door/text", "a");
    set("/localization/translations/de/door/text", "a");
    coverage.touch(language("ja"));
    coverage.touch(language("th"));
    EXPECT_FALSE(coverage.isFinished());
    EXPECT_EQ(finish(), 1);
    EXPECT_EQ(told(), "de 1");
}

TEST_F(FontCoverageTest, LooksOnceMoreAtALanguageThatIsTouchedMeanwhile) {
    coverage.restart(indices({"ja"}));
    coverage.advance(project.project(), 0);
    coverage.touch(language("ja"));
    finish();
    EXPECT_EQ(told(), "ja 2");
    EXPECT_EQ(coverage.revision(), 2u);
    project.project()
        .getValue("/localization/translations/de", false)
        ->AddMember("more", rapidjson::Value{rapidjson::kObjectType}, project.project().document().GetAllocator());
    coverage.restart(indices({"de"}));
    coverage.advance(project.project(), 1);
    EXPECT_FALSE(coverage.isFinished());
    set("/localization/translations/de/door/text", "a");
    coverage.touch(language("de"));
    finish();
    EXPECT_EQ(told(), "");
}

TEST_F(FontCoverageTest, TheSourcesAreThoseOfTheDefaultLanguage) {
    run({"en", "de"});
    EXPECT_EQ(told(), "en 1, de 1");
    set("/objects/door/text", "A door");
    set("/localization/translations/de/door/text", "a");
    coverage.touchSources(project.project());
    finish();
    EXPECT_EQ(told(), "de 1");
}

TEST_F(FontCoverageTest, ATextCountsAtOnce) {
    addAll(U"ü");
    run({"de", "ja"});
    const UnsignedInt before = coverage.revision();
    EXPECT_TRUE(coverage.add(language("de"), "Tür"));
    EXPECT_EQ(coverage.revision(), before);
    EXPECT_TRUE(coverage.add(language("de"), "süß"));
    EXPECT_NE(coverage.revision(), before);
    EXPECT_EQ(told(), "de 1, ja 2");
    EXPECT_FALSE(coverage.add(language("de"), "a"));
    // Letters that were met before do not count twice.
    coverage.add(language("de"), "ßß");
    EXPECT_EQ(told(), "de 1, ja 2");
    EXPECT_TRUE(coverage.add(language("th"), "ที่"));
    EXPECT_EQ(told(), "de 1, ja 2");
}

TEST_F(FontCoverageTest, ATextCountsForTheLanguageThatIsLookedAt) {
    addAll(U"ü");
    project.project()
        .getValue("/localization/translations/de", false)
        ->AddMember("more", rapidjson::Value{rapidjson::kObjectType}, project.project().document().GetAllocator());
    coverage.restart(indices({"de"}));
    coverage.advance(project.project(), 1);
    ASSERT_FALSE(coverage.isFinished());
    coverage.add(language("de"), "ß");
    finish();
    EXPECT_EQ(told(), "de 1");
}

TEST_F(FontCoverageTest, WithoutLanguagesThereIsNothingToTell) {
    run({"ja"});
    EXPECT_EQ(run({}), 0);
    EXPECT_EQ(told(), "");
}

TEST_F(FontCoverageTest, AtOnceTheSameIsFound) {
    addAll(U"ü");
    run({"en", "de", "ja", "ar", "th"});
    const std::string found = told();
    EXPECT_EQ(found, "en 1, ja 2, ar 2 shaped, th 3 shaped");
    EXPECT_EQ(
        told(lettersOf(project.project().document(), indices({"en", "de", "ja", "ar", "th"}), language("en"), drawn)),
        found);
    // Where the project does not say which language its source texts are in, somebody else does.
    EXPECT_EQ(told(lettersOf(project.project().document(), indices({"de", "ja"}), language("ja"), drawn)), "ja 1");
}

TEST_F(FontCoverageTest, DocumentsOfWrongTypesHaveNoTexts) {
    for(const char* text:
        {"{}", "[]", R"({"localization": 7})", R"({"localization": {"terms": [], "translations": "x"}})",
            R"({"languages": [], "localization": {"translations": {"de": {"a": "b", "c": {"text": null}}}}})",
            R"({"languages": {"de": {"isDefault": true}}, "localization": {"terms": {"a": {"sourceText": "/~"}, "b": {"sourceText": ""},
                "c": {"sourceText": "/"}, "d": []}}})"}) {
        TestProject odd{text};
        coverage.restart(indices({"de"}));
        coverage.advance(odd.project(), 100000);
        EXPECT_TRUE(coverage.isFinished()) << text;
        EXPECT_EQ(told(), "") << text;
        EXPECT_EQ(told(lettersOf(odd.project().document(), indices({"de"}), language("de"), drawn)), "") << text;
    }
}

}
}
