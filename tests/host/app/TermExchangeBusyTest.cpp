#include <atomic>
#include <string>

#include "TermExchangeTest.h"
#include "localization/LastRun.h"

/* While a preview is made: what waits, what is refused, and how it is ended early. */

namespace QuorvaneEngine::Test {
namespace {

TEST_F(TermExchangeTest, WhileAPreviewRunsNothingCanChangeTheProject) {
    edit("/objects/lamp/colour", "red");
    const std::string edited = document();
    files.close();
    EXPECT_TRUE(play("modal", [&](ImGuiTestContext& user) {
        start(user, "/terms");
        user.Yield();
        IM_CHECK(frame.exchange().isBusy());
        files.awaitReader();
        for(const ImGuiKeyChord keys: {ImGuiMod_Ctrl | ImGuiKey_Z, ImGuiMod_Ctrl | ImGuiKey_Y,
                ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_Z, ImGuiMod_Ctrl | ImGuiKey_O, ImGuiMod_Ctrl | ImGuiKey_Q}) {
            user.KeyPress(keys);
            user.Yield(2);
        }
        const ImRect button = user.ItemInfo("//Counter/Count").RectFull;
        user.MouseMoveToPos(button.GetCenter());
        user.MouseClick();
        user.Yield(2);
        IM_CHECK(document() == edited);
        IM_CHECK(frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
        IM_CHECK(!frame.isFinished());
        IM_CHECK(asked.empty());
        files.open();
        await(user);
        IM_CHECK(document() == edited);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, ACancelledPreviewEndsAndLeavesNoTrace) {
    for(const char* code: {"es", "fr", "it", "ja"})
        files.put(std::string{"/terms/"} + code + "/translation.json", R"({"door": "x"})");
    files.close();
    EXPECT_TRUE(play("cancel", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        user.ItemClick("//Preview Import/###Cancel");
        user.Yield(2);
        IM_CHECK(frame.exchange().isBusy());
        IM_CHECK(isShown("Preview Import"));
        const int reads = files.reads();
        files.open();
        await(user);
        IM_CHECK(files.reads() <= reads + 1);
        IM_CHECK(!isShown("Preview Import"));
        IM_CHECK(!isOpen());
        IM_CHECK(!lastRun(session.editor()));
        IM_CHECK(says("Nothing was imported from /terms"));
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
    }));
    EXPECT_EQ(document(), before);
}

TEST_F(TermExchangeTest, QuittingCancelsWhatRunsAndWaitsForIt) {
    files.close();
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        frame.requestQuit();
        // The next frame waits for the job, and the job for this.
        files.open();
        user.Yield(2);
        IM_CHECK(frame.isFinished());
        IM_CHECK(!frame.exchange().isBusy());
        IM_CHECK(document() == before);
    }));
}

TEST_F(TermExchangeTest, QuittingAsksForUnsavedChangesInPlaceOfThePopup) {
    edit("/objects/lamp/colour", "red");
    EXPECT_TRUE(play("quit", [this](ImGuiTestContext& user) {
        choose(user, "File/Preview import...");
        user.Yield(3);
        frame.requestQuit();
        user.Yield(4);
        IM_CHECK(!isShown("Preview Import"));
        IM_CHECK(isShown("Unsaved changes"));
        user.ItemClick("//Unsaved changes/Cancel");
        user.Yield(2);
        IM_CHECK(!frame.isFinished());
    }));
}

TEST_F(TermExchangeTest, AJobOfTheGuiThreadWaitsForTheEndOfTheComparison) {
    std::atomic<bool> mayEnd{false};
    bool hasRun = false;
    files.close();
    EXPECT_TRUE(play("job", [&](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        // Keeps the only worker from the comparison when the files have been read.
        jobs.dispatch([&] { mayEnd.wait(false); }, {}, {});
        files.open();
        while(!frame.exchange().readsProject()) user.Yield();
        jobs.dispatch([&] { hasRun = true; }, {}, JobFlag::MainThread);
        user.Yield(5);
        IM_CHECK(!hasRun);
        IM_CHECK(frame.exchange().isBusy());
        mayEnd = true;
        mayEnd.notify_all();
        await(user);
        IM_CHECK(hasRun);
    }));
    mayEnd = true;
    mayEnd.notify_all();
}

TEST_F(TermExchangeTest, AProjectIsOpenedWhileAPreviewRuns) {
    files.close();
    EXPECT_TRUE(play("open", [this](ImGuiTestContext& user) {
        start(user, "/terms");
        files.awaitReader();
        files.open();
        IM_CHECK(frame.open("/other"));
        IM_CHECK(!frame.exchange().isBusy());
        user.Yield(3);
        IM_CHECK(!isShown("Preview Import"));
    }));
    EXPECT_EQ(document(), "{}");
}

}
}
