/* The popup of the exchange: where it lies, what it keeps, which dialog it opens, and how it calls the host's tools. */

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "plugin/DialogProgram.h"
#include "plugin/FakeTools.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr char Project[] = R"({"languages": {"de": {}, "en": {"isDefault": true}, "fr": {}}})";

UnsignedInt indexOf(const Containers::StringView code) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i)
        if(AllLanguages[i].code == code) return i;
    return LanguageCount;
}

class ImportExportPopup: public testing::Test {
protected:
    void TearDown() override {
        FakeTools::calls.clear();
        FakeTools::onImport = nullptr;
    }

    void run(const ViewTest::Script& script) { _test.run(script); }

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

    /* What the path field holds: selected and copied by keys */
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

    static bool has(const std::vector<std::string>& arguments, const std::string& part) {
        for(const std::string& argument: arguments)
            if(argument.find(part) != std::string::npos) return true;
        return false;
    }

    DialogProgram _dialogs;
    ViewTest _test{Project};
};

TEST_F(ImportExportPopup, IsAsWideAsTheViewLess100AndInItsMiddle) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        const ImGuiWindow* const view = user.WindowInfo("//Localization").Window;
        const ImGuiWindow* const popup = user.WindowInfo("//Export Terms").Window;
        IM_CHECK(popup->Flags & ImGuiWindowFlags_Modal);
        IM_CHECK(popup->Flags & ImGuiWindowFlags_NoResize);
        IM_CHECK_EQ(popup->Size.x, view->Size.x - 100.0f);
        IM_CHECK_LE(ImAbs(popup->Rect().GetCenter().x - view->Rect().GetCenter().x), 1.0f);
        IM_CHECK_LE(ImAbs(popup->Rect().GetCenter().y - view->Rect().GetCenter().y), 1.0f);
        close(user);
    });
}

TEST_F(ImportExportPopup, ItsHeightSettlesAFrameLater) {
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        const ImGuiWindow* const popup = user.WindowInfo("//Import Terms").Window;
        const ImRect button = user.ItemInfo("Import").RectFull;
        const float spacing = ImGui::GetStyle().ItemSpacing.y;
        /* The cursor stands below the button, and 4 pixels lie below the cursor */
        IM_CHECK_EQ(popup->Rect().Max.y, button.Max.y + spacing + 4.0f);
        const float height = popup->Size.y;
        user.Yield(5);
        IM_CHECK_EQ(popup->Size.y, height);
        close(user);
        open(user, "Import");
        IM_CHECK_EQ(user.WindowInfo("//Import Terms").Window->Size.y, height);
        close(user);
    });
}

TEST_F(ImportExportPopup, BeginsWithTheProjectsExchangeFolder) {
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        const Containers::String proposed = _test.session.editor().exchangePath() + "/";
        IM_CHECK_STR_EQ(path(user).c_str(), proposed.data());
        close(user);
    });
}

TEST_F(ImportExportPopup, AnEmptiedPathIsProposedAnewAsAWhole) {
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        const std::string proposed = path(user);
        type(user, (proposed + "and/much/longer/than/it/was/before").c_str());
        user.ItemInput("##path");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiKey_Delete);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
        IM_CHECK_STR_EQ(path(user).c_str(), proposed.c_str());
        close(user);
    });
}

TEST_F(ImportExportPopup, KeepsThePathForTheNextOpeningInEitherMode) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/one");
        close(user);
        open(user, "Import");
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/one");
        close(user);
        open(user, "Export");
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/one");
        close(user);
    });
}

TEST_F(ImportExportPopup, TheCloseButtonEndsItForGood) {
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        close(user);
        user.Yield(5);
        IM_CHECK(!isOpen(user));
        open(user, "Export");
        IM_CHECK(user.WindowInfo("//Export Terms").Window->Active);
        close(user);
    });
    EXPECT_TRUE(FakeTools::calls.empty());
}

