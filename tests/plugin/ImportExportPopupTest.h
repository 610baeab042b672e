#pragma once

#include <string>

#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "plugin/FakeTools.h"
#include "plugin/ViewTest.h"
#include "support/DialogProgram.h"

namespace QuorvaneEngine::Test {

/** The view on a project in German, English and French, in a process with tools that only tell how they were called. */
class ImportExportPopup: public testing::Test {
protected:
    static constexpr char Project[] = R"({"languages": {"de": {}, "en": {"isDefault": true}, "fr": {}}})";

    void TearDown() override {
        FakeTools::calls.clear();
        FakeTools::onImport = nullptr;
    }

    void run(const ViewTest::Script& script) { _test.run(script); }

    /** Index in the table of all languages, their number where there is none. */
    static UnsignedInt indexOf(const Containers::StringView code) {
        for(UnsignedInt i = 0; i != LanguageCount; ++i)
            if(AllLanguages[i].code == code) return i;
        return LanguageCount;
    }

    static void open(ImGuiTestContext& user, const char* const mode) {
        user.SetRef("//Localization");
        user.MenuClick((std::string{"File/"} + mode).c_str());
        user.Yield(4);
        user.SetRef((std::string{"//"} + mode + " Terms").c_str());
    }

    static void close(ImGuiTestContext& user) {
        user.ItemClick("#CLOSE");
        user.Yield(2);
        user.SetRef("//Localization");
    }

    static bool isOpen(ImGuiTestContext& user) { return !user.UiContext->OpenPopupStack.empty(); }

    /** What the path field holds: selected and copied by keys. */
    static std::string path(ImGuiTestContext& user) {
        user.ItemInput("##path");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_C);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield();
        return ImGui::GetClipboardText();
    }

    static void type(ImGuiTestContext& user, const char* const path) {
        user.ItemInput("##path");
        user.KeyCharsReplace(path);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield();
    }

    DialogProgram _dialogs;
    ViewTest _test{Project};
};

}
