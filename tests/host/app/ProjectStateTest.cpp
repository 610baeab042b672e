#include "app/ProjectState.h"

#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"

namespace QuorvaneEngine {
namespace {

TEST(ProjectState, ChangesWithEveryFileOfTheProjectAndWithNoOther) {
    MemoryFileSystem files;
    files.put("/p/project.json", "{}");
    files.put("/p/localization/de.json", "{}");
    const std::vector<std::function<void()>> changes{
        [&] { files.put("/p/project.json", "[]"); },
        [&] { files.put("/p/localization/de.json", "[]"); },
        [&] { files.put("/p/localization/fr.json", "{}"); },
        [&] { files.removeFile("/p/localization/de.json"); },
        [&] { files.removeFile("/p/project.json"); },
    };
    for(const auto& change: changes) {
        const std::uint64_t before = projectState(files, "/p");
        EXPECT_EQ(projectState(files, "/p"), before);
        change();
        EXPECT_NE(projectState(files, "/p"), before) << &change - changes.data();
    }
    const std::uint64_t before = projectState(files, "/p");
    files.put("/p/notes.txt", "notes");
    EXPECT_EQ(projectState(files, "/p"), before);
    EXPECT_NE(projectState(files, "/nowhere"), 0u);
}

/** One whose files can be changed by who sets the size and the time back. */
class TouchedFileSystem: public MemoryFileSystem {
public:
    int stampOf(Containers::StringView path, FileStamp& stamp) override {
        const int error = MemoryFileSystem::stampOf(path, stamp);
        if(!error) stamp.touched = touched;
        return error;
    }

    std::int64_t touched = 1;
};

TEST(ProjectState, ChangesWithAFileWhoseAuthorSetsTheTimeBack) {
    TouchedFileSystem files;
    files.put("/p/project.json", "{}");
    const std::uint64_t before = projectState(files, "/p");
    EXPECT_EQ(projectState(files, "/p"), before);
    files.touched = 2;
    EXPECT_NE(projectState(files, "/p"), before);
}

}
}
