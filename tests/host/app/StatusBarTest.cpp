#include "app/StatusBar.h"

#include <string>

#include <gtest/gtest.h>

#include "app/Fonts.h"
#include "app/MessageLog.h"
#include "app/Theme.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr const char* Ids[]{
    "//##status/##folder", "//##status/##state", "//##status/##obstacle", "//##status/##fonts", "//##status/##message"};

class StatusBarTest: public testing::Test {
protected:
    /** Draws the bar in a window of this width. */
    bool play(const float width, const float scale, const GuiTest::Script& script) {
        GuiTest gui{{width, 400.0f}};
        ImGui::GetStyle().FontSizeBase = Fonts::Size;
        Theme::apply(scale);
        const auto draw = [this] {
            const ShownText text;
            clicks += StatusBar::draw(facts, log);
            seen = text.text();
        };
        return gui.run("bar", draw, script);
    }

    bool isSeen(const char* text) const { return times(text) > 0; }

    /** A text that is cut counts: it is what the bar means to show. */
    int times(const std::string& text) const {
        int count = 0;
        for(std::size_t at = 0; (at = seen.find(text, at)) != std::string::npos; ++at) ++count;
        return count;
    }

    MessageLog log;
    StatusBar::Facts facts{"/home/somebody/projects/the last lighthouse", true, "Arabic: letters are not joined",
        "Arabic (ar): letters are not joined, runs from left to right", "another program writes it"};
    int clicks = 0;
    std::string seen;
};

TEST_F(StatusBarTest, NothingOverlapsAtAnyScaleAndWidth) {
    log.note("Took over 12 texts of 7 languages from the archive that somebody has sent, and left 3 out");
    for(const float scale: {0.75f, 1.0f, 2.0f, 3.0f})
        for(const float width: {640.0f, 1000.0f, 1600.0f, 4000.0f}) {
            SCOPED_TRACE(testing::Message() << scale << ", " << width);
            float end = 0.0f;
            float height = 0.0f;
            EXPECT_TRUE(play(width, scale, [&](ImGuiTestContext& user) {
                user.Yield();
                for(const char* const id: Ids) {
                    const ImRect rect = user.ItemInfo(id).RectFull;
                    IM_CHECK_GT(rect.Min.x, end);
                    IM_CHECK_GE(rect.GetWidth(), ImGui::GetFontSize() * 0.4f);
                    IM_CHECK_LE(rect.Max.y, 400.0f);
                    end = rect.Max.x;
                    height = rect.GetHeight();
                }
            }));
            EXPECT_LE(end, width);
            EXPECT_EQ(height, Fonts::Size * scale);
        }
}

TEST_F(StatusBarTest, AMessageThatIsCutIsReadUnderTheMouse) {
    log.note("Took over 12 texts of 7 languages from the archive that somebody has sent, and left 3 out");
    EXPECT_TRUE(play(640.0f, 2.0f, [this](ImGuiTestContext& user) {
        user.Yield();
        IM_CHECK_EQ(times("and left 3 out"), 1);
        user.MouseMove("//##status/##message");
        IM_CHECK_EQ(times("and left 3 out"), 2);
        user.MouseMove("//##status/##folder");
        IM_CHECK_EQ(times("/home/somebody/projects/the last lighthouse"), 1);
        user.MouseMove("//##status/##state");
        IM_CHECK_EQ(times("Unsaved changes"), 2);
        IM_CHECK_EQ(times("and left 3 out"), 1);
    }));
}

TEST_F(StatusBarTest, WhatFitsStandsInWholeAndHasNoTooltip) {
    log.note("Saved it");
    EXPECT_TRUE(play(4000.0f, 1.0f, [this](ImGuiTestContext& user) {
        user.Yield();
        const std::string before = seen;
        for(const char* const text: {"the last lighthouse", "Unsaved changes", "Read-only", "Arabic", "Saved it"})
            IM_CHECK(isSeen(text));
        user.MouseMove("//##status/##message");
        IM_CHECK(seen == before);
        IM_CHECK_EQ(user.ItemInfo("//##status/##message").RectFull.Max.x, 3988.0f);
    }));
}

TEST_F(StatusBarTest, FontsAndObstaclesAreExplainedUnderTheMouse) {
    EXPECT_TRUE(play(4000.0f, 1.0f, [this](ImGuiTestContext& user) {
        user.MouseMove("//##status/##fonts");
        IM_CHECK(isSeen("runs from left to right"));
        user.MouseMove("//##status/##obstacle");
        IM_CHECK(isSeen("another program writes it"));
        IM_CHECK(!isSeen("runs from left to right"));
    }));
}

TEST_F(StatusBarTest, OnlyTheMessageCanBeClicked) {
    log.note("Saved it");
    EXPECT_TRUE(play(1600.0f, 1.0f, [](ImGuiTestContext& user) {
        for(const char* const id: Ids) user.ItemClick(id);
    }));
    EXPECT_EQ(clicks, 1);
}

TEST_F(StatusBarTest, WithoutAProjectItSaysSo) {
    facts = {};
    EXPECT_TRUE(play(640.0f, 1.0f, [this](ImGuiTestContext& user) {
        user.Yield();
        IM_CHECK(isSeen("No project"));
        IM_CHECK(!isSeen("Saved"));
        IM_CHECK(!user.ItemExists("//##status/##state"));
        IM_CHECK(!user.ItemExists("//##status/##message"));
    }));
}

}
}
