/* The popup that offers the languages that the project does not have. */

#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Utils.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

ImGuiWindow* popup(ImGuiTestContext& user) {
    ImVector<ImGuiPopupData>& open = user.UiContext->OpenPopupStack;
    return open.empty() ? nullptr : open[0].Window;
}

ImGuiWindow* list(ImGuiTestContext& user) {
    for(ImGuiWindow* const window: user.UiContext->Windows)
        if(popup(user) && window->ParentWindow == popup(user) && window->WasActive &&
            window->Flags & ImGuiWindowFlags_ChildWindow)
            return window;
    return nullptr;
}

void openPopup(ImGuiTestContext& user) {
    selectTab(user, "Languages");
    user.ItemClick("//Localization/Add Language");
    user.Yield(3);
    IM_CHECK(popup(user) != nullptr);
}

/* The row of a language in the list, brought into view */
ImGuiTestItemInfo offered(ImGuiTestContext& user, const Containers::StringView language) {
    ImGuiWindow* const window = list(user);
    for(float y = 0.0f;; y += window->InnerRect.GetHeight() * 0.5f) {
        window->Scroll.y = std::min(y, window->ScrollMax.y);
        user.Yield(2);
        user.SetRef(window);
        const ImGuiTestItemInfo item = user.ItemInfo(language.data(), ImGuiTestOpFlags_NoError);
        user.SetRef("//Localization");
        if(item.ID && window->ClipRect.Contains(item.RectFull.GetCenter())) return item;
        if(y >= window->ScrollMax.y) return user.ItemInfoNull();
    }
}

int rowsInList(ImGuiTestContext& user) {
    const ImGuiWindow* const window = list(user);
    /* Rows are a line and 2 pixels high, with 2 pixels between them */
    const float row = ImGui::GetTextLineHeight() + 4.0f;
    return int((window->ContentSize.y + 2.0f) / row + 0.5f);
}

TEST(AddLanguagePopup, LiesBelowTheButtonAsWideAsIt) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openPopup(user);
        const ImRect button = user.ItemInfo("//Localization/Add Language").RectFull;
        const ImGuiWindow* const window = popup(user);
        IM_CHECK_EQ(window->Pos.x, button.Min.x);
        IM_CHECK_EQ(window->Pos.y, button.Max.y);
        IM_CHECK_EQ(window->Size.x, button.GetWidth());
        IM_CHECK_EQ(window->Size.y, 900.0f - button.Min.y - 2.0f * ImGui::GetTextLineHeight());
    });
}

TEST(AddLanguagePopup, OffersEveryLanguageThatTheProjectDoesNotHave) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "de": {}, "fr": {}}})"};
    test.run([](ImGuiTestContext& user) {
        openPopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 3);
        IM_CHECK(!offered(user, "German").ID);
        IM_CHECK(offered(user, "Welsh").ID);
    });
}

TEST(AddLanguagePopup, TheLastRowCanBeScrolledTo) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openPopup(user);
        ImGuiWindow* const window = list(user);
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
        openPopup(user);
        user.KeyChars("dE");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), expected);
        IM_CHECK(offered(user, "German").ID);
        IM_CHECK(!offered(user, "Welsh").ID);
    });
}

TEST(AddLanguagePopup, TheChosenLanguageIsAppendedToTheListAndThePopupCloses) {
    ViewTest test{English};
    const std::string before = test.document();
    test.run([&](ImGuiTestContext& user) {
        openPopup(user);
        user.KeyChars("de");
        user.Yield(2);
        user.ItemClick(offered(user, "German").ID);
        user.Yield(3);
        IM_CHECK(popup(user) == nullptr);
        IM_CHECK(rowItem(user, "languagestablebody", "##German").ID);
        IM_CHECK_GT(rowItem(user, "languagestablebody", "##German").RectFull.Min.y,
            rowItem(user, "languagestablebody", "##English").RectFull.Min.y);
    });
    EXPECT_EQ(test.document(), before);
}

TEST(AddLanguagePopup, OpensAgainWithAnEmptySearchAndWithoutTheAddedLanguage) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openPopup(user);
        user.KeyChars("de");
        user.Yield(2);
        user.ItemClick(offered(user, "German").ID);
        user.Yield(3);
        openPopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 2);
        IM_CHECK(!offered(user, "German").ID);
        user.KeyChars("de");
        user.Yield(2);
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        openPopup(user);
        IM_CHECK_EQ(rowsInList(user), int(LanguageCount) - 2);
    });
}

TEST(AddLanguagePopup, EscapeClosesItAndAddsNothing) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        openPopup(user);
        user.KeyChars("German");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(popup(user) == nullptr);
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
        openPopup(user);
        user.SetRef(popup(user));
        user.MouseMove("##languagesearch");
        user.SetRef("//Localization");
        IM_CHECK(tooltip(user));
        test.capturesText = true;
        user.Yield(2);
        IM_CHECK(test.capturedText.find("You can search for language or code.") != std::string::npos);
        test.capturesText = false;
        user.MouseMove(offered(user, "Welsh").ID);
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
        openPopup(user);
        IM_CHECK_EQ(rowsInList(user), 0);
        user.KeyChars("de");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), 0);
    });
}

TEST(AddLanguagePopup, WhatIsTypedAppearsInTheSearchField) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        openPopup(user);
        user.KeyChars("wel");
        user.Yield(2);
        IM_CHECK_EQ(rowsInList(user), 1);
        IM_CHECK(offered(user, "Welsh").ID);
    });
}

}
}
