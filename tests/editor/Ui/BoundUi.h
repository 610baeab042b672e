#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Ui.h"
#include "support/Allocations.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {

/** A toolkit that is bound to a project, in a window of a known size. */
class BoundUi: public testing::Test {
protected:
    static constexpr float Width = 400.0f;

    /** Loads a project, and records a change of a value that no test edits: the first entry of a log never merges. */
    void loadProject(const std::string& json) {
        load(project, json);
        changes.reset(project);
        changes.pushChange("/first", rapidjson::Value{true}, false);
        loaded = toText(project);
    }

    /** Draws something in the window. */
    template <class F> void draw(F&& what) {
        ImGui::SetNextWindowSize({Width, 600.0f});
        ImGui::SetNextWindowPos({20.0f, 20.0f}, ImGuiCond_Once);
        const WindowGuard window{ImGui::Begin("Window")};
        what();
        EXPECT_TRUE(ui.scopePath().isEmpty());
    }

    /** Draws frames with nobody at mouse and keyboard. */
    template <class F> void frames(F&& what, int count = 2) {
        gui.frames([&] { draw(what); }, count);
    }

    /** How often something asks for memory when it is drawn in a frame in which nothing happens, behind some like it. */
    template <class F> std::uint64_t idleAllocations(F&& what) {
        frames(what, 5);
        std::uint64_t count = 1;
        frames(
            [&] {
                const Allocations allocations;
                what();
                count = allocations.count();
            },
            1);
        return count;
    }

    /** Lets a user loose on what is drawn. */
    template <class F> bool run(F&& what, const GuiTest::Script& script) {
        return gui.run(
            "script", [&] { draw(what); }, script);
    }

    std::string value(const char* path) {
        const rapidjson::Value* const value = project.getValue(path, false);
        return value ? toText(*value) : "()";
    }

    /** How many changes were recorded since the project was loaded. */
    int recorded() const { return int(changes.changes().size()) - 1; }

    /** Compares the whole document on the way to what was loaded, and back, twice. */
    void expectUndoAndRedo() {
        const std::string edited = toText(project);
        const int count = changes.lastChangeIndex();
        for(int round = 0; round != 2; ++round) {
            for(int i = 0; i != count; ++i) changes.undoLast();
            EXPECT_EQ(toText(project), loaded);
            for(int i = 0; i != count; ++i) changes.redoLastUndo();
            EXPECT_EQ(toText(project), edited);
        }
    }

    /** Moves the mouse by some pixels to the right. */
    static void moveBy(ImGuiTestContext& user, float pixels) {
        const ImVec2 position = ImGui::GetMousePos();
        user.MouseMoveToPos({position.x + pixels, position.y});
        user.Yield();
    }

    /** Holds the mouse down over an item and moves it to the right in some steps. */
    static void drag(ImGuiTestContext& user, const char* item, std::initializer_list<float> steps) {
        user.MouseMove(item);
        user.MouseDown();
        for(const float step: steps) moveBy(user, step);
        user.MouseUp();
        user.Yield();
    }

    GuiTest gui;
    ProjectFile project;
    ChangeManager changes{project};
    Ui ui{&project, &changes};
    std::string loaded;
};

}
