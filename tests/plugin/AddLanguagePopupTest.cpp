/* The popup that offers the languages that the project does not have. */

#include <algorithm>

#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Utils.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

int rowsInList(ImGuiTestContext& user) {
    const ImGuiWindow* const window = languageList(user);
    /* Rows are a line and 2 pixels high, with 2 pixels between them */
    const float row = ImGui::GetTextLineHeight() + 4.0f;
    return int((window->ContentSize.y + 2.0f) / row + 0.5f);
}

TEST(AddLanguagePopup, LiesBelowTheButtonAsWideAsIt) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        const ImRect button = user.ItemInfo("//Localization/Add Language").RectFull;
        const ImGuiWindow* const window = languagePopup(user);
        IM_CHECK_EQ(window->Pos.x, button.Min.x);
        IM_CHECK_EQ(window->Pos.y, button.Max.y);
        IM_CHECK_EQ(window->Size.x, button.GetWidth());
        IM_CHECK_EQ(window->Size.y, 900.0f - button.Min.y - 2.0f * ImGui::GetTextLineHeight());
    });
}

TEST(AddLanguagePopup, OffersEveryLanguageThatTheProjectDoesNotHave) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "de": {}, "fr": {}}})"};
    test.run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 3);
        IM_CHECK(!offeredLanguage(user, "German").ID);
        IM_CHECK(offeredLanguage(user, "Welsh").ID);
    });
}

TEST(AddLanguagePopup, TheLastRowCanBeScrolledTo) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        ImGuiWindow* const window = languageList(user);
        const float row = ImGui::GetTextLineHeight() + 4.0f;
        IM_CHECK_EQ(window->ContentSize.y, row * float(LanguageCount - 1) - 2.0f);
        window->Scroll.y = window->ScrollMax.y;
        user.Yield(3);
        user.SetRef(window);
        const ImGuiTestItemInfo last = user.ItemInfo(AllLanguages[LanguageCount - 1].name.data());
        IM_CHECK(last.ID != 0);
        IM_CHECK_EQ(window->ContentSize.y, row * float(LanguageCount - 1) - 2.0f);
        IM_CHECK(window->InnerRect.Contains(last.RectFull.GetCenter()));
        user.SetRef("//Localization");
    });
}

TEST(AddLanguagePopup, DeFindsNamesAndCodesWithoutRegardToCase) {
    ViewTest test{English};
    int expected = 0;
    for(const Language& language: AllLanguages)
        if(Utils::caseInsensitiveSearch(language.name, "de") != -1 ||
            Utils::caseInsensitiveSearch(language.code, "de") != -1)
            ++expected;
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("dE");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), expected);
        IM_CHECK(offeredLanguage(user, "German").ID);
        IM_CHECK(!offeredLanguage(user, "Welsh").ID);
    });
}

TEST(AddLanguagePopup, TheChosenLanguageIsAppendedToTheListAndThePopupCloses) {
    ViewTest test{English};
    const std::string before = test.document();
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("de");
        user.Yield(2);
        user.ItemClick(offeredLanguage(user, "German").ID);
        user.Yield(3);
        IM_CHECK(languagePopup(user) == nullptr);
        IM_CHECK(rowItem(user, "languagestablebody", "##German").ID);
        IM_CHECK_GT(rowItem(user, "languagestablebody", "##German").RectFull.Min.y,
            rowItem(user, "languagestablebody", "##English").RectFull.Min.y);
    });
    EXPECT_EQ(test.document(), before);
}

TEST(AddLanguagePopup, OpensAgainWithAnEmptySearchAndWithoutTheAddedLanguage) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("de");
        user.Yield(2);
        user.ItemClick(offeredLanguage(user, "German").ID);
        user.Yield(3);
        openLanguagePopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 2);
        IM_CHECK(!offeredLanguage(user, "German").ID);
        user.KeyChars("de");
        user.Yield(2);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        openLanguagePopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 2);
    });
}

TEST(AddLanguagePopup, EscapeClosesItAndAddsNothing) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("German");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(languagePopup(user) == nullptr);
        IM_CHECK(!rowItem(user, "languagestablebody", "##German").ID);
    });
}

std::string tooltip(ViewTest& test, ImGuiTestContext& user) {
    user.Yield(3);
    const bool shows = std::any_of(user.UiContext->Windows.begin(), user.UiContext->Windows.end(),
        [](const ImGuiWindow* const window) { return window->Active && window->Flags & ImGuiWindowFlags_Tooltip; });
    if(!shows) return {};
    test.capturesText = true;
    user.Yield(2);
    test.capturesText = false;
    return test.capturedText;
}

