/* The view's window, menus and tabs, its life, and what it knows of the project's languages. */

#include "LocalizationView.h"

#include <cstring>

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "ViewState.h"
#include "plugin/ViewTest.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine::Test {
namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/* What the language tab lists, star included */
std::string languagesShown(ViewTest& test) {
    test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
    return test.shownText();
}

/* Life */

TEST(LocalizationView, InitSaysSoAndRegistersTheTitle) {
    const CapturedOutput output;
    ViewTest test{English};
    EXPECT_EQ(output.debug(), "Initializing View: Localization\n");
    EXPECT_EQ(test.session.state().viewTitle(test.view->viewId()), "Localization");
    EXPECT_TRUE(test.view->open());
}

TEST(LocalizationViewDeathTest, InitWithoutAnArgumentAborts) {
    ViewTest test{English};
    EXPECT_DEATH(test.view->init(nullptr, nullptr, nullptr), "EditorView::init\\(\\): ImGuiContext was nullptr");
    EXPECT_DEATH(
        test.view->init(test.gui.context(), nullptr, nullptr), "EditorView::init\\(\\): EditorData was nullptr");
    EXPECT_DEATH(test.view->init(test.gui.context(), &test.session.data(), nullptr),
        "EditorView::init\\(\\): QuorvaneEditor was nullptr");
}

TEST(LocalizationView, AFinalUnloadHandsNothingOver) {
    ViewTest test{English};
    EXPECT_TRUE(test.view->unload(true).isEmpty());
}

TEST(LocalizationView, ItsStateIsThreePointersThatBindTheNextView) {
    ViewTest test{English};
    Containers::Array<char> state = test.view->unload(false);
    ASSERT_EQ(state.size(), 24);
    const void* pointers[3];
    std::memcpy(pointers, state.data(), 24);
    EXPECT_EQ(pointers[0], test.gui.context());
    EXPECT_EQ(pointers[1], &test.session.data());
    EXPECT_EQ(pointers[2], &test.application);

    test.module = test.manager.loadAndInstantiate("Localization");
    test.view = static_cast<EditorView*>(test.module.get());
    const CapturedOutput output;
    test.view->load(state);
    EXPECT_EQ(output.debug(), "Initializing View: Localization\n");
    EXPECT_TRUE(contains(test.shownText(), "Translatable?"));
}

TEST(LocalizationView, LoadingNoStateDoesNotInitialize) {
    ViewTest test{English};
    const CapturedOutput output;
    test.module->load();
    test.view->load({});
    EXPECT_EQ(output.debug(), "");
}

TEST(LocalizationView, IgnoresKeysAndEvents) {
    ViewTest test{English};
    test.frames(2);
    const std::string before = test.document();
    test.view->keyPressEvent();
    test.view->keyReleaseEvent();
    test.view->update();
    test.view->exitEvent();
    test.view->deinit();
    test.frames(2);
    EXPECT_EQ(test.document(), before);
}

/* The window */

TEST(LocalizationView, FirstWindowIs250WideAndTheDisplayLess450High) {
    ViewTest test{English, {1280.0f, 900.0f}};
    test.frames(3);
    const ImGuiWindow* const window = ImGui::FindWindowByName("Localization");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->Size.x, 250.0f);
    EXPECT_EQ(window->Size.y, 450.0f);
}

TEST(LocalizationView, TheUsersSizeStays) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        user.WindowResize("//Localization", {500.0f, 400.0f});
        user.Yield(5);
        const ImGuiWindow* const window = user.WindowInfo("//Localization").Window;
        IM_CHECK_EQ(window->Size.x, 500.0f);
        IM_CHECK_EQ(window->Size.y, 400.0f);
    });
}

TEST(LocalizationView, TheCloseButtonClearsTheOpenFlag) {
    ViewTest test{English};
    test.run([&](ImGuiTestContext& user) {
        user.WindowClose("//Localization");
        IM_CHECK(!test.view->open());
    });
    EXPECT_FALSE(test.view->open());
}

TEST(LocalizationView, ACollapsedWindowIsBalanced) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"a": {}, "b": {}}}})"};
    for(const char* const tab: {"Terms", "Languages"})
        test.run([&](ImGuiTestContext& user) {
            selectTab(user, tab);
            user.WindowCollapse("//Localization", true);
            user.Yield(3);
            IM_CHECK(test.view->open());
            user.WindowCollapse("//Localization", false);
            user.Yield(3);
        });
    EXPECT_TRUE(contains(test.shownText(), "English"));
}

