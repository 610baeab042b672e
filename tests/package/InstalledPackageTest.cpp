#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "app/ViewConditions.h"
#include "document/EditorSession.h"
#include "end_to_end/Program.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

std::string read(const fs::path& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/** An editor that was installed and then moved, as an archive is that somebody unpacks, and the project of a view. */
class InstalledPackage: public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(root);
        run({QUORVANE_CMAKE, "--install", QUORVANE_BINARY_DIR, "--prefix", (root / "first").string()});
        if(!HasFailure()) fs::rename(root / "first", prefix);
    }

    ~InstalledPackage() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    /** Runs a program that must succeed, with the build's compiler and libraries. */
    ProgramResult run(const std::vector<std::string>& command) const {
        ProgramResult result = runProgram(command, root.string(), {QUORVANE_PACKAGE_ENVIRONMENT});
        EXPECT_EQ(result.exitCode, 0) << command[0] << " " << command[1] << ":\n" << result.out << result.error;
        return result;
    }

    /** Writes a view and builds it. */
    void makeView(const char* name) const {
        run({(prefix / "bin/quorvane-editor").string(), "--new-view", name, view.string()});
        run({QUORVANE_CMAKE, "-S", view.string(), "-B", (view / "build").string(),
            "-DCMAKE_PREFIX_PATH=" + prefix.string()});
        build();
    }

    void build() const { run({QUORVANE_CMAKE, "--build", (view / "build").string()}); }

    /** All that is installed, as paths below the prefix. */
    std::set<std::string> files() const {
        std::set<std::string> files;
        for(const fs::directory_entry& entry: fs::recursive_directory_iterator{prefix})
            if(!entry.is_directory()) files.insert(entry.path().lexically_relative(prefix).string());
        return files;
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-package-" + std::to_string(getpid()));
    fs::path prefix = root / "an editor";
    fs::path view = root / "my view";
};

TEST_F(InstalledPackage, HasWhatRunsAndWhatAViewIsBuiltWith) {
    const std::set<std::string> installed = files();
    for(const char* file: {"bin/quorvane-editor", "bin/quorvane-localize", QUORVANE_INSTALL_MODULES "/Localization.so",
            QUORVANE_INSTALL_MODULES "/Localization.conf", "share/quorvane/icons.otf",
            "include/quorvane/host/QuorvaneEditor/ProjectWatch.h", "include/quorvane/editor/Ui/Ui.h",
            "include/quorvane/engine/Utils/Function.h", "include/quorvane/imgui/imgui.h",
            "include/quorvane/imgui/imgui_internal.h", "include/quorvane/imgui/QuorvaneImGuiConfig.h"})
        EXPECT_TRUE(installed.count(file)) << file;
}

TEST_F(InstalledPackage, TheDocumentationHasThePagesAndPicturesThatItLinks) {
    const std::regex link{R"(\]\(([^)#:]*\.(md|png))(#[^)]*)?\))"};
    std::set<std::string> linked;
    for(const fs::directory_entry& page: fs::directory_iterator{prefix / "share/quorvane/docs"}) {
        if(page.path().extension() != ".md") continue;
        const std::string text = read(page.path());
        for(std::sregex_iterator found{text.begin(), text.end(), link}; found != std::sregex_iterator{}; ++found)
            linked.insert((*found)[1]);
    }
    for(const std::string& name: linked) EXPECT_TRUE(fs::exists(prefix / "share/quorvane/docs" / name)) << name;
    for(const char* const name: {"exchange.md", "project.md", "pictures/gallery.png", "pictures/guide-terms-dark.png"})
        EXPECT_TRUE(linked.count(name)) << name;
}

TEST_F(InstalledPackage, HasNothingOfTestsAndOfTheTestEngine) {
    for(const std::string& file: files()) {
        for(const char* word: {"imgui_te_", "Test", "gtest", "fixture", "backends"})
            EXPECT_EQ(file.find(word), std::string::npos) << file;
    }
    const std::string imgui = read(prefix / QUORVANE_INSTALL_LIBRARIES / "libquorvane-imgui.so");
    EXPECT_NE(imgui.find("InputText"), std::string::npos);
    EXPECT_EQ(imgui.find("ImGuiTestEngine"), std::string::npos);
}

TEST_F(InstalledPackage, NamesNoFolderOfTheBuild) {
    for(const std::string& file: files()) {
        const std::string extension = fs::path{file}.extension();
        if(extension != ".cmake" && extension != ".in" && extension != ".conf") continue;
        const std::string text = read(prefix / file);
        for(const char* folder: {QUORVANE_SOURCE_DIR, QUORVANE_BINARY_DIR, ".deps"})
            EXPECT_EQ(text.find(folder), std::string::npos) << file << " has " << folder;
    }
}

