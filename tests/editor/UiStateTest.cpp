#include "UiState.h"

#include <filesystem>
#include <future>
#include <string>

#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::GuiTest;

constexpr const char* File = ".editor/imgui.ini";

class UiState: public testing::Test {
protected:
    UiState() { folder.write(".editor/beside", ""); }

    /** Draws a frame with one window, between whose frames no job runs. */
    void draw() {
        gui.frames([] {
            ImGui::Begin("A window");
            ImGui::End();
        });
    }

    static ImVec2 position() { return ImGui::FindWindowByName("A window")->Pos; }

    /** The id of a job that does nothing; ids are counted. */
    int dispatchNothing() {
        return jobs.dispatch([] {}, {}, JobFlag::MainThread);
    }

    bool hasFile() const { return std::filesystem::exists(folder / File); }

    const TestFolder folder;
    GuiTest gui;
    JobSystem jobs{2};
    Containers::String path{folder.path.c_str()};
    ProjectFile project;
    ChangeManager changes;
    EditorState state;
    QuorvaneEditor editor{project, changes, state, path, &jobs};
};

using ScheduleUIStateLoad = UiState;
using ScheduleUIStateSave = UiState;

TEST_F(ScheduleUIStateLoad, WithoutAFileChangesNothingButTheEditorsFlag) {
    draw();
    const std::string before = ImGui::SaveIniSettingsToMemory();
    EXPECT_FALSE(editor.layoutLoadScheduled);
    const CapturedOutput output;
    scheduleUIStateLoad(editor);
    EXPECT_TRUE(editor.layoutLoadScheduled);
    jobs.runMainThreadJobs();
    EXPECT_TRUE(editor.layoutLoadScheduled);
    EXPECT_EQ(ImGui::SaveIniSettingsToMemory(), before);
    EXPECT_FALSE(hasFile());
    EXPECT_EQ(output.debug() + output.warning() + output.error(), "");
}

TEST_F(ScheduleUIStateLoad, PutsWindowsWhereTheyWereSaved) {
    folder.write(File, "[Window][A window]\nPos=123,45\nSize=200,100\n\n");
    draw();
    EXPECT_NE(position().x, 123.0f);
    scheduleUIStateLoad(editor);
    jobs.runMainThreadJobs();
    draw();
    EXPECT_EQ(position().x, 123.0f);
    EXPECT_EQ(position().y, 45.0f);
}

TEST_F(ScheduleUIStateLoad, ReturnsAtOnceAndLoadsWhenTheJobRuns) {
    folder.write(File, "[Window][A window]\nPos=123,45\nSize=200,100\n\n");
    scheduleUIStateLoad(editor);
    draw();
    EXPECT_NE(position().x, 123.0f);
    jobs.runMainThreadJobs();
    draw();
    EXPECT_EQ(position().x, 123.0f);
}

TEST_F(ScheduleUIStateLoad, EachCallIsAJob) {
    const int before = dispatchNothing();
    scheduleUIStateLoad(editor);
    scheduleUIStateLoad(editor);
    EXPECT_EQ(dispatchNothing(), before + 3);
}

TEST_F(ScheduleUIStateLoad, AFolderInPlaceOfTheFileChangesNothing) {
    std::filesystem::create_directories(folder / File);
    draw();
    const std::string before = ImGui::SaveIniSettingsToMemory();
    scheduleUIStateLoad(editor);
    jobs.runMainThreadJobs();
    EXPECT_EQ(ImGui::SaveIniSettingsToMemory(), before);
}

TEST_F(ScheduleUIStateSave, TwiceDispatchesTwoJobsEachWritingTheWholeFile) {
    draw();
    const std::string whole = ImGui::SaveIniSettingsToMemory();
    EXPECT_NE(whole.find("[Window][A window]"), std::string::npos);
    const int before = dispatchNothing();
    scheduleUIStateSave(editor);
    scheduleUIStateSave(editor);
    EXPECT_EQ(dispatchNothing(), before + 3);
    EXPECT_FALSE(hasFile());
    for(const int save: {before + 1, before + 2}) {
        jobs.wait(save);
        EXPECT_EQ(folder.read(File), whole);
        std::filesystem::remove(folder / File);
    }
}

TEST_F(ScheduleUIStateSave, TouchesNoFlagOfTheEditor) {
    scheduleUIStateSave(editor);
    EXPECT_FALSE(editor.layoutLoadScheduled);
    editor.layoutLoadScheduled = true;
    scheduleUIStateSave(editor);
    jobs.runMainThreadJobs();
    EXPECT_TRUE(editor.layoutLoadScheduled);
}

TEST_F(ScheduleUIStateSave, ReplacesALongerFile) {
    folder.write(File, std::string(100000, 'x'));
    draw();
    scheduleUIStateSave(editor);
    jobs.runMainThreadJobs();
    EXPECT_EQ(folder.read(File), ImGui::SaveIniSettingsToMemory());
}

TEST_F(ScheduleUIStateSave, WithoutItsFolderWritesNothingAndIsSilent) {
    std::filesystem::remove_all(folder / ".editor");
    draw();
    const CapturedOutput output;
    scheduleUIStateSave(editor);
    jobs.runMainThreadJobs();
    EXPECT_FALSE(std::filesystem::exists(folder / ".editor"));
    EXPECT_EQ(output.debug() + output.warning() + output.error(), "");
}

TEST_F(ScheduleUIStateSave, WhatIsSavedIsLoaded) {
    draw();
    ImGui::SetWindowPos("A window", {321.0f, 54.0f});
    draw();
    scheduleUIStateSave(editor);
    jobs.runMainThreadJobs();
    ImGui::SetWindowPos("A window", {1.0f, 2.0f});
    draw();
    scheduleUIStateLoad(editor);
    jobs.runMainThreadJobs();
    draw();
    EXPECT_EQ(position().x, 321.0f);
    EXPECT_EQ(position().y, 54.0f);
}

TEST_F(UiState, JobsRunOnTheThreadOfTheGuiAlone) {
    folder.write(File, "[Window][A window]\nPos=123,45\nSize=200,100\n\n");
    scheduleUIStateSave(editor);
    scheduleUIStateLoad(editor);
    // Workers take jobs in the order of dispatch, and this one comes last.
    std::promise<void> last;
    jobs.dispatch([&last] { last.set_value(); }, {}, {});
    last.get_future().wait();
    EXPECT_NE(folder.read(File).find("Pos=123,45"), std::string::npos);
    draw();
    EXPECT_NE(position().x, 123.0f);
    jobs.runMainThreadJobs();
    EXPECT_EQ(folder.read(File).find("Pos=123,45"), std::string::npos);
}

TEST_F(UiState, JobsWorkOnTheProjectThatIsOpenWhenTheyRun) {
    const TestFolder other;
    other.write(".editor/beside", "");
    draw();
    scheduleUIStateSave(editor);
    path = other.path.c_str();
    jobs.runMainThreadJobs();
    EXPECT_FALSE(hasFile());
    EXPECT_TRUE(std::filesystem::exists(other / File));
}

}
}