TEST(LocalizationView, HoveringTheDockedViewFocusesIt) {
    ViewTest test{English};
    test.docked = true;
    test.beside = [] {
        ImGui::SetNextWindowDockID(0, ImGuiCond_Always);
        ImGui::SetNextWindowPos({800.0f, 600.0f});
        ImGui::SetNextWindowSize({200.0f, 100.0f});
        ImGui::Begin("Other");
        ImGui::Button("Press");
        ImGui::End();
    };
    test.gui.run(
        "docked", [&] { test.draw(); },
        [&](ImGuiTestContext& user) {
            user.ItemClick("//Other/Press");
            user.Yield(2);
            IM_CHECK(!test.view->isFocused());
            user.MouseMoveToPos({200.0f, 700.0f});
            user.Yield(2);
            IM_CHECK(test.view->isFocused());
        });
}

TEST(LocalizationView, HoveringTheFloatingViewDoesNotFocusIt) {
    ViewTest test{English};
    test.beside = [] {
        ImGui::SetNextWindowPos({1000.0f, 600.0f});
        ImGui::SetNextWindowSize({200.0f, 100.0f});
        ImGui::Begin("Other");
        ImGui::Button("Press");
        ImGui::End();
    };
    test.run([&](ImGuiTestContext& user) {
        user.ItemClick("//Other/Press");
        user.MouseMoveToPos({300.0f, 500.0f});
        user.Yield(3);
        IM_CHECK(!test.view->isFocused());
    });
}

/* Menus and tabs */

TEST(LocalizationView, MenusHaveTheirItemsInOrderAndEnabled) {
    ViewTest test{English};
    test.run([](ImGuiTestContext& user) {
        user.ItemClick("##MenuBar/File");
        const ImGuiTestItemInfo exportItem = user.ItemInfo("//$FOCUSED/Export");
        const ImGuiTestItemInfo importItem = user.ItemInfo("//$FOCUSED/Import");
        IM_CHECK_LT(exportItem.RectFull.Min.y, importItem.RectFull.Min.y);
        IM_CHECK(!(exportItem.ItemFlags & ImGuiItemFlags_Disabled));
        IM_CHECK(!(importItem.ItemFlags & ImGuiItemFlags_Disabled));
        IM_CHECK(!(exportItem.StatusFlags & ImGuiItemStatusFlags_Checked));
        const float file = user.ItemInfo("##MenuBar/File").RectFull.Min.x;
        const float edit = user.ItemInfo("##MenuBar/Edit").RectFull.Min.x;
        IM_CHECK_LT(file, edit);
        user.ItemClick("##MenuBar/File");
        user.ItemClick("##MenuBar/Edit");
        const ImGuiTestItemInfo gather = user.ItemInfo("//$FOCUSED/Gather Strings");
        const ImGuiTestItemInfo refresh = user.ItemInfo("//$FOCUSED/Refresh Languages");
        IM_CHECK_LT(gather.RectFull.Min.y, refresh.RectFull.Min.y);
        IM_CHECK(!(gather.ItemFlags & ImGuiItemFlags_Disabled));
        IM_CHECK(!(refresh.ItemFlags & ImGuiItemFlags_Disabled));
        user.PopupCloseAll();
    });
}

TEST(LocalizationView, SwitchingTabsEmptiesTheSearchAndRefiltersInTheSameFrame) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "de": {}},
        "localization": {"terms": {"alpha": {}, "beta": {}}}})"};
    std::string frames[2];
    test.run([&](ImGuiTestContext& user) {
        search(user, "##termsearch", "alpha");
        IM_CHECK(!rowItem(user, "termtablebody", "beta").ID);
        test.capturesText = true;
        user.MouseMove("localizationtabs/Languages");
        user.MouseDown();
        for(int i = 0; i != 4 && !contains(test.capturedText, "Add Language"); ++i) user.Yield();
        test.capturesText = false;
        frames[0] = test.capturedText;
        user.MouseUp();
        selectTab(user, "Terms");
        IM_CHECK(rowItem(user, "termtablebody", "beta").ID);
    });
    /* The very frame that shows the other tab for the first time: an empty search, shown by its hint, and all languages */
    EXPECT_TRUE(contains(frames[0], "{ Search }")) << frames[0];
    EXPECT_TRUE(contains(frames[0], "English")) << frames[0];
    EXPECT_TRUE(contains(frames[0], "German")) << frames[0];
}

