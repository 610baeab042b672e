#include "Ui/Scope.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "Ui/Ui.h"
#include "support/Abort.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::GuiTest;

class UiScope: public testing::Test {
protected:
    /** Does something in a window. */
    template <class F> void inWindow(F&& what) {
        gui.frames([&] {
            const WindowGuard window{ImGui::Begin("Window")};
            what();
            // Whatever was pushed has to be popped.
            EXPECT_EQ(path(), "");
        });
    }

    std::string path() const { return ui.path.data(); }

    static int idDepth() { return ImGui::GetCurrentWindow()->IDStack.Size; }

    void pop(int count) {
        for(int i = 0; i != count; ++i) ui.popScope();
    }

    GuiTest gui;
    Ui ui;
};

TEST_F(UiScope, NamesAndIndicesAddLevels) {
    inWindow([this] {
        ui.pushScope("settings", nullptr);
        EXPECT_EQ(path(), "/settings");
        ui.pushScope(3, nullptr);
        EXPECT_EQ(path(), "/settings/3");
        ui.popScope();
        EXPECT_EQ(path(), "/settings");
        ui.popScope();
        EXPECT_EQ(path(), "");
    });
}

TEST_F(UiScope, IndicesAreDecimal) {
    inWindow([this] {
        for(const unsigned long index: {0ul, 9ul, 10ul, ~0ul}) {
            ui.pushScope(index, nullptr);
            EXPECT_EQ(path(), "/" + std::to_string(index));
            ui.popScope();
        }
    });
}

TEST_F(UiScope, AnIndexHasTheIdOfItsDigits) {
    inWindow([this] {
        unsigned id = 0;
        ui.pushScope(12, &id);
        ui.popScope();
        EXPECT_EQ(id, ImGui::GetID("12"));
    });
}

TEST_F(UiScope, ALeadingSlashIsNotDoubled) {
    inWindow([this] {
        ui.pushScope("/a", nullptr);
        EXPECT_EQ(path(), "/a");
        ui.popScope();
        ui.pushScope("x", nullptr);
        ui.pushScope("/a", nullptr);
        EXPECT_EQ(path(), "/x/a");
        pop(2);
    });
}

TEST_F(UiScope, ANameOfSeveralPartsIsSeveralLevels) {
    inWindow([this] {
        const int depth = idDepth();
        ui.pushScope("x", nullptr);
        unsigned id = 0;
        ui.pushScope("a/b", &id);
        EXPECT_EQ(path(), "/x/a/b");
        EXPECT_EQ(idDepth(), depth + 3);
        pop(2);
        EXPECT_EQ(path(), "/x");
        EXPECT_EQ(idDepth(), depth + 1);
        // The ID is that of b with a pushed already.
        ImGui::PushID("a");
        EXPECT_EQ(id, ImGui::GetID("b"));
        ImGui::PopID();
        ui.popScope();
    });
}

TEST_F(UiScope, TheIdStackHoldsTheSegments) {
    inWindow([this] {
        ui.pushScope("a/b", nullptr);
        const ImGuiID inside = ImGui::GetID("x");
        pop(2);
        ImGui::PushID("a");
        ImGui::PushID("b");
        EXPECT_EQ(ImGui::GetID("x"), inside);
        ImGui::PopID();
        ImGui::PopID();
    });
}

TEST_F(UiScope, ATrailingSlashLeavesALevelBehind) {
    inWindow([this] {
        ui.pushScope("x", nullptr);
        const int depth = idDepth();
        ui.pushScope("a/", nullptr);
        EXPECT_EQ(path(), "/x/a/");
        EXPECT_EQ(idDepth(), depth + 1);
        ui.popScope();
        EXPECT_EQ(path(), "/x/a");
        EXPECT_EQ(idDepth(), depth);
        // Balance what such a name leaves behind.
        ImGui::PushID("a");
        pop(2);
    });
}

TEST_F(UiScope, EscapedKeysAreOneSegment) {
    inWindow([this] {
        const int depth = idDepth();
        ui.pushScope("a~1b~0c", nullptr);
        EXPECT_EQ(path(), "/a~1b~0c");
        EXPECT_EQ(idDepth(), depth + 1);
        ui.popScope();
    });
}

/** The library takes "###" for the beginning of the ID. In the keys of a document it is text as any other. */
TEST_F(UiScope, KeysThatDifferBeforeThreeHashesHaveDifferentIds) {
    inWindow([this] {
        unsigned ids[4];
        int i = 0;
        for(const char* key: {"a###c", "b###c", "###c", "c"}) {
            ui.pushScope(key, &ids[i++]);
            EXPECT_EQ(path(), std::string{"/"} + key);
            ui.popScope();
        }
        for(int j = 0; j != 4; ++j)
            for(int k = 0; k != j; ++k) EXPECT_NE(ids[j], ids[k]);
    });
}

TEST_F(UiScope, TwoHashesAndPercentsAreText) {
    inWindow([this] {
        unsigned id = 0;
        ui.pushScope("100 %s##x", &id);
        EXPECT_EQ(path(), "/100 %s##x");
        ui.popScope();
        EXPECT_EQ(id, ImGui::GetID("100 %s##x"));
    });
}

TEST_F(UiScope, ThePathGrowsByAtLeast64Bytes) {
    inWindow([this] {
        const std::size_t before = ui.path.size();
        const std::string name(before - 1, 'a');
        ui.pushScope(name.c_str(), nullptr);
        EXPECT_EQ(path(), "/" + name);
        EXPECT_EQ(ui.path.size(), before + 64);
        for(std::size_t i = name.size() + 1; i != ui.path.size(); ++i) ASSERT_EQ(ui.path[i], '\0') << i;
        ui.popScope();
        EXPECT_EQ(ui.path.size(), before + 64);
    });
}

