#include "app/NewView.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <unistd.h>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

namespace fs = std::filesystem;

class NewViewTest: public testing::Test {
protected:
    NewViewTest() { fs::create_directories(root); }

    ~NewViewTest() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    bool write(const char* name, const fs::path& folder, const char* templates = QUORVANE_SHARE_DIR "/view",
        const char* prefix = "/usr/local/an editor", const char* program = "") {
        std::ostringstream said;
        std::ostringstream wrong;
        const Corrade::Utility::Debug debug{&said};
        const Corrade::Utility::Error error{&wrong};
        const bool written = writeNewView({name, folder.c_str(), templates, prefix, program});
        out = said.str();
        problem = wrong.str();
        return written;
    }

    static std::map<std::string, std::string> files(const fs::path& folder) {
        std::map<std::string, std::string> files;
        for(const fs::directory_entry& entry: fs::directory_iterator{folder}) {
            std::ifstream file{entry.path()};
            files[entry.path().filename().string()] = {std::istreambuf_iterator<char>{file}, {}};
        }
        return files;
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-new-view-" + std::to_string(getpid()));
    std::string out;
    std::string problem;
};

TEST_F(NewViewTest, AProjectIsWrittenIntoAFolderThatIsMadeForIt) {
    const fs::path folder = root / "a" / "notes";
    ASSERT_TRUE(write("Notes", folder)) << problem;
    const std::map<std::string, std::string> written = files(folder);
    ASSERT_EQ(written.size(), 4u);
    EXPECT_EQ(written.at(".gitignore"), "/build/\n");
    EXPECT_NE(
        written.at("CMakeLists.txt").find("quorvane_add_view(Notes\n    SOURCES NotesView.cpp\n"), std::string::npos);
    EXPECT_NE(
        written.at("NotesView.h").find("class NotesView: public QuorvaneEngine::EditorView {"), std::string::npos);
    EXPECT_NE(written.at("NotesView.cpp")
                  .find("CORRADE_PLUGIN_REGISTER(Notes, NotesPlugin::NotesView, QUORVANE_MODULE_INTERFACE)"),
        std::string::npos);
    for(const auto& [name, text]: written) {
        EXPECT_FALSE(text.empty()) << name;
        EXPECT_EQ(text.find('@'), std::string::npos) << name << " has a place that is not filled in";
    }
    EXPECT_EQ(problem, "");
}

TEST_F(NewViewTest, HowItIsBuiltAndSeenIsSaidInCommandsThatAShellTakes) {
    const fs::path folder = root / "it's";
    ASSERT_TRUE(write("Notes", folder));
    const std::string quoted = "'" + root.string() + "/it'\\''s";
    EXPECT_EQ(out,
        "Wrote the view Notes to " + folder.string() + "\nBuild it:  cmake -S " + quoted + "' -B " + quoted +
            "/build' -DCMAKE_PREFIX_PATH='/usr/local/an editor' && cmake --build " + quoted +
            "/build'\nSee it:    quorvane-editor --more-modules " + quoted + "/build/modules' PROJECT\n");
}

TEST_F(NewViewTest, TheEditorThatWroteItIsTheOneToSeeItIn) {
    ASSERT_TRUE(write("Notes", root / "notes", QUORVANE_SHARE_DIR "/view", "/usr", "an editor/bin/quorvane-editor"));
    EXPECT_NE(
        out.find("\nSee it:    'an editor/bin/quorvane-editor' --more-modules " + root.string()), std::string::npos)
        << out;
}

TEST_F(NewViewTest, AnEditorThatIsNotInstalledCannotSayWhereItIs) {
    ASSERT_TRUE(write("Notes", root / "notes", QUORVANE_SHARE_DIR "/view", ""));
    EXPECT_NE(out.find(" -DCMAKE_PREFIX_PATH=PREFIX && "), std::string::npos) << out;
    EXPECT_NE(out.find("\nPREFIX is the folder that the editor gets installed to.\n"), std::string::npos) << out;
}

TEST_F(NewViewTest, AnEmptyFolderIsTaken) {
    fs::create_directories(root / "empty");
    EXPECT_TRUE(write("Notes", root / "empty")) << problem;
}

TEST_F(NewViewTest, AFolderWithAnythingInItIsRefusedAndStaysAsItIs) {
    std::ofstream{root / "mine.txt"} << "mine";
    EXPECT_FALSE(write("Notes", root));
    EXPECT_EQ(problem, "writeNewView(): " + root.string() + ": is not empty\n");
    EXPECT_EQ(files(root), (std::map<std::string, std::string>{{"mine.txt", "mine"}}));
    EXPECT_EQ(out, "");
}

TEST_F(NewViewTest, AFileInPlaceOfTheFolderIsRefused) {
    std::ofstream{root / "file"} << "mine";
    EXPECT_FALSE(write("Notes", root / "file"));
    EXPECT_EQ(problem, "writeNewView(): " + (root / "file").string() + ": is no folder\n");
}

TEST_F(NewViewTest, AFolderThatCannotBeMadeIsSaid) {
    std::ofstream{root / "file"} << "mine";
    EXPECT_FALSE(write("Notes", root / "file" / "new"));
    EXPECT_EQ(problem, "writeNewView(): " + (root / "file" / "new").string() + ": Not a directory\n");
}

TEST_F(NewViewTest, WithoutTheEditorsTemplatesNothingIsWritten) {
    EXPECT_FALSE(write("Notes", root / "new", "/nowhere"));
    EXPECT_EQ(problem,
        "writeNewView(): /nowhere/CMakeLists.txt.in: cannot be read; the editor is not installed as a whole\n");
    EXPECT_FALSE(fs::exists(root / "new"));
}

struct WrongName {
    const char* name;
    const char* problem;
};

TEST_F(NewViewTest, NamesThatAreNoneForAClassAreRefused) {
    const WrongName cases[]{
        {"", "is no C++ identifier"},
        {"2D", "is no C++ identifier"},
        {"My View", "is no C++ identifier"},
        {"My-View", "is no C++ identifier"},
        {"../Notes", "is no C++ identifier"},
        {"Notes\n", "is no C++ identifier"},
        {"Größe", "is no C++ identifier"},
        {"$Notes", "is no C++ identifier"},
        {"class", "is a word of C++"},
        {"char8_t", "is a word of C++"},
        {"xor_eq", "is a word of C++"},
        {"_notes", "is reserved by C++"},
        {"my__notes", "is reserved by C++"},
        {"all", "is reserved by CMake"},
        {"package_source", "is reserved by CMake"},
        {"ZERO_CHECK", "is reserved by CMake"},
    };
    for(const WrongName& wrong: cases) {
        EXPECT_FALSE(write(wrong.name, root / "new")) << wrong.name;
        EXPECT_EQ(problem, "writeNewView(): the name \"" + std::string{wrong.name} + "\" " + wrong.problem + "\n");
        EXPECT_FALSE(fs::exists(root / "new")) << wrong.name;
    }
}

TEST_F(NewViewTest, ANameThatIsTooLongForAFileIsRefused) {
    const std::string longest(200, 'n');
    EXPECT_TRUE(write(longest.c_str(), root / "longest")) << problem;
    EXPECT_FALSE(write((longest + "n").c_str(), root / "longer"));
    EXPECT_EQ(problem, "writeNewView(): the name \"" + longest + "n\" is longer than 200 letters\n");
    EXPECT_FALSE(fs::exists(root / "longer"));
}

/* The path as a whole has a limit, too, to which the shorter names of files still come. */
TEST_F(NewViewTest, AViewThatCannotBeWrittenAsAWholeLeavesNothingBehind) {
    fs::path folder = root;
    while(folder.string().size() < 3800) folder /= std::string(100, 'd');
    folder /= std::string(4000 - folder.string().size(), 'e');
    fs::create_directories(folder);
    EXPECT_FALSE(write(std::string(120, 'n').c_str(), folder));
    EXPECT_NE(problem.find("View.h: cannot be written\n"), std::string::npos) << problem;
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(NewViewTest, NamesThatLookOddAreTaken) {
    for(const char* name: {"N", "notes_2", "classes", "Editor"}) EXPECT_TRUE(write(name, root / name)) << problem;
}

}
}