TEST(LocalizationView, SwitchingBackToTheTermsEmptiesTheSearchForLanguages) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "de": {}},
        "localization": {"terms": {"alpha": {}, "german": {}}}})"};
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        search(user, "##languagesearch", "german");
        IM_CHECK(!rowItem(user, "languagestablebody", "##English").ID);
        selectTab(user, "Terms");
        IM_CHECK(rowItem(user, "termtablebody", "alpha").ID);
        IM_CHECK(rowItem(user, "termtablebody", "german").ID);
    });
    EXPECT_TRUE(contains(test.shownText(), "{ Search }"));
}

TEST(LocalizationView, ARefreshReadsTheProjectsLanguagesAnew) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}, "fr": {}}})"};
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        openContextMenu(user, "French");
        user.ItemClick("//$FOCUSED/Remove");
        user.Yield(2);
        IM_CHECK(!rowItem(user, "languagestablebody", "##French").ID);
        user.MenuClick("Edit/Refresh Languages");
        user.Yield(2);
        IM_CHECK(rowItem(user, "languagestablebody", "##French").ID);
    });
}

/* States that no click reaches: the tab bar always has a selected tab, which takes over as soon as it is drawn. So the variable is
   set while the tabs do not show, in a view that is linked into this program. */

TEST(LocalizationViewDeathTest, AnUnknownTabAborts) {
    ViewTest test{English};
    LocalizationView view{test.manager, "Localization"};
    view.init(test.gui.context(), &test.session.data(), &test.application);
    test.view = &view;
    test.run([&](ImGuiTestContext& user) { user.WindowCollapse("//Localization", true); });
    ViewState::currentTab = 3;
    EXPECT_DEATH(test.frames(), "Unknown Tab");
}

TEST(LocalizationView, TheThirdTabIsNone) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"alpha": {}}}})"};
    LocalizationView view{test.manager, "Localization"};
    view.init(test.gui.context(), &test.session.data(), &test.application);
    test.view = &view;
    test.run([&](ImGuiTestContext& user) {
        user.WindowCollapse("//Localization", true);
        ViewState::currentTab = 2;
        user.Yield(3);
        IM_CHECK_EQ(ViewState::currentTab, 2);
        user.WindowCollapse("//Localization", false);
        user.Yield(2);
        IM_CHECK_EQ(ViewState::currentTab, 0);
    });
}

/* Languages */

TEST(LocalizationView, AProjectWithoutLanguagesHasTheFallbackForItsDefault) {
    ViewTest test{"{}"};
    const std::string shown = languagesShown(test);
    EXPECT_EQ(AllLanguages[89].name, "English");
    EXPECT_TRUE(contains(shown, "\xef\x80\x85 English | en")) << shown;
}

TEST(LocalizationView, AnEmptyListOfLanguagesHasTheFallbackForItsDefault) {
    ViewTest test{R"({"languages": {}})"};
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 English | en"));
}

TEST(LocalizationView, WithoutProjectLanguagesTheFirstOfTheListIsTheDefault) {
    ViewTest test{"{}"};
    test.run([&](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.ItemClick("Add Language");
        user.SetRef("//$FOCUSED");
        user.KeyCharsReplace("Welsh");
        user.Yield(2);
        user.ItemClick("**/Welsh");
        user.SetRef("//Localization");
        user.Yield(2);
        openContextMenu(user, "English");
        user.ItemClick("//$FOCUSED/Remove");
        user.Yield(2);
    });
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, "\xef\x80\x85 Welsh | cy")) << shown;
}

TEST(LocalizationView, UnknownCodesAreSkippedWithoutAWord) {
    const CapturedOutput output;
    ViewTest test{R"({"languages": {"EN": {}, "xx-unknown": {}, "de": {"isDefault": true}, "": {}, "en": {}}})"};
    const std::string shown = languagesShown(test);
    EXPECT_LT(shown.find("German"), shown.find("English"));
    EXPECT_EQ(output.error() + output.warning(), "");
    EXPECT_FALSE(contains(shown, "xx-unknown"));
}

