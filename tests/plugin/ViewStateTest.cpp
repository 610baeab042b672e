/* State that all instances share, and that starts anew with a module that is loaded again. */

#include "ViewState.h"

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

TEST(ViewState, IsSharedByAllInstances) {
    ViewTest test{English};
    LocalizationView first{test.manager, "Localization"};
    LocalizationView second{test.manager, "Localization"};
    first.init(test.gui.context(), &test.session.data(), &test.application);
    second.init(test.gui.context(), &test.session.data(), &test.application);
    test.view = &first;
    test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
    EXPECT_EQ(currentTab, 1);
    test.view = &second;
    EXPECT_NE(test.shownText().find("Add Language"), std::string::npos);
}

TEST(ViewState, StartsAnewWithAModuleThatIsLoadedAgain) {
    ViewTest test{English};
    ASSERT_TRUE(test.view);
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        user.MenuClick("File/Export");
        user.ItemInput("//Export Terms/##path");
        user.KeyCharsReplace("/somewhere");
        user.ItemClick("//Export Terms/##zip");
        user.ItemClick("//Export Terms/#CLOSE");
    });
    test.module = nullptr;
    test.manager.unload("Localization");
    test.module = test.manager.loadAndInstantiate("Localization");
    ASSERT_TRUE(test.module);
    test.view = static_cast<EditorView*>(test.module.get());
    test.view->init(test.gui.context(), &test.session.data(), &test.application);
    test.run([&](ImGuiTestContext& user) {
        user.MenuClick("File/Export");
        IM_CHECK(!user.ItemIsChecked("//Export Terms/##zip"));
        user.ItemClick("//Export Terms/#CLOSE");
    });
}

}
}
