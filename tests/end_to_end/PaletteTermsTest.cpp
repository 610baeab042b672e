#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "app/ViewConditions.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"
#include "support/ShownText.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

constexpr int Terms = 400;

std::string projectText() {
    std::string texts = R"("lost": "Where did the captain go?")", members;
    for(int i = 0; i != Terms; ++i) {
        const std::string number = std::to_string(i);
        texts += ",\"t" + number + "\":\"What somebody says\"";
        members += "\"term." + number + "\":{\"sourceText\":\"/texts/t" + number + "\"},";
    }
    return R"({"languages":{"en":{"isDefault":true}},"texts":{)" + texts + R"(},"localization":{"terms":{)" + members +
        R"("story/captain":{"sourceText":"/texts/lost","translatable":true}}}})";
}

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

/** The command palette and the Localization view, on a project with the term "story/captain" far below, by keys alone. */
class PaletteTerms: public testing::Test {
protected:
    PaletteTerms() {
        fs::create_directories(root);
        std::ofstream{root / "project.json"} << projectText();
        gui.prepareFrames([this] { frame.prepare(); });
        EXPECT_TRUE(frame.open(root.c_str()));
    }

    ~PaletteTerms() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name,
            [this] {
                if(!reads) {
                    const Allocations counter;
                    frame.draw();
                    allocations += counter.count();
                    return;
                }
                const ShownText text;
                frame.draw();
                seen = text.text();
            },
            script);
    }

    static ImGuiWindow* activeWindow(Containers::StringView name) {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(window->WasActive && !window->Hidden && Containers::StringView{window->Name}.contains(name))
                return window;
        return nullptr;
    }

    /** Whether the row of a term shows whole, in a window that has the focus. */
    static bool isTermShown(ImGuiTestContext& user, const char* term) {
        ImGuiWindow* const body = activeWindow("termtablebody");
        const ImGuiWindow* const focused = ImGui::GetCurrentContext()->NavWindow;
        if(!body || !focused || focused->RootWindow != body->RootWindow) return false;
        user.SetRef(body);
        const ImGuiTestItemInfo row =
            user.ItemInfo((std::string{"termstable/"} + term).c_str(), ImGuiTestOpFlags_NoError);
        user.SetRef("");
        return row.ID && body->InnerRect.Contains(row.RectFull.GetCenter());
    }

    static void openPalette(ImGuiTestContext& user) {
        user.KeyPress(ImGuiMod_Ctrl | ImGuiMod_Shift | ImGuiKey_P);
        user.Yield(3);
    }

    static void type(ImGuiTestContext& user, const char* text) {
        user.KeyChars(text);
        user.Yield(2);
    }

    /** Has the palette show what fits best. */
    static void find(ImGuiTestContext& user, const char* text) {
        openPalette(user);
        type(user, text);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(8);
    }

    /** What has been read in a frame of now. */
    bool shows(ImGuiTestContext& user, const char* text) {
        reads = true;
        user.Yield(2);
        reads = false;
        return seen.find(text) != std::string::npos;
    }

    bool& isOpen() { return session.state().isViewOpen(session.state().registerView("Localization")); }

    fs::path root = fs::temp_directory_path() / ("quorvane-palette-" + std::to_string(getpid()));
    MessageLog log;
    GuiTest gui{{1600.0f, 1000.0f}};
    JobSystem jobs{1};
    EditorSession session{&jobs};
    ModuleLoader modules{QUORVANE_MODULE_DIR};
    EditorFrame frame{session, jobs, modules, log, viewConditions(), noDialog, noDialog};
    bool reads = false;
    std::string seen;

    /** Of the frames that were drawn. */
    std::uint64_t allocations = 0;
};

constexpr const char* Captain = "story\\/captain";