TEST_F(UiScope, ALongPathGrowsToWhatItNeeds) {
    inWindow([this] {
        const std::string name(10000, 'a');
        ui.pushScope(name.c_str(), nullptr);
        EXPECT_EQ(path(), "/" + name);
        EXPECT_EQ(ui.path.size(), name.size() + 2);
        ui.popScope();
    });
}

TEST_F(UiScope, APathThatJustFitsDoesNotGrow) {
    inWindow([this] {
        const std::size_t before = ui.path.size();
        ui.pushScope(std::string(before - 2, 'a').c_str(), nullptr);
        EXPECT_EQ(ui.path.size(), before);
        ui.popScope();
    });
}

TEST_F(UiScope, ANameNeedNotBeTerminated) {
    inWindow([this] {
        const Containers::StringView name = "settings";
        ui.pushScope(name.prefix(3), nullptr);
        EXPECT_EQ(path(), "/set");
        ui.popScope();
    });
}

TEST_F(UiScope, NothingIsAllocatedOnceThereIsRoom) {
    inWindow([this] {
        const auto descend = [this] {
            ui.pushScope("localization/terms", nullptr);
            ui.pushScope(12345, nullptr);
            { const Scope scope{&ui, "translatable"}; }
            pop(3);
        };
        descend();
        const Allocations allocations;
        descend();
        EXPECT_EQ(allocations.count(), 0u);
    });
}

// The guard

TEST_F(UiScope, TheGuardPopsWhatItPushed) {
    inWindow([this] {
        const int depth = idDepth();
        {
            const Scope outer{&ui, "/a/b/"};
            EXPECT_EQ(outer.depth, 2u);
            // The trailing slash is a level that no pop belongs to.
            *std::strrchr(ui.path.data(), '/') = '\0';
            EXPECT_EQ(path(), "/a/b");
            const Scope inner{&ui, "c"};
            EXPECT_EQ(inner.depth, 1u);
            EXPECT_EQ(inner.ui, &ui);
            EXPECT_EQ(path(), "/a/b/c");
        }
        EXPECT_EQ(path(), "");
        EXPECT_EQ(idDepth(), depth);
    });
}

TEST_F(UiScope, TheGuardKnowsTheIdOfTheLastPart) {
    inWindow([this] {
        unsigned id = 0;
        ui.pushScope("a/b", &id);
        pop(2);
        const Scope scope{&ui, "a/b"};
        EXPECT_EQ(scope.id, id);
    });
}

// The tooltip

class UiScopeTooltip: public UiScope {
protected:
    /** Draws two buttons, each a value of its own, below a common scope. */
    void draw() {
        const WindowGuard window{ImGui::Begin("Window")};
        {
            const Scope outer{&ui, "terms"};
            for(const char* name: {"one", "two"}) {
                const Scope scope{&ui, name};
                ImGui::Button("value");
            }
        }
        isShown = false;
        for(const ImGuiWindow* candidate: ImGui::GetCurrentContext()->Windows) {
            if(!(candidate->Flags & ImGuiWindowFlags_Tooltip) || !candidate->Active) continue;
            isShown = true;
            // A tooltip is measured in the frame before.
            width = candidate->ContentSize.x;
        }
    }

    float width = 0.0f;
    bool isShown = false;
};

TEST_F(UiScopeTooltip, CtrlShowsThePathOfTheValueUnderTheMouse) {
    EXPECT_TRUE(gui.run(
        "hover with Ctrl", [this] { draw(); },
        [this](ImGuiTestContext& user) {
            user.MouseMove("//Window/terms/one/value");
            user.Yield(2);
            IM_CHECK(!isShown);
            user.KeyDown(ImGuiMod_Ctrl);
            user.Yield(3);
            IM_CHECK(isShown);
            IM_CHECK_EQ(width, ImGui::CalcTextSize("/terms/one").x);
            user.MouseMove("//Window/terms/two/value");
            user.Yield(3);
            IM_CHECK(isShown);
            // The outer scope closes behind the same button, and does not take its place.
            IM_CHECK_EQ(width, ImGui::CalcTextSize("/terms/two").x);
            user.KeyUp(ImGuiMod_Ctrl);
            user.Yield(2);
            IM_CHECK(!isShown);
        }));
}

TEST_F(UiScopeTooltip, ElsewhereCtrlShowsNothing) {
    EXPECT_TRUE(gui.run(
        "hover nothing", [this] { draw(); },
        [this](ImGuiTestContext& user) {
            user.MouseMoveToVoid();
            user.KeyDown(ImGuiMod_Ctrl);
            user.Yield(3);
            IM_CHECK(!isShown);
            user.KeyUp(ImGuiMod_Ctrl);
        }));
}

using UiScopeDeathTest = UiScope;

TEST_F(UiScopeDeathTest, APopWithoutAPushAborts) {
    QUORVANE_EXPECT_ABORT(ui.popScope(), "Ui::popScope(): push/pop mismatch");
}

TEST_F(UiScopeDeathTest, ANameWithoutAPartAborts) {
    for(const char* name: {"", "/", "//"})
        QUORVANE_EXPECT_ABORT(ui.pushScope(name, nullptr), "Ui::pushScope(): the name has no part");
}

}
}