TEST_F(InstalledPackage, ProgramsAndModulesFindLibrariesByTheWayFromTheirOwnFolder) {
    const fs::path modules = prefix / QUORVANE_INSTALL_MODULES;
    for(const fs::path& file: {prefix / "bin/quorvane-editor", prefix / "bin/quorvane-localize",
            prefix / QUORVANE_INSTALL_LIBRARIES / "libquorvane-host.so", modules / "Localization.so"}) {
        const std::string said = run({"/usr/bin/env", "ldd", file.string()}).out;
        EXPECT_EQ(said.find(QUORVANE_BINARY_DIR), std::string::npos) << said;
        EXPECT_EQ(said.find("not found"), std::string::npos) << said;
        EXPECT_NE(said.find(prefix.string() + "/"), std::string::npos) << said;
    }
}

TEST_F(InstalledPackage, TheToolWithoutAWindowRuns) {
    const ProgramResult result =
        run({(prefix / "bin/quorvane-localize").string(), "status", QUORVANE_SOURCE_DIR "/samples/lighthouse"});
    EXPECT_NE(result.out.find("Language"), std::string::npos) << result.out;
}

TEST_F(InstalledPackage, AViewIsWrittenBuiltDockedEditedAndReloaded) {
    makeView("Notes");
    ASSERT_FALSE(HasFailure());

    fs::create_directories(root / "game");
    std::ofstream{root / "game/project.json"}
        << R"({"objects": {"object_2": {"name": "Door"}}, "languages": {"en": {"isDefault": true}}})";
    MessageLog log;
    GuiTest gui{{1200.0f, 800.0f}};
    JobSystem jobs{0};
    EditorSession session{&jobs};
    const Containers::String folders[]{
        Containers::String{(view / "build/modules").c_str()}, Containers::String{QUORVANE_MODULE_DIR}};
    ModuleLoader modules{Containers::arrayView(folders)};
    EditorFrame frame{session, jobs, modules, log, viewConditions(), noDialog, noDialog};
    ImGuiContextHook hook;
    hook.Type = ImGuiContextHookType_NewFramePre;
    hook.UserData = &frame;
    hook.Callback = [](ImGuiContext*, ImGuiContextHook* own) { static_cast<EditorFrame*>(own->UserData)->prepare(); };
    ImGui::AddContextHook(gui.context(), &hook);
    ASSERT_TRUE(frame.open((root / "game").c_str()));
    const auto objects = [&session] { return session.project().root()["/objects"].size(); };

    EXPECT_TRUE(gui.run(
        "view", [&frame] { frame.draw(); },
        [&](ImGuiTestContext& user) {
            user.Yield(3);
            const ImGuiWindow* const notes = ImGui::FindWindowByName("Notes");
            const ImGuiWindow* const localization = ImGui::FindWindowByName("Localization");
            IM_CHECK(notes && localization);
            IM_CHECK(notes->DockIsActive);
            IM_CHECK(notes->DockNode == localization->DockNode);

            user.SetRef("Notes");
            user.ItemClick("Add an object");
            user.Yield(2);
            IM_CHECK_EQ(objects(), std::size_t{2});
            user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
            user.Yield(2);
            IM_CHECK_EQ(objects(), std::size_t{1});

            // An author at work: the source changes under the editor that runs.
            std::string source = read(view / "NotesView.cpp");
            const std::string before = "\"Add an object\"";
            IM_CHECK(source.find(before) != std::string::npos);
            source.replace(source.find(before), before.size(), "\"Another one\"");
            std::ofstream{view / "NotesView.cpp"} << source;
            build();
            user.SetRef("##MainMenuBar");
            user.MenuClick("View/Reload modules");
            user.Yield(3);
            user.SetRef("Notes");
            IM_CHECK(!user.ItemExists("Add an object"));
            user.ItemClick("Another one");
            user.ItemClick("Another one");
            user.Yield(2);
            IM_CHECK_EQ(objects(), std::size_t{3});
            const auto name = session.project().root()["/objects/object_2/name"].asString();
            IM_CHECK_STR_EQ(name.data(), "Door");
            IM_CHECK(ImGui::FindWindowByName("Notes")->DockIsActive);
        }));
    for(const MessageLog::Message& message: log.messages())
        EXPECT_LT(message.severity, MessageLog::Severity::Warning) << std::string{message.text};
}

TEST_F(InstalledPackage, TheSampleViewIsBuiltWithNothingElse) {
    run({QUORVANE_CMAKE, "-S", QUORVANE_SOURCE_DIR "/samples/gallery", "-B", (view / "build").string(),
        "-DCMAKE_PREFIX_PATH=" + prefix.string()});
    build();
    ASSERT_FALSE(HasFailure());
    ModuleLoader modules{(view / "build/modules").c_str()};
    EXPECT_TRUE(modules.load("Gallery"));
    EXPECT_TRUE(modules.messages().isEmpty());
}

/* A class EditorView beside the framework's, whose header is called the same. */
TEST_F(InstalledPackage, AViewMayBeCalledAsAClassOfTheFramework) {
    makeView("Editor");
    ASSERT_FALSE(HasFailure());
    ModuleLoader modules{(view / "build/modules").c_str()};
    EXPECT_TRUE(modules.load("Editor"));
    EXPECT_TRUE(modules.messages().isEmpty());
}

}
}
