#include "EditorView.h"

#include <cstring>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include <Corrade/PluginManager/AbstractManager.h>
#include <Corrade/PluginManager/Manager.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "support/Abort.h"
#include "support/CapturedOutput.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::GuiTest;

class SomeView: public EditorView {
public:
    explicit SomeView(Corrade::PluginManager::AbstractManager& manager): EditorView{manager, "SomeView"} {}

    Containers::StringView title() override { return "Some View"; }

    void init(ImGuiContext* context, EditorData* editorData, QuorvaneEditorApplication* application) override {
        ++inits;
        EditorView::init(context, editorData, application);
    }

    void deinit() override { ++deinits; }

    void draw() override {
        beginWindow(ImGuiWindowFlags_NoScrollbar);
        const WindowGuard window{_windowOpen};
        isDrawn = _windowOpen;
        if(isDrawn) ImGui::Button("Inside");
        if(isDrawn && contents) contents();
    }

    EditorData* data() const { return _editorData; }
    QuorvaneEditorApplication* application() const { return _application; }
    bool windowOpen() const { return _windowOpen; }

    int inits = 0;
    int deinits = 0;
    bool isDrawn = false;
    std::function<void()> contents;
};

class EditorViewTest: public testing::Test {
protected:
    void initialize() {
        const CapturedOutput output;
        view.init(gui.context(), &data, &application);
    }

    GuiTest gui;
    ProjectFile project;
    ChangeManager changes{project};
    EditorData data{project};
    EditorState state;
    Containers::String path{"/tmp/project"};
    QuorvaneEditor editor{project, changes, state, path, nullptr};
    Ui ui{&project, &changes, &data};
    QuorvaneEditorApplication application{editor, ui};
    // Knows a module of that name, of which there are files, but loads none: the view is made here.
    Corrade::PluginManager::Manager<AbstractModule> manager{KNOWN_MODULES};
    SomeView view{manager};
};

TEST_F(EditorViewTest, EverythingIsZeroBeforeInit) {
    EXPECT_EQ(view.data(), nullptr);
    EXPECT_EQ(view.application(), nullptr);
    EXPECT_EQ(view.viewId(), 0u);
    EXPECT_FALSE(view.isFocused());
    EXPECT_FALSE(view.windowOpen());
}

TEST_F(EditorViewTest, IsAModuleOfTheKindView) { EXPECT_EQ(view.moduleType(), 1); }

TEST_F(EditorViewTest, InitSaysWhichViewItIs) {
    const CapturedOutput output;
    view.init(gui.context(), &data, &application);
    EXPECT_EQ(output.debug(), "Initializing View: SomeView\n");
    EXPECT_EQ(output.error(), "");
}

TEST_F(EditorViewTest, InitMakesTheContextCurrentAndRegistersTheTitle) {
    state.registerView("Another View");
    ImGui::SetCurrentContext(nullptr);
    initialize();
    EXPECT_EQ(ImGui::GetCurrentContext(), gui.context());
    EXPECT_EQ(view.data(), &data);
    EXPECT_EQ(view.application(), &application);
    EXPECT_EQ(view.viewId(), 1u);
    EXPECT_TRUE(state.viewTitle(1) == "Some View");
    EXPECT_EQ(&view.editor(), &editor);
    EXPECT_EQ(&view.ui(), &ui);
    EXPECT_EQ(&view.open(), &state.isViewOpen(1));
}

TEST_F(EditorViewTest, LoadWithoutStateDoesNothing) {
    view.load(Containers::ArrayView<char>{});
    EXPECT_EQ(view.inits, 0);
}

TEST_F(EditorViewTest, AFinalUnloadReturnsAndCallsNothing) {
    initialize();
    EXPECT_TRUE(view.unload(true).isEmpty());
    EXPECT_EQ(view.deinits, 0);
}

TEST_F(EditorViewTest, UnloadCallsDeinitOnceAndReturnsThreePointers) {
    initialize();
    const Containers::Array<char> saved = view.unload(false);
    EXPECT_EQ(view.deinits, 1);
    ASSERT_EQ(saved.size(), 24u);
    void* pointers[3];
    std::memcpy(pointers, saved.data(), sizeof(pointers));
    EXPECT_EQ(pointers[0], gui.context());
    EXPECT_EQ(pointers[1], &data);
    EXPECT_EQ(pointers[2], &application);
}

