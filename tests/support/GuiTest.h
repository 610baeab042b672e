#pragma once

#include <functional>
#include <utility>

#include <imgui.h>
#include <imgui_internal.h>
#include <imgui_te_context.h>
#include <imgui_te_engine.h>

struct ImGuiTestEngine;

namespace QuorvaneEngine::Test {

/** A GUI without a window: Dear ImGui on a back end that draws nothing, with the Test Engine for a user.

    The context has the built-in font, docking, a fixed time step of a sixtieth of a second and no settings file. It is the current
    one while the object lives; there is one at a time. */
class GuiTest {
public:
    /** Draws the GUI of one frame, on the calling thread, between the library's NewFrame and Render. */
    using Gui = std::function<void()>;

    /** Acts as the user would, on a thread of its own that never runs at the same time as the GUI's: each action takes as
        many frames as it needs. `IM_CHECK` and its relatives are the assertions here, and end the script when they fail. */
    using Script = std::function<void(ImGuiTestContext& user)>;

    explicit GuiTest(const ImVec2& displaySize = {1280.0f, 720.0f});
    ~GuiTest();

    GuiTest(const GuiTest&) = delete;
    GuiTest& operator=(const GuiTest&) = delete;

    /** Draws frames until the script has ended. Where it fails, so does the surrounding test, with the engine's log.
        @return whether it succeeded */
    bool run(const char* name, const Gui& gui, const Script& script);

    /** Draws frames with nobody at mouse and keyboard. */
    void frames(const Gui& gui, int count = 1);

    /** Has a function called before each frame from now on, outside of the library's NewFrame and Render, whoever draws it. */
    void prepareFrames(std::function<void()> prepare) { _prepare = std::move(prepare); }

    ImGuiContext* context() const { return _context; }

    /** The frames that have been drawn. */
    int frameCount() const { return _frames; }

private:
    void frame(const Gui* gui);

    ImGuiContext* _context;
    ImGuiTestEngine* _engine;
    std::function<void()> _prepare;
    int _frames = 0;
};

/** Runs a script on a fresh GUI. */
bool runGui(const char* name, const GuiTest::Gui& gui, const GuiTest::Script& script);

}
