#include "app/ReportTable.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Language.h"
#include "ShownText.h"
#include "localization/LastRun.h"
#include "support/FrameAllocations.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::frameAllocations;
using QuorvaneEngine::Test::GuiTest;
using QuorvaneEngine::Test::language;
using QuorvaneEngine::Test::shownText;

class ReportTableTest: public testing::Test {
protected:
    void assign() {
        table.assign(std::make_shared<LocalizationRun>(std::move(run)));
        run = {LocalizationRun::Kind::Import, "/here", {}, {}};
    }

    /** Four lines, told apart by their terms. */
    void assignFour() {
        run.report.add(language("fr"), TermOutcome::Skipped, "d", "no term has this key", "fr/translation.json");
        run.report.add(language("de"), TermOutcome::Added, "b");
        run.report.add(language("fr"), TermOutcome::Changed, "a");
        run.report.add(language("de"), TermOutcome::Skipped, "c", "is not translatable");
        assign();
    }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({1000.0f, 500.0f});
        ImGui::Begin("Window", nullptr, ImGuiWindowFlags_NoSavedSettings);
        table.draw({0.0f, 400.0f});
        if(ImGui::Button("Copy selected")) table.copySelected();
        ImGui::End();
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { draw(); },
            [&](ImGuiTestContext& user) {
                user.SetRef("//Window");
                script(user);
            });
    }

    /** The selectable of a line by its index in the report. */
    static ImGuiID line(int index) {
        const ImGuiID id = ImHashStr("lines", 0, ImGui::FindWindowByName("Window")->ID);
        return ImHashStr("##line", 0, ImHashData(&index, sizeof(index), id));
    }

    std::string terms() const {
        std::string terms;
        for(std::size_t row = 0; row != table.rows().size(); ++row)
            terms += std::string{table.rows()[row].term.data(), table.rows()[row].term.size()};
        return terms;
    }

    static std::string clipboard() {
        const char* const text = ImGui::GetClipboardText();
        return text ? text : "";
    }

    LocalizationRun run{LocalizationRun::Kind::Import, "/here", {}, {}};
    ReportTable table;
    GuiTest gui;
};

TEST_F(ReportTableTest, EveryLineShowsAllThatItHas) {
    assignFour();
    const std::string text = shownText(gui, [this] { draw(); });
    EXPECT_NE(text.find("| Language | Outcome | Term | Reason | File |"), std::string::npos) << text;
    // In the order in which cells are drawn.
    EXPECT_NE(text.find("Skipped | French | d | no term has this key | fr/translation.json |"), std::string::npos)
        << text;
    EXPECT_NE(text.find("Added | German | b |"), std::string::npos) << text;
}

TEST_F(ReportTableTest, LanguagesAndFilesThatNoLineHasHaveNoColumn) {
    run.report.add(LocalizationReport::NoLanguage, TermOutcome::Added, "door");
    assign();
    const std::string text = shownText(gui, [this] { draw(); });
    EXPECT_NE(text.find("| Outcome | Term | Reason |"), std::string::npos) << text;
    EXPECT_EQ(text.find("Language"), std::string::npos) << text;
    EXPECT_EQ(text.find("File"), std::string::npos) << text;
}

TEST_F(ReportTableTest, AClickOnAHeadingSortsBothWaysAndThenNoMore) {
    assignFour();
    EXPECT_TRUE(play("sort", [this](ImGuiTestContext& user) {
        user.Yield();
        IM_CHECK_STR_EQ(terms().c_str(), "dcab");
        user.TableClickHeader("lines", "Term");
        user.Yield();
        IM_CHECK_STR_EQ(terms().c_str(), "abcd");
        user.TableClickHeader("lines", "Term");
        user.Yield();
        IM_CHECK_STR_EQ(terms().c_str(), "dcba");
        user.TableClickHeader("lines", "Term");
        user.Yield();
        IM_CHECK_STR_EQ(terms().c_str(), "dbac");
        const struct {
            const char* column;
            const char* order;
        } cases[]{{"Language", "dabc"}, {"Outcome", "dcab"}, {"Reason", "bacd"}, {"File", "bacd"}};
        for(const auto& data: cases) {
            user.TableClickHeader("lines", data.column);
            user.Yield();
            IM_CHECK_STR_EQ(terms().c_str(), data.order);
        }
    }));
}

TEST_F(ReportTableTest, AnotherReportIsSortedAsTheLastOneWas) {
    assignFour();
    EXPECT_TRUE(play("sort", [this](ImGuiTestContext& user) {
        user.TableClickHeader("lines", "Term");
        user.Yield();
        for(const char* term: {"z", "x", "y"}) run.report.add(language("ja"), TermOutcome::Added, term);
        assign();
        user.Yield();
        IM_CHECK_STR_EQ(terms().c_str(), "xyz");
    }));
}