TEST_F(EditorViewTest, LoadOfWhatUnloadReturnedInitializesAgain) {
    initialize();
    Containers::Array<char> saved = view.unload(false);
    SomeView again{manager};
    const CapturedOutput output;
    again.load(saved);
    EXPECT_EQ(again.inits, 1);
    EXPECT_EQ(again.data(), &data);
    EXPECT_EQ(again.application(), &application);
    EXPECT_EQ(again.viewId(), view.viewId());
    EXPECT_EQ(state.viewCount(), 1u);
}

TEST_F(EditorViewTest, LoadDoesNotLookAtTheSizeOfTheState) {
    initialize();
    Containers::Array<char> saved = view.unload(false);
    SomeView again{manager};
    const CapturedOutput output;
    again.load(Containers::ArrayView<char>{saved.data(), 1});
    EXPECT_EQ(again.data(), &data);
}

TEST_F(EditorViewTest, EventsDoNothingByDefault) {
    initialize();
    view.update();
    view.mouseMoveEvent();
    view.mousePressEvent();
    view.mouseReleaseEvent();
    view.mouseScrollEvent();
    view.keyPressEvent();
    view.keyReleaseEvent();
    view.exitEvent();
    view.EditorView::deinit();
}

// The window

TEST_F(EditorViewTest, TheWindowIsNamedByTheTitle) {
    initialize();
    gui.frames([this] { view.draw(); }, 2);
    ImGuiWindow* const window = ImGui::FindWindowByName("Some View");
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->Flags & ImGuiWindowFlags_NoScrollbar);
    EXPECT_TRUE(view.isDrawn);
}

TEST_F(EditorViewTest, TheCloseButtonClearsTheOpenFlag) {
    initialize();
    ASSERT_TRUE(view.open());
    EXPECT_TRUE(gui.run(
        "close",
        [this] {
            if(view.open()) view.draw();
        },
        [](ImGuiTestContext& user) { user.WindowClose("//Some View"); }));
    EXPECT_FALSE(view.open());
}

TEST_F(EditorViewTest, ACollapsedWindowIsNotDrawn) {
    initialize();
    EXPECT_TRUE(gui.run(
        "collapse", [this] { view.draw(); }, [](ImGuiTestContext& user) { user.WindowCollapse("//Some View", true); }));
    EXPECT_FALSE(view.windowOpen());
}

/** Two windows side by side, the view's in the left half of the display: docked or floating. */
class EditorViewFocus: public EditorViewTest {
protected:
    void drawBoth(bool isDocked) {
        const ImVec2 size = ImGui::GetIO().DisplaySize;
        if(isDocked) {
            const ImGuiID dock = ImGui::DockSpaceOverViewport(1);
            if(!ImGui::DockBuilderGetNode(dock)->IsSplitNode()) {
                ImGuiID left, right;
                ImGui::DockBuilderSplitNode(dock, ImGuiDir_Left, 0.5f, &left, &right);
                ImGui::DockBuilderDockWindow("Some View", left);
                ImGui::DockBuilderDockWindow("Other", right);
                ImGui::DockBuilderFinish(dock);
            }
        } else {
            ImGui::SetNextWindowPos({0.0f, 0.0f}, ImGuiCond_Once);
            ImGui::SetNextWindowSize({size.x / 2.0f, size.y}, ImGuiCond_Once);
        }
        view.draw();
        if(drawAlso) drawAlso();
        if(!isDocked) {
            ImGui::SetNextWindowPos({size.x / 2.0f, 0.0f}, ImGuiCond_Once);
            ImGui::SetNextWindowSize({size.x / 2.0f, size.y}, ImGuiCond_Once);
        }
        const WindowGuard other{ImGui::Begin("Other")};
        ImGui::Button("Beside");
    }

    bool hoverBringsFocus(bool isDocked) {
        initialize();
        bool before = true;
        bool after = false;
        gui.run(
            isDocked ? "hover docked" : "hover floating", [&] { drawBoth(isDocked); },
            [&](ImGuiTestContext& user) {
                user.Yield(3);
                user.ItemClick("//Other/Beside");
                user.Yield(2);
                before = view.isFocused();
                user.MouseMoveToPos({200.0f, 400.0f});
                user.Yield(3);
                after = view.isFocused();
            });
        EXPECT_FALSE(before);
        return after;
    }

    std::function<void()> drawAlso;
    static inline bool isPopupOpen = false;
};

TEST_F(EditorViewFocus, HoveringADockedViewFocusesIt) { EXPECT_TRUE(hoverBringsFocus(true)); }

TEST_F(EditorViewFocus, HoveringAFloatingViewDoesNot) { EXPECT_FALSE(hoverBringsFocus(false)); }

