#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Picture.h"
#include "Program.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

/** Starts the editor on a display that ends a while after the project is open. Ends as the editor does. */
constexpr const char* OnDyingDisplay = R"sh(
mkfifo "$DESK/number"
Xvfb -displayfd 3 -screen 0 1600x1000x24 3<>"$DESK/number" 2>/dev/null &
server=$!
read -r number <"$DESK/number"
DISPLAY=:$number timeout 100 "$EDITOR" --project "$PROJECT" --scale 1 >"$DESK/out" &
guard=$!
tries=0
until [ -d "$PROJECT/.editor" ] || [ $tries -gt 300 ]; do sleep 0.2; tries=$((tries + 1)); done
sleep 2
kill $server
wait $guard
status=$?
cat "$DESK/out"
exit $status
)sh";

/** The desktop editor, started as a user would, on a copy of the sample project. */
class EditorProgram: public testing::Test {
protected:
    EditorProgram() {
        fs::create_directories(desk);
        fs::create_directories(root / "no modules");
        fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", project, fs::copy_options::recursive);
        fs::remove_all(project / ".editor");
    }

    ~EditorProgram() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    ProgramResult run(std::vector<std::string> arguments, const std::vector<std::string>& environment = {}) const {
        arguments.insert(arguments.begin(), QUORVANE_EDITOR);
        return runProgram(arguments, desk.string(), environment);
    }

    /** With a project, into the picture. */
    ProgramResult draw(
        std::vector<std::string> arguments = {}, const std::vector<std::string>& environment = {}) const {
        arguments.insert(arguments.end(), {"--project", project.string(), "--screenshot", picture.string()});
        return run(std::move(arguments), environment);
    }

