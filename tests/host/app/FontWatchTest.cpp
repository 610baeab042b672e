#include "app/FontWatch.h"

#include <Corrade/Containers/Array.h>

#include "host/localization/TestProject.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

class FontWatchTest: public testing::Test {
protected:
    void update() {
        project.session.beginFrame();
        watch.update(project.project(), project.session.data().storedRevision(), languagesOf(project.project()));
    }

    std::string summary() const { return copied(watch.summary()); }

    TestProject project{R"({"languages": {"de": {}, "ja": {}}, "localization": {"translations": {
        "de": {"door": {"text": "Tuer"}}, "ja": {"door": {"text": "灯"}}}}})"};
    LetterSet drawn;
    FontWatch watch{drawn};
};

TEST_F(FontWatchTest, TellsWhatCannotBeDrawn) {
    EXPECT_EQ(summary(), "");
    update();
    EXPECT_FALSE(watch.isBusy());
    EXPECT_EQ(summary(), "ja cannot be drawn");
}

TEST_F(FontWatchTest, LooksAgainAfterAChangeAndOnlyThen) {
    update();
    // Behind the back of the project, so nothing has changed as far as anybody knows.
    project.project().getValue("/localization/translations/ja/door/text", false)->SetString("a");
    update();
    EXPECT_EQ(summary(), "ja cannot be drawn");
    project.session.changes().pushChange("/localization/translations/de/door/text", "Tür", false);
    update();
    EXPECT_EQ(summary(), "de cannot be drawn");
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
    project.session.changes().pushChange("/localization/translations/de", many, false);
    int frames = 0;
    do {
        update();
        ++frames;
    } while(watch.isBusy() && frames != 100);
    EXPECT_EQ(frames, 3);
    EXPECT_EQ(summary(), "ja cannot be drawn");
}

}
}
