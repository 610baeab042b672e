#include "app/FontWatch.h"

#include <Corrade/Containers/Array.h>

#include "host/localization/TestProject.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

constexpr double Quiet = 1.0;
constexpr const char* German = "German (de): no font has its letter ";
constexpr const char* Japanese = "Japanese (ja): no font has its letter U+706F\n";

class FontWatchTest: public testing::Test {
protected:
    FontWatchTest() { watch.restart(project.session.watch(), languagesOf(project.project())); }

    /** A frame after some seconds. */
    void update(const double seconds = 0.0) {
        now += seconds;
        project.session.beginFrame();
        watch.update(project.project(), now);
    }

    /** The languages that are told of, with their reasons. */
    std::string told() const {
        const std::string text = copied(watch.details());
        return text.substr(0, text.find("\nThis is how"));
    }

    void push(const std::string& path, const char* text) {
        project.session.changes().pushChange(viewed(path), text, false);
    }

    /** Behind the back of the project, so nothing has changed as far as anybody knows. */
    void sneak(const char* path, const char* text) { project.project().getValue(path, false)->SetString(text, 1); }

    TestProject project{R"({"languages": {"en": {"isDefault": true}, "de": {}, "ja": {}},
        "objects": {"door": {"text": "Door", "place": [1, 2]}}, "title": "Game", "localization": {
        "terms": {"door": {"sourceText": "/objects/door/text"}, "title": {"sourceText": "title"}}, "translations": {
        "de": {"door": {"text": "Tuer"}}, "ja": {"door": {"text": "灯"}}}}})"};
    LetterSet drawn;
    FontWatch watch{drawn};
    double now = 0.0;
};

TEST_F(FontWatchTest, TellsWhatCannotBeDrawn) {
    EXPECT_EQ(told(), "");
    EXPECT_TRUE(watch.isBusy());
    update();
    EXPECT_FALSE(watch.isBusy());
    EXPECT_EQ(told(), Japanese);
    EXPECT_EQ(copied(watch.summary()), "Japanese: letters are missing");
}

TEST_F(FontWatchTest, ANewTextIsToldAtOnceAndAlone) {
    update();
    sneak("/localization/translations/ja/door/text", "a");
    push("/localization/translations/de/door/text", "Tür");
    update();
    EXPECT_FALSE(watch.isBusy());
    EXPECT_EQ(told(), std::string{German} + "U+00FC\n" + Japanese);
    project.session.undo();
    push("/localization/translations/de/door", "no translation");
    project.session.changes().pushChange("/localization/translations/de/key",
        std::move(
            rapidjson::Value{rapidjson::kObjectType}.AddMember("text", "ß", project.session.changes().allocator())),
        false);
    update();
    EXPECT_EQ(told().find("German (de): no font has 2 of its letters, such as U+00FC\n"), 0u) << told();
}

TEST_F(FontWatchTest, WhatIsGoneIsForgottenAfterAQuietWhile) {
    update();
    push("/localization/translations/ja/door/text", "a");
    update();
    EXPECT_FALSE(watch.isBusy());
    EXPECT_EQ(told(), Japanese);
    update(Quiet / 2);
    EXPECT_EQ(told(), Japanese);
    update(Quiet);
    EXPECT_EQ(told(), "");
    project.session.undo();
    update();
    EXPECT_EQ(told(), Japanese);
    project.session.redo();
    update();
    update(Quiet);
    EXPECT_EQ(told(), "");
}

TEST_F(FontWatchTest, WhoChangesSomethingAllTheTimeWaitsForTenSeconds) {
    update();
    int changes = 0;
    for(; told() == Japanese && changes != 100; ++changes) {
        push("/localization/translations/ja/door/text", "a");
        update(Quiet / 2);
    }
    EXPECT_EQ(changes, 21);
}

