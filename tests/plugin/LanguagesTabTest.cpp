/* The tab of languages: the search, the rows with the default's star, and removing one. */

#include <cstring>
#include <vector>

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

TEST(LanguagesTab, ItsTableBearsTheNameOfTheTermTableAndIsAnother) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        user.SetRef(childWindow(user, "termtablebody"));
        const ImGuiTable* const terms = ImGui::TableFindByID(user.GetID("termstable"));
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        user.SetRef(childWindow(user, "languagestablebody"));
        const ImGuiTable* const table = ImGui::TableFindByID(user.GetID("termstable"));
        user.SetRef("//Localization");
        IM_CHECK(table != nullptr);
        IM_CHECK(terms != nullptr);
        IM_CHECK(table != terms);
        IM_CHECK_EQ(terms->ColumnsCount, 3);
        IM_CHECK_EQ(table->ColumnsCount, 2);
        IM_CHECK_EQ(table->Flags & ImGuiTableFlags_Borders, ImGuiTableFlags_Borders);
        IM_CHECK_EQ(table->Columns[1].WidthGiven, 100.0f);
    });
}

/* What a frame drew, read at its end */
struct Heights {
    float region;
    float table;
};

Heights heightsOfLanguages() {
    for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
        if(window->Active && std::strstr(window->Name, "/languagestablebody_"))
            return {
                window->Size.y, ImGui::TableFindByID(ImHashStr("termstable", 0, window->ID))->OuterRect.GetHeight()};
    return {};
}

TEST(LanguagesTab, InEveryFrameTheTableHasTheHeightThatItsRowsHadInTheFrameBefore) {
    ViewTest test{Project};
    std::vector<Heights> frames;
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        test.beside = [&] { frames.push_back(heightsOfLanguages()); };
        user.Yield(2);
        search(user, "##languagesearch", "French");
        search(user, "##languagesearch", "no such language");
        search(user, "##languagesearch", "");
        test.beside = nullptr;
    });
    int changes = 0;
    for(std::size_t i = 1; i < frames.size(); ++i) {
        EXPECT_EQ(frames[i].region, frames[i - 1].table) << i;
        if(frames[i].table != frames[i - 1].table) ++changes;
    }
    EXPECT_GE(changes, 3);
}

TEST(LanguagesTab, TheTableLeavesRoomForTheButton) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        const ImGuiWindow* const body = childWindow(user, "languagestablebody");
        IM_CHECK_EQ(body->ScrollMax.y, 0.0f);
        const ImRect button = user.ItemInfo("Add Language").RectFull;
        IM_CHECK_EQ(button.GetHeight(), ImGui::CalcTextSize("Add Language").y + 10.0f);
        IM_CHECK_EQ(button.GetWidth(), user.WindowInfo("").Window->WorkRect.GetWidth());
        IM_CHECK_GE(button.Min.y, body->Rect().Max.y);

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
