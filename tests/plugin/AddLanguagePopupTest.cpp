/* The popup that offers the languages that the project does not have. */

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

TEST(AddLanguagePopup, ItsTooltipsSayWhatToSearchForAndTheCode) {
    ViewTest test{English};
    const auto tooltip = [&](ImGuiTestContext& user) {
        user.Yield(3);
        std::string text;
        for(const ImGuiWindow* const window: user.UiContext->Windows)
            if(window->Active && window->Flags & ImGuiWindowFlags_Tooltip) text = window->Name;
        return !text.empty();
    };
    test.run([&](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.SetRef(languagePopup(user));
        user.MouseMove("##languagesearch");
        user.SetRef("//Localization");
        IM_CHECK(tooltip(user));
        test.capturesText = true;
        user.Yield(2);
        IM_CHECK(test.capturedText.find("You can search for language or code.") != std::string::npos);
        test.capturesText = false;
        user.MouseMove(offeredLanguage(user, "Welsh").ID);
        IM_CHECK(tooltip(user));
        test.capturesText = true;
        user.Yield(2);
        IM_CHECK(test.capturedText.find("id: cy") != std::string::npos);
        test.capturesText = false;
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

TEST(AddLanguagePopup, WhatIsTypedAppearsInTheSearchField) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("wel");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), 1);
        IM_CHECK(offeredLanguage(user, "Welsh").ID);
    });
}

}
}