    static std::string read(const fs::path& path) {
        std::ifstream file{path, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    static void write(const fs::path& path, const std::string& text) { std::ofstream{path, std::ios::binary} << text; }

    /** The files of the project, less what belongs to the editor alone. */
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> files;
        for(const fs::directory_entry& entry: fs::recursive_directory_iterator{project})
            if(entry.is_regular_file() && entry.path().string().find("/.editor/") == std::string::npos)
                files[entry.path().string()] = read(entry.path());
        return files;
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-editor-" + std::to_string(getpid()));
    fs::path desk = root / "desk";
    fs::path project = root / "lighthouse";
    fs::path picture = root / "picture.png";
};

TEST_F(EditorProgram, DrawsTheProjectIntoAPictureAndEndsWithZero) {
    const ProgramResult result = draw({"--size", "1200x800"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_NE(result.out.find("Opened read-only: " + project.string() + "\n"), std::string::npos) << result.out;
    const Picture read{picture.string()};
    EXPECT_EQ(read.width, 1200u);
    EXPECT_EQ(read.height, 800u);
    EXPECT_GT(read.colors(), 100u);
}

TEST_F(EditorProgram, APictureChangesNothingInTheProject) {
    ASSERT_EQ(draw({"--frames", "200"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(project / ".editor"));
}

TEST_F(EditorProgram, ThePictureShowsTheModulesView) {
    ASSERT_EQ(draw().exitCode, 0);
    const Picture with{picture.string()};
    ASSERT_EQ(draw({"--modules", (root / "no modules").string()}).exitCode, 0);
    const Picture without{picture.string()};
    EXPECT_GT(with.difference(without), 0.5);
    EXPECT_GT(with.colors(), without.colors());
}

TEST_F(EditorProgram, ThePictureShowsTheViewThatIsAskedFor) {
    ASSERT_EQ(draw({"--more-modules", QUORVANE_SAMPLE_MODULES, "--view", "Gallery"}).exitCode, 0);
    const Picture gallery{picture.string()};
    ASSERT_EQ(draw({"--more-modules", QUORVANE_SAMPLE_MODULES, "--view", "Localization"}).exitCode, 0);
    EXPECT_GT(gallery.difference(Picture{picture.string()}), 0.2);
}

TEST_F(EditorProgram, AViewThatIsNotThereIsSaidAndNoPictureTaken) {
    const ProgramResult result = draw({"--view", "Gallery"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.error,
        "runEditor(): there is no view Gallery, but Messages, History, Plug-ins, Localization Report, "
        "Localization\n");
    EXPECT_FALSE(fs::exists(picture));
}

TEST_F(EditorProgram, TheGalleryOfWidgetsIsDrawn) {
    fs::copy(QUORVANE_SOURCE_DIR "/samples/gallery/project/project.json", project / "project.json",
        fs::copy_options::overwrite_existing);
    const ProgramResult result = draw({"--modules", QUORVANE_SAMPLE_MODULES, "--size", "1280x3350", "--scale", "1"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    const Picture gallery{picture.string()};
    EXPECT_EQ(gallery.height, 3350u);
    // More than text and its background: pictures of colours, icons, all widgets.
    EXPECT_GT(gallery.colors(), 200u);
    // Of one theme and one size, so what differs from the picture in the documentation is fonts and their smoothing.
    EXPECT_LT(gallery.difference(Picture{QUORVANE_SOURCE_DIR "/docs/pictures/gallery.png"}), 0.05);
}

TEST_F(EditorProgram, TwoRunsGiveTheSamePicture) {
    ASSERT_EQ(draw().exitCode, 0);
    const Picture first{picture.string()};
    ASSERT_EQ(draw({"--frames", "30"}).exitCode, 0);
    EXPECT_EQ(first.difference(Picture{picture.string()}), 0.0);
}

TEST_F(EditorProgram, ScaleMakesEverythingLarger) {
    ASSERT_EQ(draw({"--scale", "1"}).exitCode, 0);
    const Picture plain{picture.string()};
    ASSERT_EQ(draw({"--scale", "2"}).exitCode, 0);
    const Picture large{picture.string()};
    EXPECT_EQ(large.width, plain.width);
    EXPECT_GT(large.difference(plain), 0.05);
}

TEST_F(EditorProgram, OpeningAProjectWritesNothingButItsEditorFolder) {
    const std::map<std::string, std::string> before = files();
    ASSERT_EQ(draw().exitCode, 0);
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(fs::is_empty(desk));
}

TEST_F(EditorProgram, WithoutAProjectTheStartPageIsDrawn) {
    const ProgramResult result = run({"--screenshot", picture.string()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_GT(Picture{picture.string()}.colors(), 20u);
}

TEST_F(EditorProgram, AProjectThatIsNotThereIsSaidAndEndsWithOne) {
    fs::remove_all(project);
    const ProgramResult result = draw();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.error.find("ProjectStorage::open(): " + project.string()), std::string::npos) << result.error;
    EXPECT_FALSE(fs::exists(picture));
}

TEST_F(EditorProgram, ABrokenProjectIsSaidWithItsPlaceAndEndsWithOne) {
    const std::string text = read(project / "project.json");
    write(project / "project.json", text.substr(0, text.size() / 2));
    const std::map<std::string, std::string> before = files();
    const ProgramResult result = draw();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.error.find("project.json:"), std::string::npos) << result.error;
    EXPECT_FALSE(fs::exists(picture));
    EXPECT_EQ(files(), before);
}

TEST_F(EditorProgram, ABrokenLanguageFileIsNamed) {
    write(project / "localization" / "ru.json", "{\"menu.start\": ");
    const ProgramResult result = draw();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.error.find("localization/ru.json:1:"), std::string::npos) << result.error;
}

TEST_F(EditorProgram, AProjectIsOpenedBeforeItsViewsAreMade) {
    const ProgramResult result = draw();
    const std::string line = "Initializing View: Localization\n";
    const std::size_t at = result.out.find(line);
    ASSERT_NE(at, std::string::npos) << result.out;
    EXPECT_EQ(result.out.find(line, at + 1), std::string::npos) << result.out;
}

TEST_F(EditorProgram, WrongTypesLostSourcesAndMissingFilesAreToldAndTheProjectIsDrawn) {
    std::string text = read(project / "project.json");
    for(const auto& [from, to]: {std::pair{R"("sourceText": "/objects/title_screen/startText")", R"("sourceText": 7)"},
            std::pair{"/objects/title_screen/continueText", "/objects/nowhere/text"}}) {
        const std::size_t found = text.find(from);
        ASSERT_NE(found, std::string::npos) << from;
        text.replace(found, std::string{from}.size(), to);
    }
    write(project / "project.json", text);
    fs::remove(project / "localization" / "de.json");
    const std::map<std::string, std::string> before = files();
    const ProgramResult result = draw();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error,
        "project.json: /localization/terms/menu.start/sourceText: is a number, but must be a string\n"
        "project.json: /localization/terms/menu.continue/sourceText: leads to /objects/nowhere/text, which is not "
        "there\n"
        "localization/de.json: missing, no texts of de\n");
    EXPECT_EQ(files(), before);
    EXPECT_GT(Picture{picture.string()}.colors(), 100u);
}

TEST_F(EditorProgram, AProjectThatTheViewCannotWorkWithIsDrawnWithTheReason) {
    write(project / "project.json", R"({"languages": {"tlh-unknown": {"isDefault": true}}})");
    for(const char* code: {"ar", "de", "fr", "ja", "pt-BR", "ru"})
        fs::remove(project / "localization" / (std::string{code} + ".json"));
    const ProgramResult result = draw();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "project.json: /languages marks no language that the editor knows as default.\n");
    EXPECT_GT(Picture{picture.string()}.colors(), 50u);
}

TEST_F(EditorProgram, ModulesThatAreNoneAreRefusedAndTheEditorGoesOn) {
    const ProgramResult result = draw({"--modules", QUORVANE_FIXTURES "/bad"});
    EXPECT_EQ(result.exitCode, 0);
    for(const char* message: {"wrong version of plugin WrongVersion, expected 7 but got 6",
            "wrong interface string of plugin WrongInterface, expected dev.quorvane.QuorvaneEditor.AbstractModule/1.1 "
            "but got "
            "dev.quorvane.QuorvaneEditor.AbstractModule/1.0",
            "cannot get instancer of plugin NoInstancer", "cannot load plugin Garbage from",
            "Alone.conf was not found"})
        EXPECT_NE(result.error.find(message), std::string::npos) << message << "\n" << result.error;
    EXPECT_FALSE(Picture{picture.string()}.isEmpty());
}

TEST_F(EditorProgram, AFolderOfModulesThatIsNotThereIsSaidAndTheEditorGoesOn) {
    const ProgramResult result = draw({"--modules", "/nowhere/modules"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "ModuleLoader::ModuleLoader(): no folder of modules at /nowhere/modules\n");
}

TEST_F(EditorProgram, APictureThatCannotBeWrittenEndsWithOne) {
    const ProgramResult result = run({project.string(), "--screenshot", "/nowhere/picture.png"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.error, "writePng(): cannot write /nowhere/picture.png: No such file or directory\n");
}

TEST_F(EditorProgram, AWrongCommandLineEndsWithTwo) {
    const ProgramResult result = run({"--size", "big"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.error.find("is not a size in pixels such as 1600x1000"), std::string::npos) << result.error;
}

TEST_F(EditorProgram, WithoutADisplayASentenceSaysSoAndTheEndIsThree) {
    const ProgramResult result = draw({}, {"DISPLAY", "WAYLAND_DISPLAY"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.error.find("DesktopWindow::open(): the editor needs a display and found none: "), 0u)
        << result.error;
}

TEST_F(EditorProgram, ADisplayThatGoesIsSaidUnsavedChangesAreKeptAndTheEndIsThree) {
    const std::map<std::string, std::string> before = files();
    const std::string changing = (root / "changing").string();
    write(changing, "#!/bin/sh\nexec " QUORVANE_EDITOR " --modules " QUORVANE_FIXTURES "/dying \"$@\"\n");
    fs::permissions(changing, fs::perms::owner_all);
    const ProgramResult result = runProgram({"/bin/sh", "-c", OnDyingDisplay}, desk.string(),
        {"EDITOR=" + changing, "QUORVANE_DYING=changing", "PROJECT=" + project.string(),
            "XDG_DATA_HOME=" + (root / "data").string(), "DESK=" + desk.string()});
    EXPECT_EQ(result.exitCode, 3) << result.error;
    EXPECT_EQ(result.error, "DesktopWindow::endWithoutDisplay(): the display is gone, so the editor ends\n");
    EXPECT_NE(result.out.find("Opened "), std::string::npos) << result.out;
    EXPECT_NE(read(project / ".editor/autosave").find("\"counted\":1"), std::string::npos);
    EXPECT_EQ(files(), before);
}

TEST_F(EditorProgram, WithoutFontsTheLibrarysOwnIsTakenWithAWarning) {
    write(root / "fonts.conf", "<?xml version=\"1.0\"?>\n<fontconfig></fontconfig>\n");
    const ProgramResult result = draw({}, {"FONTCONFIG_FILE=" + (root / "fonts.conf").string()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(
        result.error, "Fonts::load(): no font found on this machine, taking the GUI's own, which has few letters\n");
    EXPECT_GT(Picture{picture.string()}.colors(), 50u);
}

TEST_F(EditorProgram, SettingsThatAreGarbageAreOneWarningAndTheEditorGoesOn) {
    fs::create_directories(root / "data/QuorvaneEngine");
    write(root / "data/QuorvaneEngine/settings.json", "{\"version\": 1,");
    const ProgramResult result = runProgram({"/bin/sh", "-c", OnDyingDisplay}, desk.string(),
        {"EDITOR=" QUORVANE_EDITOR, "PROJECT=" + project.string(), "XDG_DATA_HOME=" + (root / "data").string(),
            "DESK=" + desk.string()});
    const std::string file = (root / "data/QuorvaneEngine/settings.json").string();
    EXPECT_EQ(result.error.find("Settings::read(): " + file + ":1:"), 0u) << result.error;
    EXPECT_EQ(result.error.find("Settings::read()", 1), std::string::npos) << result.error;
    EXPECT_NE(result.out.find("Opened "), std::string::npos) << result.out;
}

TEST_F(EditorProgram, WithoutOpenGL33ASentenceSaysSoAndTheEndIsThree) {
    const ProgramResult result = draw({}, {"MESA_GL_VERSION_OVERRIDE=2.1"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(
        result.error.find("DesktopWindow::open(): the editor needs OpenGL 3.3, which this display does not offer: "),
        0u)
        << result.error;
}

}
}