TEST_F(ImportExportPopup, ExportCallsTheToolWithListDefaultPathAndFormat) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/out");
        user.ItemClick("Export");
        user.Yield(2);
        IM_CHECK(!isOpen(user));
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    const FakeTools::Call& call = FakeTools::calls[0];
    EXPECT_EQ(call.function, "export");
    EXPECT_EQ(call.editor, &_test.session.editor());
    EXPECT_EQ(call.languages, (std::vector<UnsignedInt>{indexOf("de"), indexOf("en"), indexOf("fr")}));
    EXPECT_EQ(call.defaultLanguage, indexOf("en"));
    EXPECT_EQ(call.path, "/tmp/out");
    EXPECT_EQ(call.format, 0);
}

TEST_F(ImportExportPopup, ExportWithZipCallsTheOtherTool) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/out.zip");
        user.ItemClick("##zip");
        user.ItemClick("Export");
        user.Yield(2);
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].function, "export compressed");
    EXPECT_EQ(FakeTools::calls[0].path, "/tmp/out.zip");
    EXPECT_EQ(FakeTools::calls[0].defaultLanguage, indexOf("en"));
}

TEST_F(ImportExportPopup, ImportHandsTheListItselfOver) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, indexOf("cy"));
    };
    for(const bool zip: {false, true}) {
        run([zip](ImGuiTestContext& user) {
            open(user, "Import");
            type(user, "/tmp/in");
            if(zip) user.ItemClick("##zip");
            user.ItemClick("Import");
            user.Yield(2);
            IM_CHECK(!isOpen(user));
            user.SetRef("//Localization");
            selectTab(user, "Languages");
            IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
            selectTab(user, "Terms");
        });
        FakeTools::onImport = nullptr;
    }
    ASSERT_EQ(FakeTools::calls.size(), 2);
    for(const FakeTools::Call& call: FakeTools::calls) {
        EXPECT_EQ(call.function, "import");
        EXPECT_EQ(call.editor, &_test.session.editor());
        EXPECT_EQ(call.defaultLanguage, indexOf("en"));
        EXPECT_EQ(call.path, "/tmp/in");
        EXPECT_EQ(call.format, 0);
    }
    EXPECT_EQ(FakeTools::calls[0].languages.size(), 3);
    EXPECT_EQ(FakeTools::calls[1].languages.size(), 4);
}

TEST_F(ImportExportPopup, WhatAnImportBringsShowsAtOnce) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, indexOf("cy"));
    };
    run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
    });
}

/* A tool that hands back an index outside of the table is none that a user can click together */
TEST_F(ImportExportPopup, AnUnknownLanguageIsARedQuestionMark) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) { Containers::arrayAppend(languages, 411u); };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        user.MouseMoveToPos({10.0f, 10.0f});
        user.Yield(2);
        const ImGuiTestItemInfo row = rowItem(user, "languagestablebody", "##?");
        IM_CHECK(row.ID != 0);
        IM_CHECK(paints(IM_COL32(255, 0, 0, 255), row.RectFull));
        IM_CHECK(!paints(IM_COL32(255, 0, 0, 255), rowItem(user, "languagestablebody", "##German").RectFull));
    });
    const std::string shown = _test.shownText();
    EXPECT_NE(shown.find("? | ? |"), std::string::npos) << shown;
}

TEST_F(ImportExportPopup, GatheringCallsTheTool) {
    run([](ImGuiTestContext& user) { user.MenuClick("Edit/Gather Strings"); });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].function, "gather");
    EXPECT_EQ(FakeTools::calls[0].editor, &_test.session.editor());
}

TEST_F(ImportExportPopup, OffersOneFormat) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        user.ComboClick("##Format/i18next");
        user.Yield(2);
        IM_CHECK_EQ(user.UiContext->OpenPopupStack.Size, 1);
        user.ItemClick("Export");
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].format, 0);
}

