/* The host asks the view to show a term, wherever the user has the view. */

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "TermMark.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

std::string project(int terms) {
    std::string text = R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"": {}, "a/b~c": {})";
    for(int i = 0; i != terms; ++i) text += ", \"term." + std::to_string(i) + "\": {}";
    return text + "}}}";
}

constexpr ImU32 Mark = IM_COL32(255, 0, 255, 255);

class ShowTerm: public testing::Test {
protected:
    /** The row of a term where it stands now, without scrolling to it; empty where it does not show. */
    static ImRect shownRow(ImGuiTestContext& user, const char* term) {
        ImGuiWindow* body = nullptr;
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->WasActive && Containers::StringView{window->Name}.contains("termtablebody")) body = window;
        if(!body) return {};
        user.SetRef(body);
        const ImGuiTestItemInfo row =
            user.ItemInfo((std::string{"termstable/"} + term).c_str(), ImGuiTestOpFlags_NoError);
        user.SetRef("//Localization");
        if(!row.ID) return {};
        ImRect rect = row.RectFull;
        rect.ClipWithFull(body->InnerClipRect);
        return rect.GetHeight() == row.RectFull.GetHeight() ? row.RectFull : ImRect{};
    }

    static bool isShown(ImGuiTestContext& user, const char* term) { return shownRow(user, term).GetArea() > 0.0f; }

    static bool isMarked(ImGuiTestContext& user, const char* term) {
        const ImRect row = shownRow(user, term);
        return row.GetArea() > 0.0f &&
            paints(Mark, {row.Min.x - 8.0f, row.Min.y - 8.0f, row.Max.x + 8.0f, row.Max.y + 8.0f});
    }

    static void setMarkColor() {
        ImGui::GetStyle().Colors[ImGuiCol_TextSelectedBg] = ImGui::ColorConvertU32ToFloat4(Mark);
    }

    ViewTest test{project(2000).c_str()};
};

TEST_F(ShowTerm, ScrollsToTheRowAndMarksItForAWhile) {
    test.run([&](ImGuiTestContext& user) {
        setMarkColor();
        user.Yield(2);
        IM_CHECK(!isShown(user, "term.1500"));
        IM_CHECK(test.view->show("/localization/terms/term.1500"));
        user.Yield(2);
        IM_CHECK(isMarked(user, "term.1500"));
        IM_CHECK(!isMarked(user, "term.1503"));
        for(double begin = ImGui::GetTime(); ImGui::GetTime() < begin + TermMark::Duration;) user.Yield();
        user.Yield();
        IM_CHECK(isShown(user, "term.1500"));
        IM_CHECK(!isMarked(user, "term.1500"));
    });
}

TEST_F(ShowTerm, ARowThatShowsAlreadyStaysWhereItIs) {
    test.run([&](ImGuiTestContext& user) {
        setMarkColor();
        user.Yield(2);
        const ImRect before = shownRow(user, "term.2");
        IM_CHECK(before.GetArea() > 0.0f);
        IM_CHECK(test.view->show("/localization/terms/term.2"));
        user.Yield(2);
        IM_CHECK(isMarked(user, "term.2"));
        IM_CHECK_EQ(shownRow(user, "term.2").Min.y, before.Min.y);
    });
}

TEST_F(ShowTerm, ASearchThatHidesItIsEmptiedAndOneThatShowsItStays) {
    test.run([&](ImGuiTestContext& user) {
        search(user, "##termsearch", "term.19");
        IM_CHECK(test.view->show("/localization/terms/term.1999"));
        user.Yield(2);
        IM_CHECK(isShown(user, "term.1999"));
        IM_CHECK(!isShown(user, "term.0"));
        IM_CHECK(test.view->show("/localization/terms/term.700"));
        user.Yield(4);
        IM_CHECK(isShown(user, "term.700"));
        IM_CHECK(isShown(user, "term.701"));
    });
}

TEST_F(ShowTerm, TurnsToTheTabOfTerms) {
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.Yield(2);
        IM_CHECK(!isShown(user, "term.900"));
        IM_CHECK(test.view->show("/localization/terms/term.900"));
        user.Yield(4);
        IM_CHECK(isShown(user, "term.900"));
        selectTab(user, "Languages");
        user.Yield(4);
        IM_CHECK(!isShown(user, "term.900"));
    });
}

TEST_F(ShowTerm, ACollapsedWindowShowsItWhenItIsOpen) {
    test.run([&](ImGuiTestContext& user) {
        user.WindowCollapse("//Localization", true);
        user.Yield(2);
        IM_CHECK(test.view->show("/localization/terms/term.900"));
        user.Yield(4);
        user.WindowCollapse("//Localization", false);
        user.Yield(4);
        IM_CHECK(isShown(user, "term.900"));
    });
}

TEST_F(ShowTerm, KeysOfAnyKindAndValuesBelowATermAreFound) {
    test.run([&](ImGuiTestContext& user) {
        setMarkColor();
        IM_CHECK(test.view->show("/localization/terms/term.1000"));
        user.Yield(2);
        IM_CHECK(test.view->show("/localization/terms/a~1b~0c"));
        user.Yield(4);
        IM_CHECK(isMarked(user, "a\\/b~c"));
        IM_CHECK(test.view->show("/localization/terms/term.1000"));
        user.Yield(4);
        IM_CHECK(isMarked(user, "term.1000"));
        // Its row has no label.
        IM_CHECK(test.view->show("/localization/terms/"));
        user.Yield(4);
        IM_CHECK(!isShown(user, "term.1000"));
        IM_CHECK(isShown(user, "term.0"));
    });
    EXPECT_FALSE(test.view->show("/localization/terms/term.1000/sourceText"));
    test.session.changes().pushChange(
        "/localization/terms/term.1000/sourceText", Containers::StringView{"name"}, false);
    EXPECT_TRUE(test.view->show("/localization/terms/term.1000/sourceText"));
}

TEST_F(ShowTerm, WhatTheViewDoesNotShowIsRefusedAndChangesNothing) {
    test.run([&](ImGuiTestContext& user) {
        search(user, "##termsearch", "term.19");
        for(const char* const path:
            {"", "/", "/languages/en", "/localization", "/localization/terms", "/localization/term",
                "/localization/terms/gone", "/localization/terms/a~2", "localization/terms/term.1"})
            IM_CHECK(!test.view->show(path));
        user.Yield(2);
        IM_CHECK(isShown(user, "term.19"));
        IM_CHECK(!isShown(user, "term.0"));
    });
}

TEST_F(ShowTerm, ATermThatIsRemovedBeforeTheNextFrameIsForgotten) {
    test.run([&](ImGuiTestContext& user) {
        search(user, "##termsearch", "term.19");
        IM_CHECK(test.view->show("/localization/terms/term.900"));
        test.session.changes().pushRemoval("/localization/terms/term.900");
        user.Yield(4);
        IM_CHECK(isShown(user, "term.0"));
        test.session.changes().undoLast();
        user.Yield(4);
        IM_CHECK(isShown(user, "term.0"));
    });
}

}
}
