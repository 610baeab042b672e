/* The popup of the exchange: where it lies, what it keeps, which dialog it opens, and how it calls the host's tools. */

#include <cstring>
#include <filesystem>
#include <fstream>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "plugin/FakeTools.h"
#include "plugin/ViewTest.h"
#include "support/DialogProgram.h"

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

/* What a frame drew of the popup, read at its end */
struct PopupFrame {
    float height;
    float contentHeight;
};

/* The popup's frames from the click that opens it on, and no others */
std::vector<PopupFrame> framesOfOpening(ViewTest& test, ImGuiTestContext& user, const char* const mode) {
    std::vector<PopupFrame> frames;
    const std::string name = std::string{mode} + " Terms";
    user.ItemClick("//Localization/##MenuBar/File");
    test.beside = [&] {
        const ImGuiWindow* const window = ImGui::FindWindowByName(name.c_str());
        if(window && window->Active)
            frames.push_back({window->Size.y, window->DC.CursorPos.y - window->Pos.y + window->Scroll.y});
    };
    user.ItemClick((std::string{"//$FOCUSED/"} + mode).c_str());
    user.Yield(5);
    test.beside = nullptr;
    return frames;
}

TEST_F(ImportExportPopup, InEveryFrameItIsAsHighAsItsContentInTheFrameBeforeAnd4More) {
    run([&](ImGuiTestContext& user) {
        const std::vector<PopupFrame> frames = framesOfOpening(_test, user, "Import");
        IM_CHECK_GT(frames.size(), 4u);
        for(std::size_t i = 1; i != frames.size(); ++i)
            IM_CHECK_EQ(frames[i].height, frames[i - 1].contentHeight + 4.0f);
        IM_CHECK_EQ(frames.back().height, frames[1].height);
        /* Of the very first height, 0, the library makes one of its own */
        IM_CHECK_NE(frames[0].height, frames[1].height);
        const ImRect button = user.ItemInfo("//Import Terms/Import").RectFull;
        IM_CHECK_EQ(frames.back().height,
            button.Max.y + ImGui::GetStyle().ItemSpacing.y + 4.0f - user.WindowInfo("//Import Terms").Window->Pos.y);
        user.ItemClick("//Import Terms/#CLOSE");
    });
}

TEST_F(ImportExportPopup, BeginsWithTheHeightOfThePreviousOpening) {
    run([&](ImGuiTestContext& user) {
        const float height = framesOfOpening(_test, user, "Export").back().height;
        user.ItemClick("//Export Terms/#CLOSE");
        user.Yield(2);
        /* What comes now is higher */
        ImGui::GetStyle().ItemSpacing.y += 10.0f;
        const std::vector<PopupFrame> frames = framesOfOpening(_test, user, "Import");
        IM_CHECK_GT(frames.size(), 2u);
        IM_CHECK_EQ(frames[0].height, height);
        IM_CHECK_GT(frames[1].height, height);
        IM_CHECK_EQ(frames.back().height, frames[1].height);
        user.ItemClick("//Import Terms/#CLOSE");
    });
}

TEST_F(ImportExportPopup, ThePopupOfNoModeNeverOpens) {
    int frames = 0;
    int opened = 0;
    _test.beside = [&] {
        ++frames;
        if(ImGui::FindWindowByName("None")) ++opened;
    };
    run([](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(!isOpen(user));
        for(const char* const mode: {"Import", "Export"}) {
            open(user, mode);
            IM_CHECK_EQ(user.UiContext->OpenPopupStack.Size, 1);
            close(user);
            open(user, mode);
            user.ItemClick(mode);
            user.Yield(3);
            IM_CHECK(!isOpen(user));
        }
    });
    EXPECT_GT(frames, 20);
    EXPECT_EQ(opened, 0);
}

TEST_F(ImportExportPopup, BeginsWithTheProjectsExchangeFolder) {
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        const Containers::String proposed = _test.session.editor().exchangePath() + "/";
        IM_CHECK_STR_EQ(path(user).c_str(), proposed.data());
        close(user);
    });
}

/* The field holds 255 bytes; half a path would be another path */
TEST_F(ImportExportPopup, AProposedPathThatDoesNotFitLeavesTheFieldEmpty) {
    for(const std::size_t size: {270, 256, 255}) {
        const std::string parent = _dialogs.folder().string() + "/";
        const std::string project = parent + std::string(size - parent.size() - std::strlen("/i18n/"), 'p');
        std::filesystem::create_directory(project);
        std::ofstream{project + "/project.json"} << Project;
        ASSERT_TRUE(_test.session.open(project.c_str()));
        run([](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("Export");
            user.Yield(2);
            IM_CHECK(!isOpen(user));
        });
        ASSERT_FALSE(FakeTools::calls.empty());
        EXPECT_EQ(FakeTools::calls.back().path, size == 255 ? project + "/i18n/" : "");
    }
}

TEST_F(ImportExportPopup, ATypedPathEndsAt255Bytes) {
    const std::string typed = "/tmp/" + std::string(300, 'x');
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, typed.c_str());
        user.ItemClick("Export");
        user.Yield(2);
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].path, typed.substr(0, 255));
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

