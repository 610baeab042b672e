/* The tab of languages: the search, the rows with the default's star, and removing one. */

#include <gtest/gtest.h>

#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr char Project[] = R"({"languages": {"de": {}, "en": {"isDefault": true}, "fr": {}, "cy": {}}})";

constexpr char Star[] = "\xef\x80\x85";

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

bool hasRow(ImGuiTestContext& user, const char* const language) {
    return rowItem(user, "languagestablebody", (std::string{"##"} + language).c_str()).ID;
}

void remove(ImGuiTestContext& user, const char* const language) {
    openContextMenu(user, language);
    user.ItemClick("//$FOCUSED/Remove");
    user.Yield(2);
}

TEST(LanguagesTab, ListsNamesAndCodesInTheProjectsOrderWithAStarAtTheDefault) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, "| Display Name | Code |")) << shown;
    const std::size_t german = shown.find("German | de |");
    const std::size_t english = shown.find(std::string{Star} + " English | en |");
    const std::size_t french = shown.find("French | fr |");
    ASSERT_NE(german, std::string::npos) << shown;
    ASSERT_NE(english, std::string::npos) << shown;
    ASSERT_NE(french, std::string::npos) << shown;
    EXPECT_LT(german, english);
    EXPECT_LT(english, french);
    EXPECT_EQ(shown.find(Star), shown.rfind(Star));
}

TEST(LanguagesTab, NamesAreWhite) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        ImGui::GetStyle().Colors[ImGuiCol_Text] = {0.0f, 1.0f, 0.0f, 1.0f};
        user.MouseMoveToPos({10.0f, 10.0f});
        user.Yield(2);
        const ImRect row = rowItem(user, "languagestablebody", "##German").RectFull;
        IM_CHECK(paints(IM_COL32_WHITE, row));
        IM_CHECK(!paints(IM_COL32(255, 0, 0, 255), row));
    });
}

TEST(LanguagesTab, TheSearchLooksAtNamesAndCodesWithoutRegardToCase) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        search(user, "##languagesearch", "GERM");
        IM_CHECK(hasRow(user, "German"));
        IM_CHECK(!hasRow(user, "French"));
        search(user, "##languagesearch", "CY");
        IM_CHECK(hasRow(user, "Welsh"));
        IM_CHECK(!hasRow(user, "German"));
        search(user, "##languagesearch", "");
        for(const char* const language: {"German", "English", "French", "Welsh"}) IM_CHECK(hasRow(user, language));
    });
}

TEST(LanguagesTab, RemoveTakesALanguageFromTheListAndNotFromTheProject) {
    ViewTest test{Project};
    const std::string before = test.document();
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        remove(user, "French");
        IM_CHECK(!hasRow(user, "French"));
        IM_CHECK(hasRow(user, "German"));
    });
    EXPECT_EQ(test.document(), before);
}

TEST(LanguagesTab, RemoveWithAFilterTakesTheOneAtThatPlaceOfTheUnfilteredList) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        search(user, "##languagesearch", "French");
        remove(user, "French");
        search(user, "##languagesearch", "");
        IM_CHECK(hasRow(user, "French"));
        IM_CHECK(!hasRow(user, "German"));
    });
}

TEST(LanguagesTab, TheLastLanguageCannotBeRemoved) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        openContextMenu(user, "English");
        IM_CHECK(user.ItemInfo("//$FOCUSED/Remove").ItemFlags & ImGuiItemFlags_Disabled);
        user.PopupCloseAll();
        IM_CHECK(hasRow(user, "English"));
    });
}

TEST(LanguagesTab, WithTwoLanguagesOneCanBeRemoved) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "fr": {}}})"};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        openContextMenu(user, "French");
        IM_CHECK(!(user.ItemInfo("//$FOCUSED/Remove").ItemFlags & ImGuiItemFlags_Disabled));
        user.PopupCloseAll();
    });
}

TEST(LanguagesTab, ALeftClickOpensNoMenu) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.ItemClick(rowItem(user, "languagestablebody", "##French").ID);
        user.Yield(2);
        IM_CHECK(user.UiContext->OpenPopupStack.empty());
    });
}

TEST(LanguagesTab, SharesItsTableWithTheTerms) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.SetRef(childWindow(user, "languagestablebody"));
        const ImGuiTable* const table = ImGui::TableFindByID(user.GetID("termstable"));
        IM_CHECK(table != nullptr);
        IM_CHECK_EQ(table->ColumnsCount, 2);
        IM_CHECK_EQ(table->Flags & ImGuiTableFlags_Borders, ImGuiTableFlags_Borders);
        IM_CHECK_EQ(table->Columns[1].WidthGiven, 100.0f);
        user.SetRef("//Localization");
    });
}

TEST(LanguagesTab, TheTableIsAsHighAsItsRowsAFrameLaterAndLeavesRoomForTheButton) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        const ImGuiWindow* body = childWindow(user, "languagestablebody");
        IM_CHECK_EQ(body->ScrollMax.y, 0.0f);
        user.SetRef(childWindow(user, "languagestablebody"));
        const ImGuiTable* const table = ImGui::TableFindByID(user.GetID("termstable"));
        user.SetRef("//Localization");
        IM_CHECK_EQ(body->Size.y, table->OuterRect.GetHeight());
        const float four = body->Size.y;
        const ImRect button = user.ItemInfo("Add Language").RectFull;
        IM_CHECK_EQ(button.GetHeight(), ImGui::CalcTextSize("Add Language").y + 10.0f);
        IM_CHECK_EQ(button.GetWidth(), user.WindowInfo("").Window->WorkRect.GetWidth());
        IM_CHECK_GE(button.Min.y, body->Rect().Max.y);

        search(user, "##languagesearch", "French");
        IM_CHECK_LT(body->Size.y, four);

        search(user, "##languagesearch", "");
        user.WindowResize("//Localization", {400.0f, 150.0f});
        user.Yield(3);
        const ImGuiWindow* const window = user.WindowInfo("//Localization").Window;
        IM_CHECK_GT(body->ScrollMax.y, 0.0f);
        IM_CHECK_LE(user.ItemInfo("Add Language").RectFull.Max.y, window->InnerRect.Max.y);
        IM_CHECK_EQ(window->ScrollMax.y, 0.0f);
    });
}

}
}
