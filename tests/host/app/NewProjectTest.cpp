#include "app/NewProject.h"

#include <cerrno>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "../document/MemoryFileSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "document/EditorSession.h"
#include "localization/LocalizationConditions.h"
#include "localization/ProjectReview.h"

namespace QuorvaneEngine {
namespace {

using NewProject::Outcome;

class NewProjectTest: public testing::Test {
protected:
    NewProjectTest() { files.putFolder("/games"); }

    std::string refused(const char* const folder, const Outcome expected = Outcome::Refused) {
        const auto before = files.files();
        Containers::String problem;
        EXPECT_EQ(NewProject::write(files, folder, problem), expected);
        EXPECT_EQ(files.files(), before);
        return {problem.data(), problem.size()};
    }

    MemoryFileSystem files;
    Containers::String problem;
};

TEST_F(NewProjectTest, ItOpensCleanlyAndTheViewTakesIt) {
    ASSERT_EQ(NewProject::write(files, "/games/one", problem), Outcome::Written);
    EXPECT_EQ(problem, "");
    EditorSession session{nullptr, &files};
    ASSERT_TRUE(session.open("/games/one"));
    EXPECT_TRUE(checkLocalizationConditions(session.project()).isEmpty());
    EXPECT_TRUE(reviewProject(session.project()).isEmpty());
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(NewProjectTest, TheFirstSaveLaysNothingOutAnew) {
    ASSERT_EQ(NewProject::write(files, "/games/one", problem), Outcome::Written);
    const std::string written = files.files()["/games/one/project.json"];
    EXPECT_EQ(written, "{\n  \"languages\": {\n    \"en\": {\n      \"isDefault\": true\n    }\n  }\n}\n");
    EditorSession session{nullptr, &files};
    ASSERT_TRUE(session.open("/games/one"));
    session.changes().pushChange("/a", rapidjson::Value{1}, false);
    ASSERT_TRUE(session.save());
    session.undo();
    ASSERT_TRUE(session.save());
    EXPECT_EQ(files.files()["/games/one/project.json"], written);
}

TEST_F(NewProjectTest, AnEmptyFolderIsTakenAlsoUnderVersionControl) {
    files.put("/games/one/.git/HEAD", "ref");
    files.put("/games/one/.gitignore", "build\n");
    EXPECT_EQ(NewProject::write(files, "/games/one", problem), Outcome::Written) << problem.data();
}

TEST_F(NewProjectTest, AFolderWithAProjectIsLeftAlone) {
    files.put("/games/one/a.txt", "a");
    files.put("/games/one/project.json", "{\"mine\": true}");
    EXPECT_EQ(refused("/games/one", Outcome::HasProject), "/games/one: there is a project in this folder already");
}

TEST_F(NewProjectTest, WhereNothingCanBeBegunTheReasonSaysWhy) {
    files.put("/games/one/notes.txt", "notes");
    EXPECT_EQ(refused("/games/one"), "/games/one: the folder is not empty, \"notes.txt\" is in it");
    EXPECT_EQ(refused("/games/one/notes.txt"), "/games/one/notes.txt: cannot be read: Not a directory");
    EXPECT_EQ(refused("/nowhere/two"), "/nowhere/two: cannot be made: No such file or directory");
    EXPECT_EQ(refused("two"), "two: has to begin with \"/\" or \"~\"");
    EXPECT_EQ(refused(""), "Type the path of a folder");
}

TEST_F(NewProjectTest, ADiskThatFailsLeavesNoProject) {
    for(std::size_t step = 0; step != 200; ++step) {
        MemoryFileSystem disk;
        disk.putFolder("/games/one");
        disk.failAt(step, ENOSPC);
        const Outcome outcome = NewProject::write(disk, "/games/one", problem);
        if(outcome == Outcome::Written && disk.steps() <= step) return;
        EXPECT_EQ(outcome == Outcome::Written, disk.exists("/games/one/project.json")) << "step " << step;
        EXPECT_EQ(outcome == Outcome::Written, problem.isEmpty()) << "step " << step;
    }
    FAIL() << "it takes more steps than anybody would think";
}

}
}
