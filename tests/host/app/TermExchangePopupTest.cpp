#include <string>

#include "TermExchangeTest.h"
#include "localization/LastRun.h"

/* The popup in which an import is asked for. */

namespace QuorvaneEngine::Test {
namespace {

TEST_F(TermExchangeTest, TheDialogsChooseThePathThatIsProposedNextTime) {
    EXPECT_TRUE(play("dialogs", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        chosen = "/nowhere";
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "folder /project/i18n");
        chosen = "/terms/";
        user.ItemClick("//Preview Import/###Archive");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "archive /nowhere");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        IM_CHECK(says("What an import from /terms would do: 1 added, 1 changed"));
        choose(user, "File/Preview import...");
        user.Yield(3);
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(2);
        IM_CHECK_STR_EQ(asked.c_str(), "folder /terms");
    }));
}

TEST_F(TermExchangeTest, ADialogThatCannotBeShownIsExplainedInThePopup) {
    EXPECT_TRUE(play("dialog", [](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        const float height = user.ItemInfo("//Preview Import/Preview").RectFull.Min.y;
        user.ItemClick("//Preview Import/###Folder");
        user.Yield(3);
        IM_CHECK_EQ(user.ItemInfo("//Preview Import/Preview").RectFull.Min.y, height);
        user.ItemClick("//Preview Import/###Archive");
        user.Yield(3);
        IM_CHECK(user.ItemInfo("//Preview Import/Preview").RectFull.Min.y != height);
    }));
}

TEST_F(TermExchangeTest, APathThatIsNoneIsExplainedInThePopupAndNothingRuns) {
    files.put("/a.txt", "no archive");
    EXPECT_TRUE(play("paths", [this](ImGuiTestContext& user) {
        for(const char* path: {"relative/path", "/nowhere"}) {
            start(user, path);
            user.Yield(2);
            IM_CHECK(!frame.exchange().isBusy());
            IM_CHECK(isShown("Preview Import"));
            user.ItemClick("//Preview Import/Cancel");
            user.Yield(3);
            IM_CHECK(!isShown("Preview Import"));
        }
        IM_CHECK(!isOpen());
        IM_CHECK(!lastRun(session.editor()));
    }));
}

TEST_F(TermExchangeTest, ARefusedSetIsExplainedInThePopupAndInTheReport) {
    files.put("/terms/fr/translation.json", "{\"door\": ");
    EXPECT_TRUE(play("refused", [this](ImGuiTestContext& user) {
        preview(user);
        IM_CHECK(isShown("Preview Import"));
        IM_CHECK(isOpen());
        IM_CHECK(lastRun(session.editor()) != nullptr);
        IM_CHECK_EQ(lastRun(session.editor())->refusals.size(), std::size_t(1));
        IM_CHECK(log.last()->text == lastRun(session.editor())->refusals[0]);
        files.put("/terms/fr/translation.json", "{\"door\": \"Porte\"}");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        IM_CHECK(user.ItemExists("//Localization Report/###Apply"));
    }));
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, WithoutLanguagesTheDefaultOneIsAskedFor) {
    files.put("/other/project.json", "{}");
    ASSERT_TRUE(frame.open("/other"));
    before = document();
    EXPECT_TRUE(play("language", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        user.KeyCharsReplace("/terms");
        user.ItemClick("//Preview Import/##language");
        user.Yield(3);
        user.KeyChars("German");
        user.Yield(2);
        user.ItemClick("//$FOCUSED/German");
        user.ItemClick("//Preview Import/Preview");
        await(user);
        user.ItemClick("//Localization Report/###Apply");
        user.Yield(2);
    }));
    EXPECT_EQ(document().find(R"({"languages":{"de":{"isDefault":true}},)"), 0u) << document();
    session.undo();
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, LanguagesWithoutADefaultAreARefusal) {
    files.put("/other/project.json", R"({"languages": {"de": {}}})");
    ASSERT_TRUE(frame.open("/other"));
    EXPECT_TRUE(play("no default", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        user.Yield(2);
        IM_CHECK(!frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
    }));
}

}
}