TEST_F(ImportExportPopup, AnUnknownLanguageIsListedWhateverIsSearchedFor) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, 411u);
        Containers::arrayAppend(languages, ~0u);
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        search(user, "##languagesearch", "german");
        IM_CHECK(rowItem(user, "languagestablebody", "##German").ID);
        IM_CHECK(!rowItem(user, "languagestablebody", "##French").ID);
    });
    std::string shown = _test.shownText();
    EXPECT_NE(shown.find("German | de |"), std::string::npos) << shown;
    EXPECT_NE(shown.find("? | ? |"), shown.rfind("? | ? |")) << shown;
    run([](ImGuiTestContext& user) { search(user, "##languagesearch", "no such language"); });
    shown = _test.shownText();
    EXPECT_EQ(shown.find("German"), std::string::npos) << shown;
    EXPECT_NE(shown.find("? | ? |"), shown.rfind("? | ? |")) << shown;
}

/* The default of a project without languages is the first one of the list that has a code */
TEST_F(ImportExportPopup, AnUnknownLanguageIsNoDefault) {
    for(const bool withWelsh: {true, false}) {
        FakeTools::calls.clear();
        FakeTools::onImport = [withWelsh](Containers::Array<UnsignedInt>& languages) {
            languages = Containers::Array<UnsignedInt>{};
            for(const UnsignedInt language: {411u, indexOf("en"), 1000000000u, ~0u})
                Containers::arrayAppend(languages, language);
            if(withWelsh) Containers::arrayAppend(languages, indexOf("cy"));
        };
        _test.replaceDocument("{}");
        run([](ImGuiTestContext& user) {
            open(user, "Import");
            user.ItemClick("Import");
            user.Yield(3);
            user.SetRef("//Localization");
            selectTab(user, "Languages");
        });
        EXPECT_NE(_test.shownText().find("\xef\x80\x85 English | en"), std::string::npos);
        run([](ImGuiTestContext& user) {
            openContextMenu(user, "English");
            user.ItemClick("//$FOCUSED/Remove");
            user.Yield(2);
        });
        const std::string shown = _test.shownText();
        EXPECT_EQ(shown.find("\xef\x80\x85 Welsh | cy") != std::string::npos, withWelsh) << shown;
        EXPECT_EQ(shown.find("\xef\x80\x85 ?"), std::string::npos) << shown;
        run([](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("Export");
            user.Yield(2);
        });
        ASSERT_EQ(FakeTools::calls.size(), 2);
        EXPECT_EQ(FakeTools::calls[1].defaultLanguage, withWelsh ? indexOf("cy") : indexOf("en"));
    }
}

/* A tool may hand back storage of any kind */

int freedLists = 0;

void freeList(UnsignedInt* const list, std::size_t) {
    ++freedLists;
    delete[] list;
}

TEST_F(ImportExportPopup, ARefreshFreesAListThatAToolBroughtAndMakesOneOfItsOwn) {
    freedLists = 0;
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        languages = Containers::Array<UnsignedInt>{new UnsignedInt[1]{indexOf("cy")}, 1, freeList};
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
        IM_CHECK_EQ(freedLists, 0);
        user.MenuClick("Edit/Refresh Languages");
        user.Yield(3);
        IM_CHECK_EQ(freedLists, 1);
        IM_CHECK(!rowItem(user, "languagestablebody", "##Welsh").ID);
        for(const char* const language: {"##German", "##English", "##French"})
            IM_CHECK(rowItem(user, "languagestablebody", language).ID);
    });
    const void* deleter = nullptr;
    FakeTools::onImport = [&](Containers::Array<UnsignedInt>& languages) {
        deleter = reinterpret_cast<const void*>(languages.deleter());
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(2);
    });
    EXPECT_EQ(FakeTools::calls[1].languages, (std::vector<UnsignedInt>{indexOf("de"), indexOf("en"), indexOf("fr")}));
    EXPECT_NE(deleter, nullptr);
    EXPECT_NE(deleter, reinterpret_cast<const void*>(freeList));
    EXPECT_EQ(freedLists, 1);
}

TEST_F(ImportExportPopup, LanguagesAreAddedToAndRemovedFromAListThatAToolBrought) {
    for(const bool adds: {true, false}) {
        freedLists = 0;
        FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
            languages = Containers::Array<UnsignedInt>{new UnsignedInt[2]{indexOf("cy"), indexOf("ja")}, 2, freeList};
        };
        run([adds](ImGuiTestContext& user) {
            open(user, "Import");
            user.ItemClick("Import");
            user.Yield(3);
            user.SetRef("//Localization");
            if(adds) {
                openLanguagePopup(user);
                user.ItemClick(offeredLanguage(user, "German").ID);
            } else {
                selectTab(user, "Languages");
                openContextMenu(user, "Japanese");
                user.ItemClick("//$FOCUSED/Remove");
            }
            user.Yield(3);
            IM_CHECK_EQ(bool(rowItem(user, "languagestablebody", "##German").ID), adds);
            IM_CHECK_EQ(bool(rowItem(user, "languagestablebody", "##Japanese").ID), adds);
            IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
        });
        EXPECT_EQ(freedLists, 1);
    }
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
