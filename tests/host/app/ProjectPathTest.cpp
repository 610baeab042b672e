#include "app/ProjectPath.h"

#include <string>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"

namespace QuorvaneEngine {
namespace {

class ProjectPathTest: public testing::Test {
protected:
    ProjectPathTest() {
        files.put("/games/one/project.json", "{}");
        files.put("/games/readme.txt", "Games");
        files.putFolder("/games/empty");
    }

    std::string find(const char* const path) {
        Containers::String problem = "not set";
        const Containers::String folder = findProject(files, path, problem);
        EXPECT_EQ(folder.isEmpty(), !problem.isEmpty());
        const Containers::String& answer = folder.isEmpty() ? problem : folder;
        return {answer.data(), answer.size()};
    }

    std::string drop(const Containers::ArrayView<const Containers::String> paths) {
        Containers::String problem;
        const Containers::String folder = findDroppedProject(files, paths, problem);
        EXPECT_EQ(folder.isEmpty(), !problem.isEmpty());
        const Containers::String& answer = folder.isEmpty() ? problem : folder;
        return {answer.data(), answer.size()};
    }

    MemoryFileSystem files;
};

TEST_F(ProjectPathTest, OneProjectCanBeDropped) {
    const Containers::String paths[]{"/games/one/project.json", "/games/one", "/games/empty"};
    const auto all = Containers::arrayView(paths);
    EXPECT_EQ(drop(all.prefix(1)), "/games/one");
    EXPECT_EQ(drop(all.slice(1, 2)), "/games/one");
    EXPECT_EQ(drop(all.slice(2, 3)), "/games/empty: there is no project.json in this folder, so it is no project");
    EXPECT_EQ(drop(all), "3 files were dropped here. A project is one folder, or the file project.json in it.");
}

TEST_F(ProjectPathTest, AProjectIsFoundByItsFolderAndByItsFile) {
    EXPECT_EQ(find("/games/one"), "/games/one");
    EXPECT_EQ(find("/games/one/project.json"), "/games/one");
}

TEST_F(ProjectPathTest, WhatIsNoProjectIsToldInWords) {
    EXPECT_EQ(find(""), "Type the path of a folder");
    EXPECT_EQ(find("games/one"), "games/one: has to begin with \"/\" or \"~\"");
    EXPECT_EQ(find("/games/empty"), "/games/empty: there is no project.json in this folder, so it is no project");
    EXPECT_EQ(find("/games/two"), "/games/two: cannot be read: No such file or directory");
    EXPECT_EQ(find("/games/readme.txt"), "/games/readme.txt: cannot be read: Not a directory");
}

}
}