TEST_F(FontWatchTest, ALanguageThatLooksWellIsNotLookedAtForAText) {
    update();
    sneak("/localization/translations/de/door/text", "\xc3\xbc");
    push("/localization/translations/de/other/text", "a");
    push("/localization/translations/de/other/state", "draft");
    update();
    update(Quiet);
    EXPECT_EQ(told(), Japanese);
}

TEST_F(FontWatchTest, SourceTextsAreFollowedToWhereTheyAre) {
    update();
    push("/objects/door/text", "A door — open");
    push("/title", "“");
    update();
    update(Quiet);
    EXPECT_EQ(told(), std::string{"English (en): no font has 2 of its letters, such as U+2014\n"} + Japanese);
    push("/title", "Game");
    project.session.changes().pushRemoval("/objects/door");
    update();
    update(Quiet);
    EXPECT_EQ(told(), Japanese);
}

TEST_F(FontWatchTest, NewTermsBringTheirSources) {
    update();
    push("/more/text", "ö");
    push("/localization/terms/more/sourceText", "/more/text");
    update();
    update(Quiet);
    EXPECT_EQ(told().find("English (en): no font has its letter U+00F6\n"), 0u) << told();
    push("/more/text", "a");
    update();
    update(Quiet);
    EXPECT_EQ(told(), Japanese);
}

TEST_F(FontWatchTest, WhatHoldsNoTextIsNoneOfItsBusiness) {
    update();
    sneak("/title", "\xc3\xbc");
    project.session.changes().pushChange("/objects/door/place/0", rapidjson::Value{7}, false);
    project.session.changes().pushChange("/objects/door/weight", rapidjson::Value{7}, false);
    update();
    update(Quiet);
    EXPECT_EQ(told(), Japanese);
}

TEST_F(FontWatchTest, AWholeLanguageThatComesOrGoesIsLookedAt) {
    update();
    project.session.changes().pushRemoval("/localization/translations/ja");
    update();
    update(Quiet);
    EXPECT_EQ(told(), "");
    project.session.undo();
    update();
    update(Quiet);
    EXPECT_EQ(told(), Japanese);
    project.session.changes().pushRemoval("/localization");
    update();
    update(Quiet);
    EXPECT_EQ(told(), "");
}

TEST_F(FontWatchTest, OtherLanguagesAreTakenAtOnceAndAnotherDefaultAfterAQuietWhile) {
    update();
    const UnsignedInt languages[]{UnsignedInt(findLanguage("en")), UnsignedInt(findLanguage("ja"))};
    watch.setLanguages(languages);
    EXPECT_TRUE(watch.isBusy());
    update();
    EXPECT_FALSE(watch.isBusy());
    EXPECT_EQ(told(), Japanese);
    project.session.changes().pushChange("/languages/ja/isDefault", rapidjson::Value{true}, false);
    watch.setLanguages(languages);
    EXPECT_FALSE(watch.isBusy());
    update();
    update(Quiet);
    // Its texts are those of the terms now.
    EXPECT_EQ(told(), "");
}

TEST_F(FontWatchTest, ManyTextsTakeMoreThanOneFrame) {
    rapidjson::Value many{rapidjson::kObjectType};
    auto& allocator = project.project().document().GetAllocator();
    for(int i = 0; i != 5000; ++i) {
        const std::string key = std::to_string(i);
        rapidjson::Value entry{rapidjson::kObjectType};
        entry.AddMember("text", "x", allocator);
        many.AddMember(rapidjson::Value{key.c_str(), allocator}, entry, allocator);
    }
    update();
    project.session.changes().pushChange("/localization/translations/de", many, false);
    update();
    EXPECT_FALSE(watch.isBusy());
    update(Quiet);
    EXPECT_TRUE(watch.isBusy());
    int frames = 1;
    for(; watch.isBusy() && frames != 100; ++frames) {
        // Another change does not make it begin anew.
        push("/localization/translations/de/0/text", "y");
        update();
    }
    EXPECT_EQ(frames, 3);
}

}
}
