#include "support/GuiTest.h"

#include <cfloat>

#include <gtest/gtest.h>

namespace QuorvaneEngine::Test {

namespace {

constexpr float TimeStep = 1.0f / 60.0f;

/** A script that needs more has lost its way. */
constexpr int MaxFrames = 100000;

/** Does for the font's textures what a renderer would, less the drawing. */
void acknowledgeTextures(const ImDrawData& data) {
    if(!data.Textures) return;
    for(ImTextureData* const texture: *data.Textures) {
        if(texture->Status == ImTextureStatus_WantCreate) {
            texture->SetTexID(1);
            texture->SetStatus(ImTextureStatus_OK);
        } else if(texture->Status == ImTextureStatus_WantUpdates) texture->SetStatus(ImTextureStatus_OK);
        else if(texture->Status == ImTextureStatus_WantDestroy && texture->UnusedFrames > 0) {
            texture->SetTexID(ImTextureID_Invalid);
            texture->SetStatus(ImTextureStatus_Destroyed);
        }
    }
}

void releaseTextures() {
    for(ImTextureData* const texture: ImGui::GetPlatformIO().Textures) {
        texture->SetTexID(ImTextureID_Invalid);
        texture->SetStatus(ImTextureStatus_Destroyed);
    }
}

}

GuiTest::GuiTest(const ImVec2& displaySize): _context{ImGui::CreateContext()} {
    ImGui::SetCurrentContext(_context);
    ImGuiIO& io = ImGui::GetIO();
    io.IniFilename = nullptr;
    io.LogFilename = nullptr;
    io.ConfigFlags |= ImGuiConfigFlags_DockingEnable;
    io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures | ImGuiBackendFlags_RendererHasVtxOffset |
        ImGuiBackendFlags_HasMouseCursors;
    io.DisplaySize = displaySize;
    io.DeltaTime = TimeStep;
    io.Fonts->AddFontDefault();

    _engine = ImGuiTestEngine_CreateContext();
    ImGuiTestEngineIO& engineIo = ImGuiTestEngine_GetIO(_engine);
    engineIo.ConfigSavedSettings = false;
    engineIo.ConfigRunSpeed = ImGuiTestRunSpeed_Fast;
    engineIo.ConfigFixedDeltaTime = TimeStep;
    engineIo.ConfigMouseDrawCursor = false;
    engineIo.ConfigNoThrottle = true;
    engineIo.ConfigCaptureEnabled = false;
    engineIo.ConfigVerboseLevel = ImGuiTestVerboseLevel_Info;
    engineIo.ConfigVerboseLevelOnError = ImGuiTestVerboseLevel_Debug;
    // How long a test may take is the test runner's business, and a sanitizer's machine is slow.
    engineIo.ConfigWatchdogWarning = FLT_MAX;
    engineIo.ConfigWatchdogKillTest = FLT_MAX;
    ImGuiTestEngine_Start(_engine, _context);
}

GuiTest::~GuiTest() {
    ImGui::SetCurrentContext(_context);
    ImGuiTestEngine_Stop(_engine);
    releaseTextures();
    ImGui::DestroyContext(_context);
    ImGuiTestEngine_DestroyContext(_engine);
}

bool GuiTest::run(const char* const name, const Gui& gui, const Script& script) {
    ImGui::SetCurrentContext(_context);
    ImGuiTest& test = *ImGuiTestEngine_RegisterTest(_engine, "gui", name);
    test.GuiFunc = [&gui](ImGuiTestContext*) { gui(); };
    test.TestFunc = [&script](ImGuiTestContext* const user) { script(*user); };
    ImGuiTestEngine_QueueTest(_engine, &test);
    const int last = _frames + MaxFrames;
    while(!ImGuiTestEngine_IsTestQueueEmpty(_engine)) {
        if(_frames == last) ImGuiTestEngine_AbortCurrentTest(_engine);
        frame(nullptr);
    }

    const bool succeeded = test.Output.Status == ImGuiTestStatus_Success;
    if(!succeeded) {
        ImGuiTextBuffer log;
        test.Output.Log.ExtractLinesForVerboseLevels(ImGuiTestVerboseLevel_Error, ImGuiTestVerboseLevel_Debug, &log);
        ADD_FAILURE() << "GUI script \"" << name << "\" failed:\n" << log.c_str();
    }
    ImGuiTestEngine_UnregisterTest(_engine, &test);
    return succeeded;
}

void GuiTest::frames(const Gui& gui, const int count) {
    ImGui::SetCurrentContext(_context);
    for(int i = 0; i != count; ++i) frame(&gui);
}

void GuiTest::frame(const Gui* const gui) {
    ++_frames;
    if(_prepare) _prepare();
    ImGui::NewFrame();
    if(gui) (*gui)();
    ImGui::Render();
    acknowledgeTextures(*ImGui::GetDrawData());
    ImGuiTestEngine_PostSwap(_engine);
}

bool runGui(const char* const name, const GuiTest::Gui& gui, const GuiTest::Script& script) {
    GuiTest test;
    return test.run(name, gui, script);
}

}