TEST_F(ImportExportPopup, ControlsBeginAt80OrBehindTheirLabel) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        const ImGuiWindow* const popup = user.WindowInfo("//Export Terms").Window;
        const ImGuiStyle& style = ImGui::GetStyle();
        const ImRect path = user.ItemInfo("##path").RectFull;
        const ImRect button = user.ItemInfo("...").RectFull;
        IM_CHECK_EQ(path.Min.x, popup->Pos.x + 80.0f);
        IM_CHECK_EQ(user.ItemInfo("##Format").RectFull.Min.x, popup->Pos.x + 80.0f);
        IM_CHECK_EQ(user.ItemInfo("##Format").RectFull.Max.x, popup->WorkRect.Max.x);
        IM_CHECK_EQ(button.GetWidth(), ImGui::CalcTextSize("...").x + 2.0f * style.FramePadding.x);
        IM_CHECK_EQ(path.GetWidth(), popup->WorkRect.Max.x - path.Min.x - button.GetWidth() - style.WindowPadding.x);
        /* "Compress to .zip" is longer than its column */
        IM_CHECK_GE(user.ItemInfo("##zip").RectFull.Min.x,
            popup->Pos.x + style.WindowPadding.x + ImGui::CalcTextSize("Compress to .zip").x);
        IM_CHECK_EQ(user.ItemInfo("Export").RectFull.GetWidth(), popup->WorkRect.GetWidth());
        close(user);
    });
}

/* Dialogs */

TEST_F(ImportExportPopup, ExportAsksWhereToSave) {
    const std::string folder = _dialogs.folder().string();
    _dialogs.choose(folder + "/saved");
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, (folder + "/bin").c_str());
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), (folder + "/saved").c_str());
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--save"));
    EXPECT_TRUE(has(arguments, "Save Terms"));
    EXPECT_TRUE(has(arguments, folder + "/bin"));
    EXPECT_FALSE(has(arguments, "*.zip"));
}

TEST_F(ImportExportPopup, ExportWithZipFiltersArchives) {
    _dialogs.choose("/tmp/terms.zip");
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        user.ItemClick("##zip");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/terms.zip");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--save"));
    EXPECT_TRUE(has(arguments, "ZIP Archive"));
    EXPECT_TRUE(has(arguments, "*.zip"));
}

TEST_F(ImportExportPopup, ImportAsksForAFolder) {
    _dialogs.choose("/tmp/in");
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        type(user, "/nowhere/at all");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).substr(0, 7).c_str(), "/tmp/in");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--directory"));
    EXPECT_TRUE(has(arguments, "Load Terms from folder"));
    EXPECT_TRUE(has(arguments, "/nowhere/at all"));
}

TEST_F(ImportExportPopup, ImportWithZipAsksForOneFile) {
    _dialogs.choose("/tmp/in.zip");
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("##zip");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/in.zip");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "Load Terms as ZIP"));
    EXPECT_TRUE(has(arguments, "*.zip"));
    EXPECT_FALSE(has(arguments, "--save"));
    EXPECT_FALSE(has(arguments, "--directory"));
    EXPECT_FALSE(has(arguments, "--multiple"));
}

TEST_F(ImportExportPopup, ACancelledDialogChangesNothing) {
    run([](ImGuiTestContext& user) {
        for(const char* const mode: {"Export", "Import"})
            for(int zip = 0; zip != 2; ++zip) {
                open(user, mode);
                user.ItemClick("##zip");
                type(user, "/tmp/kept");
                user.ItemClick("...");
                user.Yield();
                IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/kept");
                IM_CHECK(isOpen(user));
                close(user);
            }
    });
    EXPECT_FALSE(_dialogs.takeArguments().empty());
}

TEST_F(ImportExportPopup, AnAnswerOfMoreThan255BytesIsCut) {
    const std::string answer = "/tmp/" + std::string(300, 'x');
    _dialogs.choose(answer);
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        user.ItemClick("...");
        user.Yield();
        user.ItemClick("Export");
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].path, answer.substr(0, 255));
}

TEST_F(ImportExportPopup, AnAnswerOf256BytesIsCutAndOneOf255IsNot) {
    for(const std::size_t size: {255, 256}) {
        _dialogs.choose("/" + std::string(size - 1, 'y'));
        run([&](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("...");
            user.Yield();
            user.ItemClick("Export");
        });
        ASSERT_FALSE(FakeTools::calls.empty());
        EXPECT_EQ(FakeTools::calls.back().path.size(), 255);
    }
}

TEST_F(ImportExportPopup, AShorterAnswerReplacesALongerPath) {
    _dialogs.choose("/a");
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/a/very/long/path/that/leaves/nothing/behind");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/a");
        close(user);
    });
}

TEST_F(ImportExportPopup, OpensOverTheLanguagesToo) {
    run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        open(user, "Export");
        IM_CHECK(user.WindowInfo("//Export Terms").Window->Active);
        close(user);
    });
}

}
}