TEST_F(PaletteTerms, ATermIsShownByLettersOfItsText) {
    EXPECT_TRUE(play("by text", [this](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(!isTermShown(user, Captain));
        IM_CHECK(!frame.takeShownTerm());
        find(user, "did captain");
        IM_CHECK(isTermShown(user, Captain));
        IM_CHECK(frame.takeShownTerm());
        IM_CHECK(!frame.takeShownTerm());
        IM_CHECK(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
    }));
}

TEST_F(PaletteTerms, ATermIsShownByItsKey) {
    EXPECT_TRUE(play("by key", [](ImGuiTestContext& user) {
        find(user, "term.234");
        IM_CHECK(isTermShown(user, "term.234"));
        find(user, "stocap");
        IM_CHECK(isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, ARowTellsKeyTextAndWhereTheTextStands) {
    EXPECT_TRUE(play("row", [this](ImGuiTestContext& user) {
        openPalette(user);
        IM_CHECK(!shows(user, "/texts/lost"));
        type(user, "captain");
        IM_CHECK(shows(user, "/texts/lost"));
        const std::size_t source = seen.find("/texts/lost");
        const std::size_t text = seen.rfind("Where did the captain go?", source);
        const std::size_t key = seen.rfind("story/captain", text);
        IM_CHECK(text != std::string::npos && key != std::string::npos);
        IM_CHECK_LT(source - key, std::size_t{80});
        user.ItemClick("**/##term");
        user.Yield(8);
        IM_CHECK(isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, CommandsComeBeforeTermsThatFitAsWell) {
    session.changes().pushChange("/localization/terms/Undo", rapidjson::Value{rapidjson::kObjectType}, false);
    EXPECT_TRUE(play("order", [this](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "undo");
        IM_CHECK(shows(user, "Edit: Undo"));
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(4);
        IM_CHECK(!session.changes().canUndo());
    }));
}

TEST_F(PaletteTerms, AClosedViewIsOpened) {
    EXPECT_TRUE(play("closed", [this](ImGuiTestContext& user) {
        user.WindowClose("//Localization");
        user.Yield(2);
        IM_CHECK(!isOpen());
        find(user, "captain");
        IM_CHECK(isOpen());
        IM_CHECK(isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, AViewBehindAnotherTabComesToTheFront) {
    EXPECT_TRUE(play("behind", [](ImGuiTestContext& user) {
        user.MenuClick("//##MainMenuBar/View/History");
        user.Yield(3);
        user.DockInto("//History", "//Localization");
        user.WindowFocus("//History");
        user.MouseMoveToPos({800.0f, 5.0f});
        user.Yield(4);
        IM_CHECK(!activeWindow("termtablebody"));
        find(user, "captain");
        IM_CHECK(isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, TheTabOfLanguagesAndASearchThatHidesTheTermAreLeft) {
    EXPECT_TRUE(play("hidden", [](ImGuiTestContext& user) {
        user.ItemInput("//Localization/##termsearch");
        user.KeyCharsReplaceEnter("term.1");
        user.Yield(2);
        find(user, "captain");
        IM_CHECK(isTermShown(user, Captain));
        user.ItemClick("//Localization/localizationtabs/Languages");
        user.Yield(3);
        IM_CHECK(!isTermShown(user, Captain));
        find(user, "captain");
        IM_CHECK(isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, ATermThatIsDeletedMeanwhileIsOfferedNoMore) {
    EXPECT_TRUE(play("deleted", [this](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "captain");
        IM_CHECK(shows(user, "/texts/lost"));
        session.changes().pushRemoval("/localization/terms/story~1captain");
        user.Yield(2);
        IM_CHECK(!shows(user, "/texts/lost"));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
        session.undo();
        openPalette(user);
        type(user, "captain");
        // Chosen in this frame, and gone before the next one.
        gui.prepareFrames([this, isDone = false]() mutable {
            if(!isDone && !ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) {
                isDone = true;
                session.changes().pushRemoval("/localization/terms/story~1captain");
            }
            frame.prepare();
        });
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(6);
        IM_CHECK(log.messages().back().text == "No view shows /localization/terms/story~1captain");
    }));
}

TEST_F(PaletteTerms, NothingFoundIsSaidAndEscapeLeavesEverythingAsItIs) {
    EXPECT_TRUE(play("nothing", [this](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(isTermShown(user, "term.0"));
        openPalette(user);
        type(user, "captain xyz");
        IM_CHECK(shows(user, "No command has these letters in its name, and no term in its key or text"));
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(3);
        IM_CHECK(ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
        openPalette(user);
        type(user, "captain");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(3);
        IM_CHECK(isTermShown(user, "term.0"));
        IM_CHECK(!isTermShown(user, Captain));
    }));
}

TEST_F(PaletteTerms, WhatTheUserHasMovedToStaysSelected) {
    EXPECT_TRUE(play("move", [](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "term.234");
        // Behind the only key that has the letters in a row are those that have them with others between.
        user.KeyPress(ImGuiKey_DownArrow);
        user.KeyPress(ImGuiKey_UpArrow);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(8);
        IM_CHECK(isTermShown(user, "term.234"));
    }));
}

TEST_F(PaletteTerms, IdleFramesOfTheOpenPaletteAllocateNothingAndWalkNothing) {
    EXPECT_TRUE(play("idle", [this](ImGuiTestContext& user) {
        openPalette(user);
        type(user, "somebody");
        user.Yield(20);
        IM_CHECK(ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
        const std::uint64_t lookups = session.project().lookupCount();
        allocations = 0;
        user.Yield(10);
        IM_CHECK_EQ(allocations, std::uint64_t{0});
        IM_CHECK_LT(session.project().lookupCount() - lookups, std::uint64_t{100});
    }));
}

}
}