TEST_F(ReportTableTest, TheSelectedLineIsCopiedAlsoWhereItWasSortedElsewhere) {
    assignFour();
    EXPECT_TRUE(play("copy", [](ImGuiTestContext& user) {
        ImGui::SetClipboardText("before");
        user.ItemClick("Copy selected");
        IM_CHECK_STR_EQ(clipboard().c_str(), "before");
        user.ItemClick(line(2));
        user.TableClickHeader("lines", "Term");
        user.ItemClick("Copy selected");
        IM_CHECK_STR_EQ(clipboard().c_str(), "fr\tChanged\ta\t\t\n");
    }));
}

TEST_F(ReportTableTest, AnotherReportHasNothingSelected) {
    assignFour();
    EXPECT_TRUE(play("copy", [this](ImGuiTestContext& user) {
        user.ItemClick(line(0));
        run.report.add(language("ja"), TermOutcome::Added, "z");
        assign();
        ImGui::SetClipboardText("before");
        user.ItemClick("Copy selected");
        IM_CHECK_STR_EQ(clipboard().c_str(), "before");
    }));
}

TEST_F(ReportTableTest, ARightClickOffersToCopyTheLineOrAllThatAreShown) {
    assignFour();
    table.filter(ReportRows::bit(TermOutcome::Skipped), {});
    EXPECT_TRUE(play("copy", [](ImGuiTestContext& user) {
        user.ItemClick(line(3), ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/Copy this line");
        IM_CHECK_STR_EQ(clipboard().c_str(), "de\tSkipped\tc\tis not translatable\t\n");
        user.ItemClick(line(0), ImGuiMouseButton_Right);
        user.ItemClick("//$FOCUSED/Copy all lines shown");
        IM_CHECK_STR_EQ(clipboard().c_str(),
            "Language\tOutcome\tTerm\tReason\tFile\n"
            "fr\tSkipped\td\tno term has this key\tfr/translation.json\n"
            "de\tSkipped\tc\tis not translatable\t\n");
    }));
}

TEST_F(ReportTableTest, ATextThatDoesNotFitShowsUnderTheMouse) {
    const std::string reason(300, 'x');
    run.report.add(language("de"), TermOutcome::Skipped, "long", reason.c_str());
    run.report.add(language("de"), TermOutcome::Skipped, "short", "no");
    assign();
    const auto hasTooltip = [] {
        for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->WasActive && window->Flags & ImGuiWindowFlags_Tooltip) return true;
        return false;
    };
    EXPECT_TRUE(play("tooltip", [&](ImGuiTestContext& user) {
        const auto point = [&user](int index) {
            const ImRect row = user.ItemInfo(line(index)).RectFull;
            user.MouseMoveToPos({700.0f, row.GetCenter().y});
            user.SleepNoSkip(1.0f, 0.1f);
        };
        point(1);
        IM_CHECK(!hasTooltip());
        point(0);
        IM_CHECK(hasTooltip());
    }));
}

/* As large as the import of 20 languages with 30,000 terms that all are new. */
constexpr int Many = 600000;

TEST_F(ReportTableTest, WhateverItsSizeAFrameAllocatesNothingAndDrawsWhatShows) {
    const auto corners = [this] {
        int corners = 0;
        gui.frames([this] { draw(); }, 10);
        for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            corners += window->DrawList->VtxBuffer.Size;
        return corners;
    };
    for(int i = 0; i != 100; ++i) run.report.add(language("de"), TermOutcome::Added, "settings.sound.volume");
    assign();
    const int few = corners();
    for(int i = 0; i != Many; ++i) run.report.add(language("de"), TermOutcome::Added, "settings.sound.volume");
    assign();
    // The scroll bar's handle has other rounded corners.
    EXPECT_NEAR(corners(), few, 50);

    EXPECT_EQ(frameAllocations(gui, 20, [this] { draw(); }), 0u);
}

TEST_F(ReportTableTest, TheLastOfManyLinesIsReachedAndStandsOnTheGround) {
    for(int i = 0; i != Many; ++i) run.report.add(language("de"), TermOutcome::Added, "x");
    assign();
    EXPECT_TRUE(play("scroll", [](ImGuiTestContext& user) {
        ImGuiWindow* inner = nullptr;
        for(ImGuiWindow* const window: user.UiContext->Windows)
            if(window->ParentWindow == ImGui::FindWindowByName("Window")) inner = window;
        IM_CHECK(inner != nullptr);
        inner->Scroll.y = inner->ScrollMax.y;
        user.Yield(2);
        const ImRect last = user.ItemInfo(line(Many - 1)).RectFull;
        IM_CHECK(last.GetWidth() > 0.0f);
        IM_CHECK(ImFabs(last.Max.y - inner->InnerClipRect.Max.y) < 4.0f);
        const ImRect above = user.ItemInfo(line(Many - 2)).RectFull;
        IM_CHECK(ImFabs(above.Max.y - last.Min.y) < 4.0f);
    }));
}

}
}