TEST(AddLanguagePopup, ItsTooltipsSayWhatToSearchForAndTheCode) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.SetRef(languagePopup(user));
        user.MouseMove("##languagesearch");
        user.SetRef("//Localization");
        IM_CHECK(tooltip(test, user).find("You can search for language or code.") != std::string::npos);
        user.MouseMove(offeredLanguage(user, "Welsh").ID);
        IM_CHECK(tooltip(test, user).find("id: cy") != std::string::npos);
    });
}

/* With a cursor that shows, and the mouse where it is */
void openLanguagePopupByKeys(ImGuiTestContext& user) {
    user.NavMoveTo("Add Language");
    user.KeyPress(ImGuiKey_Space);
    user.Yield(3);
    IM_CHECK(languagePopup(user) != nullptr);
    IM_CHECK(user.UiContext->NavCursorVisible);
}

TEST(AddLanguagePopup, TheKeyboardsCursorInTheFieldShowsNoTooltip) {
    ViewTest test{English};
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.MouseMove("Add Language");
        openLanguagePopupByKeys(user);
        IM_CHECK_STR_EQ(tooltip(test, user).c_str(), "");
        user.KeyChars("ger");
        IM_CHECK_STR_EQ(tooltip(test, user).c_str(), "");
    });
}

TEST(AddLanguagePopup, TheRowUnderTheMouseShowsItsCodeWhereverTheKeyboardsCursorIs) {
    ViewTest test{English};
    ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard;
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.MouseMove(offeredLanguage(user, AllLanguages[1].name).ID);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        openLanguagePopupByKeys(user);
        IM_CHECK(user.UiContext->NavHighlightItemUnderNav);
        const std::string expected = "id: " + std::string{AllLanguages[1].code.data(), AllLanguages[1].code.size()};
        IM_CHECK(tooltip(test, user).find(expected) != std::string::npos);
    });
}

TEST(AddLanguagePopup, IsEmptyWhereTheProjectHasEveryLanguage) {
    std::string project = R"({"languages": {"en": {"isDefault": true})";
    for(const Language& language: AllLanguages)
        if(language.code != "en")
            project += ", \"" + std::string{language.code.data(), language.code.size()} + "\": {}";
    ViewTest test{(project + "}}").c_str()};
    test.run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        IM_CHECK_EQ(rowsInList(user), 0);
        user.KeyChars("de");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), 0);
    });
}

/* The text of the search field, or its hint "Search" */
std::string searchField(ViewTest& test, ImGuiTestContext& user) {
    test.capturesText = true;
    user.Yield(2);
    test.capturesText = false;
    /* The field of the popup is the last one that a frame shows */
    const std::size_t begin = test.capturedText.rfind("{ ");
    const std::size_t end = test.capturedText.find(" }", begin);
    return begin == std::string::npos ? "" : test.capturedText.substr(begin + 2, end - begin - 2);
}

TEST(AddLanguagePopup, WhatIsTypedAppearsInTheSearchField) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        IM_CHECK_STR_EQ(searchField(test, user).c_str(), "Search");
        user.KeyChars("wel");
        IM_CHECK_STR_EQ(searchField(test, user).c_str(), "wel");
        IM_CHECK_EQ(rowsInList(user), 1);
    });
}

TEST(AddLanguagePopup, TheSearchHoldsNinetyNineBytes) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars(std::string(150, 'x').c_str());
        IM_CHECK_STR_EQ(searchField(test, user).c_str(), std::string(99, 'x').c_str());
    });
}

/* The field takes the cursor back and empties, which is no change that it would report: the list stays filtered until a key is hit */
TEST(AddLanguagePopup, AClickIntoAnEmptyPlaceOfTheListEmptiesTheFieldAndKeepsTheResults) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("wel");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), 1);
        const ImRect list = languageList(user)->InnerRect;
        user.MouseMoveToPos({list.GetCenter().x, list.Max.y - 20.0f});
        user.MouseClick();
        IM_CHECK_STR_EQ(searchField(test, user).c_str(), "Search");
        IM_CHECK_EQ(rowsInList(user), 1);
        IM_CHECK(offeredLanguage(user, "Welsh").ID);
        user.KeyChars("ger");
        user.Yield(2);
        IM_CHECK(offeredLanguage(user, "German").ID);
        IM_CHECK(!offeredLanguage(user, "Welsh").ID);
    });
}

/* Whoever opens it while Escape is held, sees it close when the key repeats */
TEST(AddLanguagePopup, AHeldEscapeKeyClosesItWhenItRepeats) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.MouseMove("Add Language");
        user.KeyDown(ImGuiKey_Escape);
        user.MouseClick();
        user.Yield(2);
        IM_CHECK(languagePopup(user) != nullptr);
        const int repeat = int(ImGui::GetIO().KeyRepeatDelay * 60.0f) + 2;
        user.Yield(repeat);
        IM_CHECK(languagePopup(user) == nullptr);
        user.KeyUp(ImGuiKey_Escape);
    });
}

}
}
