#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "Examples.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

/** The gallery in the editor without a window, high enough to show all of it. */
class GalleryView: public testing::Test {
protected:
    GalleryView() {
        gui.prepareFrames([this] { frame.prepare(); });
    }

    ~GalleryView() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    /** Opens its own project, or another one. */
    void open(const std::string& json = {}) {
        fs::create_directories(root);
        if(json.empty()) fs::copy(QUORVANE_SOURCE_DIR "/samples/gallery/project/project.json", root / "project.json");
        else std::ofstream{root / "project.json"} << json;
        ASSERT_TRUE(frame.open(root.c_str()));
        gui.frames([this] { frame.draw(); }, 5);
        loaded = document();
    }

    std::string document() { return toText(session.project()); }

    std::string value(const char* path) {
        const rapidjson::Value* const value = session.project().getValue(path, false);
        return value ? toText(*value) : "()";
    }

    /** The child window of an example. */
    static ImGuiWindow* windowOf(const std::string& example) {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(std::string{window->Name}.find("/" + example + "_") != std::string::npos && window->WasActive)
                return window;
        return nullptr;
    }

    bool play(const char* example, const GuiTest::Script& script) {
        return gui.run(
            example, [this] { frame.draw(); },
            [&](ImGuiTestContext& user) {
                const ImGuiWindow* const window = windowOf(example);
                IM_CHECK(window != nullptr);
                user.SetRef(window->ID);
                script(user);
            });
    }

    void expectNoWarnings() const {
        for(const MessageLog::Message& message: log.messages())
            EXPECT_LT(message.severity, MessageLog::Severity::Warning) << message.text.data();
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-gallery-" + std::to_string(getpid()));
    MessageLog log;
    GuiTest gui{{1280.0f, 3600.0f}};
    JobSystem jobs{0};
    EditorSession session{&jobs};
    ModuleLoader modules{QUORVANE_SAMPLE_MODULES};
    EditorFrame frame{session, jobs, modules, log, {}, noDialog, noDialog};
    std::string loaded;
};

TEST_F(GalleryView, ShowsAllExamplesAndNothingIsCutOff) {
    open();
    for(const Gallery::Example& example: Gallery::examples()) {
        const ImGuiWindow* const window = windowOf(example.name);
        ASSERT_TRUE(window) << example.name;
        EXPECT_FALSE(window->SkipItems) << example.name;
        EXPECT_GT(window->ContentSize.y, 0.0f) << example.name;
        EXPECT_LE(window->ContentSize.x, window->WorkRect.GetWidth()) << example.name;
        EXPECT_LE(window->ContentSize.y, window->WorkRect.GetHeight()) << example.name;
    }
    EXPECT_FALSE(ImGui::FindWindowByName("Gallery")->ScrollbarY);
    EXPECT_EQ(document(), loaded);
    expectNoWarnings();
}

TEST_F(GalleryView, AWidgetEditsItsValueAndCanBeUndone) {
    open();
    EXPECT_TRUE(play("inputInt", [&](ImGuiTestContext& user) {
        user.ItemInputValue("lamps/##val", 7);
        user.Yield(2);
        IM_CHECK_STR_EQ(value("/gallery/lamps").c_str(), "7");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
        user.Yield(2);
        IM_CHECK(document() == loaded);
    }));
    EXPECT_TRUE(play("checkbox", [&](ImGuiTestContext& user) {
        user.ItemClick("visible/visible");
        user.Yield(2);
        IM_CHECK_STR_EQ(value("/gallery/visible").c_str(), "false");
    }));
    EXPECT_TRUE(play("selectResource", [&](ImGuiTestContext& user) {
        user.ItemClick("texture/##val");
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
    }));
    EXPECT_EQ(value("/gallery/texture"), R"("driftwood")");
}

TEST_F(GalleryView, AResourceIsDraggedFromOneExampleToTheOther) {
    open();
    EXPECT_TRUE(play("selectResource", [&](ImGuiTestContext& user) {
        const ImGuiID target = user.GetID("texture/##val");
        user.SetRef(windowOf("resourceDragDropSource")->ID);
        user.ItemDragAndDrop("Drag \"Granite\" to a texture", target);
        user.Yield(2);
    }));
    EXPECT_EQ(value("/gallery/texture"), R"("granite")");
}

TEST_F(GalleryView, InAProjectOfItsOwnAllValuesAreSetAsOneStep) {
    open(R"({"objects":{"door":{"name":"Door"}}})");
    EXPECT_TRUE(gui.run(
        "set", [this] { frame.draw(); },
        [&](ImGuiTestContext& user) {
            user.SetRef("Gallery");
            user.ItemClick("Set all values");
            user.Yield(3);
            IM_CHECK_STR_EQ(value("/gallery/lamps").c_str(), "3");
            for(const Gallery::Example& example: Gallery::examples()) {
                const std::string path = std::string{"/gallery/"} + (example.key ? example.key : "");
                IM_CHECK(!example.key || value(path.c_str()) != "()");
            }
            user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
            user.Yield(3);
        }));
    EXPECT_EQ(document(), loaded);
    EXPECT_EQ(session.changes().changes().size(), 1u);
    expectNoWarnings();
}

TEST_F(GalleryView, ValuesThatAreThereAreSetAnew) {
    open(R"({"gallery":{"lamps":5,"else":true}})");
    EXPECT_TRUE(gui.run(
        "set", [this] { frame.draw(); },
        [&](ImGuiTestContext& user) {
            user.SetRef("Gallery");
            user.ItemClick("Set all values");
            user.Yield(3);
        }));
    EXPECT_EQ(value("/gallery/lamps"), "3");
    EXPECT_EQ(value("/gallery/else"), "()");
    EXPECT_EQ(session.changes().changes().size(), 1u);
}

TEST_F(GalleryView, AValueThatIsMissingIsSetAlone) {
    open(R"({"gallery":{"lamps":5}})");
    EXPECT_TRUE(play("inputFloat", [&](ImGuiTestContext& user) {
        user.ItemClick("Set a value");
        user.Yield(3);
    }));
    EXPECT_EQ(document(), R"({"gallery":{"lamps":5,"height":31.5}})");
    EXPECT_TRUE(play("inputFloat", [&](ImGuiTestContext& user) { IM_CHECK(user.ItemExists("height/##val")); }));
}

TEST_F(GalleryView, WhereTheRootIsNoObjectAllValuesAreSet) {
    open(R"({"gallery":[1,2]})");
    EXPECT_TRUE(play("inputFloat", [&](ImGuiTestContext& user) {
        user.ItemClick("Set a value");
        user.Yield(3);
    }));
    EXPECT_EQ(value("/gallery/lamps"), "3");
}

TEST_F(GalleryView, ValuesOfEveryWrongTypeAreShownAndStayAsTheyAre) {
    open("{}");
    for(const char* wrong:
        {"null", "true", "7", R"("text")", "[]", "[1]", "[1,2,3]", R"(["a","b","c","d"])", R"({"a":{"b":1}})"}) {
        SCOPED_TRACE(wrong);
        std::string json = R"({"gallery":{)";
        for(const Gallery::Example& example: Gallery::examples())
            if(example.key) json += '"' + std::string{example.key} + "\":" + wrong + ',';
        json.back() = '}';
        load(session.project(), json + '}');
        gui.frames([this] { frame.draw(); }, 3);
        EXPECT_EQ(document(), json + '}');
        EXPECT_TRUE(windowOf("inputFloat4"));
    }
}

}
}
