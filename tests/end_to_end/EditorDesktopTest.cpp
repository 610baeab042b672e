#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Program.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

/** Starts the editor, lets the mouse and the keys do something in its window, and ends as the editor does. $EDITOR, $PROJECT and $OPENED,
    a pipe with a name, come from outside. */
constexpr const char* Before = R"(
timeout 90 "$EDITOR" --project "$PROJECT" --scale 1 &
editor=$!
trap 'kill $editor 2>/dev/null' EXIT
window=$(timeout 60 xdotool search --sync --onlyvisible --name "$(basename "$PROJECT") - Quorvane") || exit 101
xdotool windowfocus --sync "$window"
# Chooses from the menus: where the menu is, and where the item. Tells what the desktop was asked to open.
choose() {
    xdotool mousemove "$1" 16 click 1 mousemove "$2" "$3" click 1
    timeout 60 cat "$OPENED" || exit 102
}
)";
constexpr const char* After = R"(
xdotool key ctrl+q
wait $editor
status=$?
trap - EXIT
exit $status
)";

/** The desktop editor in a window that its user has before him, with folders of his that hold nothing yet. */
class EditorDesktop: public testing::Test {
protected:
    EditorDesktop() {
        for(const char* const folder: {"home", "data", "cache", "desk", "programs"})
            fs::create_directories(root / folder);
        fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", project, fs::copy_options::recursive);
        fs::remove_all(project / ".editor");
        EXPECT_EQ(mkfifo((root / "opened").c_str(), 0600), 0);
        const fs::path opener = root / "programs/xdg-open";
        std::ofstream{opener} << "#!/bin/sh\nprintf 'asked for %s\\n' \"$@\" >'" << (root / "opened").string() << "'\n";
        fs::permissions(opener, fs::perms::owner_all);
    }

    ~EditorDesktop() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    void SetUp() override {
        if(runProgram({"/bin/sh", "-c", "command -v xdotool"}, root.string()).exitCode)
            GTEST_SKIP() << "there is no xdotool, which would use the mouse and the keys";
    }

    /** Uses the editor until it ends.
        @param environment  beside that of the user */
    ProgramResult use(const std::string& actions, const std::vector<std::string>& environment) const {
        return run(Before + actions + After, environment);
    }

    /** Runs a script of the shell where the user works. Drivers and fonts may keep what they like in a folder for that. */
    ProgramResult run(const std::string& script, std::vector<std::string> environment) const {
        for(const std::string& variable: {"HOME=" + (root / "home").string(),
                "XDG_CACHE_HOME=" + (root / "cache").string(), std::string{"XDG_CONFIG_HOME"},
                std::string{"XDG_STATE_HOME"}, "PATH=" + (root / "programs").string() + ":" + std::getenv("PATH"),
                std::string{"EDITOR=" QUORVANE_EDITOR}, "PROJECT=" + project.string(),
                "OPENED=" + (root / "opened").string()})
            environment.push_back(variable);
        return runProgram({"/bin/sh", "-c", script}, (root / "desk").string(), environment);
    }

    std::string inDataFolder() const { return "XDG_DATA_HOME=" + (root / "data").string(); }