TEST(LocalizationViewDeathTest, OnlyUnknownCodesWithoutADefaultAbort) {
    ViewTest test{R"({"languages": {"xx-unknown": {}}})"};
    EXPECT_DEATH(test.view->draw(), "There should never be an instance where there is no default language!");
}

TEST(LocalizationViewDeathTest, NoKnownLanguageMarkedAsDefaultAborts) {
    ViewTest test{R"({"languages": {"xx-unknown": {"isDefault": true}, "en": {"isDefault": false}}})"};
    EXPECT_DEATH(test.view->draw(), "There should never be an instance where there is no default language!");
}

TEST(LocalizationView, AnUnknownDefaultIsPassedOver) {
    ViewTest test{R"({"languages": {"xx": {"isDefault": true}, "fr": {"isDefault": true}}})"};
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 French"));
}

TEST(LocalizationView, OfTwoDefaultsTheFirstInKeyOrderIsTaken) {
    ViewTest test{R"({"languages": {"de": {}, "fr": {"isDefault": true}, "en": {"isDefault": true}}})"};
    const std::string shown = languagesShown(test);
    EXPECT_TRUE(contains(shown, "\xef\x80\x85 French")) << shown;
    EXPECT_FALSE(contains(shown, "\xef\x80\x85 English")) << shown;
}

TEST(LocalizationView, OfTwoDefaultsTheRememberedOneStays) {
    ViewTest test{R"({"languages": {"fr": {"isDefault": false}, "en": {"isDefault": true}}})"};
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 English"));
    test.session.changes().pushChange("/languages/fr/isDefault", rapidjson::Value{true}, false);
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 English"));
    test.session.changes().pushChange("/languages/en/isDefault", rapidjson::Value{false}, false);
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 French"));
}

/* The first two have no mark that could be remembered */
TEST(LocalizationView, AnIdleFrameCostsOneLookUpWhateverTheProjectHas) {
    for(const char* const project: {"{}", R"({"languages": {}})", R"({"languages": []})",
            R"({"languages": {"fr": {}, "de": {"isDefault": true}}})",
            R"({"languages": {"de": {"isDefault": true}}, "a": 1})"})
        for(const char* const tab: {"Terms", "Languages"}) {
            SCOPED_TRACE(std::string{project} + " " + tab);
            ViewTest test{project};
            test.run([tab](ImGuiTestContext& user) { selectTab(user, tab); });
            test.frames(3);
            const std::uint64_t before = test.session.project().lookupCount();
            test.frames(10);
            EXPECT_EQ(test.session.project().lookupCount() - before, 10);
        }
}

TEST(LocalizationView, LanguagesThatComeToAProjectWithoutBringTheirDefault) {
    ViewTest test{R"({"languages": {}})"};
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 English"));
    test.session.changes().pushChange("/languages/fr/isDefault", rapidjson::Value{true}, false);
    test.frames(2);
    test.run([](ImGuiTestContext& user) { user.MenuClick("Edit/Refresh Languages"); });
    EXPECT_TRUE(contains(test.shownText(), "\xef\x80\x85 French"));
    const std::uint64_t before = test.session.project().lookupCount();
    test.frames(10);
    EXPECT_EQ(test.session.project().lookupCount() - before, 10);
    test.session.undo();
    EXPECT_TRUE(contains(test.shownText(), "\xef\x80\x85 French"));
    test.run([](ImGuiTestContext& user) { user.MenuClick("Edit/Refresh Languages"); });
    EXPECT_TRUE(contains(test.shownText(), "\xef\x80\x85 English"));
}

/* The fallback was the default before anything was marked: of two marks its own wins over the first one */
TEST(LocalizationView, ADefaultThatNothingMarkedIsRememberedWhenItIsMarked) {
    ViewTest test{"{}"};
    EXPECT_TRUE(contains(languagesShown(test), "\xef\x80\x85 English"));
    test.replaceDocument(R"({"languages": {"fr": {"isDefault": true}, "en": {"isDefault": true}}})");
    test.run([](ImGuiTestContext& user) { user.MenuClick("Edit/Refresh Languages"); });
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, "\xef\x80\x85 English")) << shown;
    EXPECT_FALSE(contains(shown, "\xef\x80\x85 French")) << shown;
}

}
}