TEST_F(EditorViewFocus, ClickingAFloatingViewFocusesIt) {
    initialize();
    EXPECT_TRUE(gui.run(
        "click", [&] { drawBoth(false); },
        [&](ImGuiTestContext& user) {
            user.ItemClick("//Some View/Inside");
            user.Yield();
        }));
    EXPECT_TRUE(view.isFocused());
}

TEST_F(EditorViewFocus, AChildThatHasTheFocusCountsForItsView) {
    initialize();
    view.contents = [] {
        const ChildGuard child{ImGui::BeginChild("Child", {200.0f, 200.0f})};
        ImGui::Button("Deep");
    };
    EXPECT_TRUE(gui.run(
        "click in a child", [&] { drawBoth(false); },
        [&](ImGuiTestContext& user) {
            user.ItemClick("//Other/Beside");
            user.Yield(2);
            IM_CHECK(!view.isFocused());
            user.ItemClick(user.GetID("Deep", user.WindowInfo("//Some View/Child").ID));
            user.Yield(2);
            IM_CHECK(ImGui::GetCurrentContext()->NavWindow != ImGui::FindWindowByName("Some View"));
            IM_CHECK(view.isFocused());
        }));
}

TEST_F(EditorViewFocus, HoveringAChildOfADockedViewFocusesTheView) {
    view.contents = [] { const ChildGuard child{ImGui::BeginChild("Child")}; };
    EXPECT_TRUE(hoverBringsFocus(true));
}

TEST_F(EditorViewFocus, HoveringAWindowThatIsDockedIntoADockedViewFocusesTheView) {
    view.contents = [] {
        const ImGuiID dock = ImGui::DockSpace(ImGui::GetID("Dock"));
        ImGui::SetNextWindowDockID(dock);
    };
    drawAlso = [] { const WindowGuard inner{ImGui::Begin("Inner")}; };
    EXPECT_TRUE(hoverBringsFocus(true));
}

TEST_F(EditorViewFocus, HoveringAPopupOfADockedViewDoesNotFocusTheView) {
    // One that leaves the focus where it is, above all of the view.
    view.contents = [] {
        const ImGuiWindow& window = *ImGui::GetCurrentWindow();
        if(ImGui::GetFrameCount() == 5) ImGui::OpenPopup("Popup");
        ImGui::SetNextWindowPos(window.Pos);
        ImGui::SetNextWindowSize(window.Size);
        const PopupGuard popup{ImGui::BeginPopup("Popup", ImGuiWindowFlags_NoFocusOnAppearing)};
        isPopupOpen = bool(popup);
    };
    EXPECT_FALSE(hoverBringsFocus(true));
    EXPECT_TRUE(isPopupOpen);
}

TEST_F(EditorViewFocus, AModalPopupKeepsADockedViewFromTakingTheFocus) {
    initialize();
    bool focused = true;
    gui.run(
        "hover below a popup",
        [&] {
            drawBoth(true);
            if(ImGui::GetFrameCount() == 5) ImGui::OpenPopup("Modal");
            const PopupGuard modal{ImGui::BeginPopupModal("Modal")};
        },
        [&](ImGuiTestContext& user) {
            user.Yield(10);
            user.MouseMoveToPos({100.0f, 700.0f});
            user.Yield(3);
            focused = view.isFocused();
        });
    EXPECT_FALSE(focused);
}

using EditorViewDeathTest = EditorViewTest;

TEST_F(EditorViewDeathTest, NullArgumentsAbortInTheirOrder) {
    const auto expectAbort = [this](ImGuiContext* context, EditorData* data, QuorvaneEditorApplication* application,
                                 const char* message) {
        const auto init = [&] {
            // The view says who it is before it complains, on the standard output, which is not looked at.
            const Corrade::Utility::Debug toError{&std::cerr};
            view.init(context, data, application);
        };
        QUORVANE_EXPECT_ABORT(init(), std::string{"Initializing View: SomeView\n"} + message);
    };
    expectAbort(nullptr, nullptr, nullptr, "EditorView::init(): ImGuiContext was nullptr");
    expectAbort(nullptr, &data, &application, "EditorView::init(): ImGuiContext was nullptr");
    expectAbort(gui.context(), nullptr, nullptr, "EditorView::init(): EditorData was nullptr");
    expectAbort(gui.context(), nullptr, &application, "EditorView::init(): EditorData was nullptr");
    expectAbort(gui.context(), &data, nullptr, "EditorView::init(): QuorvaneEditor was nullptr");
}

}
}