    std::string read(const char* const name) const {
        std::ifstream file{root / name, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    /** All that is in a folder. */
    Names in(const char* const folder) const {
        Names names;
        for(const fs::directory_entry& entry: fs::recursive_directory_iterator{root / folder})
            names.insert(entry.path().lexically_relative(root / folder).string());
        return names;
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-desktop-" + std::to_string(getpid()));
    fs::path project = root / "a lighthouse";
};

TEST_F(EditorDesktop, RecentProjectsAndTheLayoutAreAllThatItWritesAndEachHasItsPlace) {
    const Names before = in("a lighthouse");
    const ProgramResult result = use("", {inDataFolder()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(in("data"), (Names{"QuorvaneEngine", "QuorvaneEngine/recent-projects.json"}));
    EXPECT_EQ(read("data/QuorvaneEngine/recent-projects.json"), "[\n  \"" + project.string() + "\"\n]\n");
    Names after = before;
    for(const char* const name: {".editor", ".editor/.gitignore", ".editor/imgui.ini"}) after.insert(name);
    EXPECT_EQ(in("a lighthouse"), after);
    EXPECT_NE(read("a lighthouse/.editor/imgui.ini").find("[Window][Localization]"), std::string::npos);
    // The GUI library's own file would lie in the folder that the editor was started in.
    EXPECT_EQ(in("desk"), Names{});
    EXPECT_EQ(in("home"), Names{});
}

TEST_F(EditorDesktop, WithoutAFolderForDataRecentProjectsLieInTheHome) {
    EXPECT_EQ(use("", {"XDG_DATA_HOME"}).exitCode, 0);
    EXPECT_EQ(in("home"),
        (Names{".local", ".local/share", ".local/share/QuorvaneEngine",
            ".local/share/QuorvaneEngine/recent-projects.json"}));
    EXPECT_EQ(in("data"), Names{});
    EXPECT_EQ(in("desk"), Names{});
}

TEST_F(EditorDesktop, WhoTakesAPictureIsNotNoted) {
    const ProgramResult result =
        run("\"$EDITOR\" --project \"$PROJECT\" --screenshot ../picture.png", {inDataFolder()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(fs::exists(root / "picture.png"));
    for(const char* const folder: {"home", "data", "desk"}) EXPECT_EQ(in(folder), Names{}) << folder;
}

TEST_F(EditorDesktop, APluginThatTheEditorDiedWithIsLeftOutOnceTheUserSaysSo) {
    const std::vector<std::string> environment{inDataFolder(), "QUORVANE_DYING=bound",
        "MODULES=" QUORVANE_FIXTURES "/dying", "LIST=" + (root / "data/QuorvaneEngine/left-out-modules.json").string()};
    const std::string dying = "exec \"$EDITOR\" --modules \"$MODULES\" --project \"$PROJECT\"";
    // A picture is the same for every user, and tells nobody.
    EXPECT_EQ(run(dying + " --screenshot ../picture.png", environment).exitCode, -1);
    EXPECT_EQ(in("data"), Names{});
    EXPECT_EQ(run(dying, environment).exitCode, -1);
    ASSERT_FALSE(in("data").empty());

    std::string asked{Before};
    asked.insert(asked.find("--project"), "--modules \"$MODULES\" ");
    // The first answer is the one that harms nobody; the arrow shows that it is selected.
    asked += R"(
tries=0
until grep -q '"answered": true' "$LIST" || [ $tries -gt 60 ]; do
    xdotool key Left
    sleep 0.3
    xdotool key Return
    sleep 1
    tries=$((tries + 1))
done
)";
    const ProgramResult result = run(asked + After, environment);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error,
        "LeftOutModules::LeftOutModules(): " QUORVANE_FIXTURES "/dying/Dying.so: the editor died while it was "
        "loading this module\n");
    EXPECT_EQ(in("data"),
        (Names{"QuorvaneEngine", "QuorvaneEngine/left-out-modules.json", "QuorvaneEngine/recent-projects.json"}));
    EXPECT_NE(read("data/QuorvaneEngine/left-out-modules.json").find("\"answered\": true"), std::string::npos);
}

TEST_F(EditorDesktop, ASystemThatEndsItLosesNothingThatIsNotSaved) {
    const std::string saved = read("a lighthouse/project.json");
    std::string script{Before};
    script.insert(script.find("--project"), "--modules \"$MODULES\" ");
    // The program before the editor hands the signal on. Its title tells what is not saved.
    script += R"(
timeout 60 xdotool search --sync --onlyvisible --name "\* $(basename "$PROJECT") - Quorvane" >/dev/null || exit 103
kill -TERM $editor
wait $editor
status=$?
trap - EXIT
exit $status
)";
    const ProgramResult result =
        run(script, {inDataFolder(), "QUORVANE_DYING=changing", "MODULES=" QUORVANE_FIXTURES "/dying"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_NE(read("a lighthouse/.editor/autosave").find("\"counted\":1"), std::string::npos);
    EXPECT_EQ(read("a lighthouse/project.json"), saved);
}

TEST_F(EditorDesktop, TheMenusHandTheProjectAndTheDocumentationToTheDesktop) {
    const ProgramResult result = use("choose 25 110 104\nchoose 167 230 50\n", {inDataFolder()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    const std::string documentation =
        (fs::path{QUORVANE_EDITOR}.parent_path().parent_path() / "share/quorvane/docs").string();
    EXPECT_NE(
        result.out.find("asked for " + project.string() + "\nasked for " + documentation + "\n"), std::string::npos)
        << result.out;
    EXPECT_TRUE(fs::exists(documentation));
}

}
}
