/* State that all instances share, and that starts anew with a module that is loaded again. */

#include "ViewState.h"

#include <cstring>

#include <gtest/gtest.h>

#include "LocalizationView.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

using namespace ViewState;

TEST(ViewState, StartsWithTheTermsAndNoPopup) {
    EXPECT_EQ(currentTab, 0);
    EXPECT_EQ(currentMode, 0);
    EXPECT_EQ(lastSearch, 0);
    EXPECT_EQ(toRemovoveIndex, -1);
    EXPECT_EQ(lastTableHeight, 0.0f);
    EXPECT_EQ(currentFormat, 0);
    EXPECT_FALSE(enableZipCompression);
    EXPECT_EQ(importExportPopupNames[0], "None");
    EXPECT_EQ(importExportPopupNames[1], "Import Terms");
    EXPECT_EQ(importExportPopupNames[2], "Export Terms");
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(lastFramePopupHeight, 0.0f);
    ASSERT_EQ(sizeof(pathBuffer), 256);
    for(const char c: pathBuffer) EXPECT_EQ(c, '\0');
}

/* Two views that are linked into this program, so that their variables can be read */
class SharedViewState: public testing::Test {
protected:
    SharedViewState() {
        for(LocalizationView* const view: {&_first, &_second})
            view->init(_test.gui.context(), &_test.session.data(), &_test.application);
        _test.view = &_first;
    }

    ViewTest _test{R"({"languages": {"en": {"isDefault": true}, "de": {}, "fr": {}}})"};
    LocalizationView _first{_test.manager, "Localization"};
    LocalizationView _second{_test.manager, "Localization"};
};

TEST_F(SharedViewState, TheTabIsThatOfTheOtherView) {
    _test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
    EXPECT_EQ(currentTab, 1);
    _test.view = &_second;
    EXPECT_NE(_test.shownText().find("Add Language"), std::string::npos);
}

TEST_F(SharedViewState, APopupOfOneViewGoesOnInTheOther) {
    bool isOpenInSecond = false;
    _test.run([&](ImGuiTestContext& user) {
        user.ItemClick("##MenuBar/File");
        /* Both views are the same window, so one takes over where the other stopped */
        _test.beside = [&] {
            if(currentMode == 0) return;
            _test.view = &_second;
            _test.beside = nullptr;
        };
        user.ItemClick("//$FOCUSED/Import");
        user.Yield(4);
        const ImGuiWindow* const popup = user.WindowInfo("//Import Terms").Window;
        isOpenInSecond = popup && popup->Active && _test.view == &_second;
        IM_CHECK_EQ(currentMode, 1);
        user.ItemClick("//Import Terms/#CLOSE");
        user.Yield(2);
        IM_CHECK_EQ(currentMode, 0);
    });
    EXPECT_TRUE(isOpenInSecond);
}

/* A view finds the revision stored by the other, and keeps what it had found before */
TEST_F(SharedViewState, ASearchByOneViewIsTheLastOneOfBoth) {
    _test.replaceDocument(R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"before": {}}}})");
    _test.run([](ImGuiTestContext&) {});
    _test.view = &_second;
    _test.frames(2);
    EXPECT_EQ(lastSearch, _test.session.data().currentRevision());
    _test.replaceDocument(R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"after": {}}}})");
    EXPECT_NE(_test.shownText().find("after"), std::string::npos);
    EXPECT_EQ(lastSearch, _test.session.data().currentRevision());
    _test.view = &_first;
    EXPECT_NE(_test.shownText().find("before"), std::string::npos);
}

TEST_F(SharedViewState, TheTableBeginsWithTheHeightThatItHadInTheOtherView) {
    _test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
    const float three = lastTableHeight;
    EXPECT_GT(three, 0.0f);
    _test.view = &_second;
    float first = 0.0f;
    _test.beside = [&] {
        if(first != 0.0f) return;
        for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->Active && std::strstr(window->Name, "/languagestablebody_")) first = window->Size.y;
    };
    _test.frames(1);
    EXPECT_EQ(first, three);
    EXPECT_EQ(lastTableHeight, three);
    lastTableHeight = three + 7.0f;
    first = 0.0f;
    _test.frames(1);
    EXPECT_EQ(first, three + 7.0f);
}

/* What the menu was opened on is a row of the filtered list; once it is removed, there is no such row */
TEST_F(SharedViewState, TheRowOfTheMenuIsForgottenWhenItIsRemoved) {
    _test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        IM_CHECK_EQ(toRemovoveIndex, -1);
        openContextMenu(user, "French");
        IM_CHECK_EQ(toRemovoveIndex, 2);
        user.ItemClick("//$FOCUSED/Remove");
        user.Yield();
        IM_CHECK_EQ(toRemovoveIndex, -1);
    });
}

TEST(ViewState, StartsAnewWithAModuleThatIsLoadedAgain) {
    ViewTest test{English};
    ASSERT_TRUE(test.view);
    const auto exportPath = [](ImGuiTestContext& user) {
        user.ItemInput("//Export Terms/##path");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        return std::string{ImGui::GetClipboardText()};
    };
    std::string proposed;
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.MenuClick("File/Export");
        proposed = exportPath(user);
        user.KeyCharsReplace("/somewhere");
        IM_CHECK_STR_EQ(exportPath(user).c_str(), "/somewhere");
        user.ItemClick("//Export Terms/##zip");
        IM_CHECK(user.ItemIsChecked("//Export Terms/##zip"));
        user.ItemClick("//Export Terms/#CLOSE");
    });
    EXPECT_NE(test.shownText().find("Add Language"), std::string::npos);

    test.module = nullptr;
    test.manager.unload("Localization");
    /* The library remembers the tab that a user chose; a fresh window has none */
    ImGui::GetCurrentContext()->TabBars.Clear();
    test.module = test.manager.loadAndInstantiate("Localization");
    ASSERT_TRUE(test.module);
    test.view = static_cast<EditorView*>(test.module.get());
    test.view->init(test.gui.context(), &test.session.data(), &test.application);
    EXPECT_NE(test.shownText().find("Translatable?"), std::string::npos);
    test.run([&](ImGuiTestContext& user) {
        user.MenuClick("File/Export");
        IM_CHECK(!user.ItemIsChecked("//Export Terms/##zip"));
        IM_CHECK_STR_EQ(exportPath(user).c_str(), proposed.c_str());
        user.ItemClick("//Export Terms/#CLOSE");
    });
}

}
}
