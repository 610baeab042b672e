#include "app/ProjectAccess.h"

#include <filesystem>
#include <string>

#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine::Test {
namespace {

class ProjectAccessTest: public testing::Test {
protected:
    ProjectAccessTest() { folder.write("project.json", "{}"); }

    void openToWrite() {
        ASSERT_TRUE(access.take(folder.path.c_str()) && session.open(folder.path.c_str()));
        access.begin(ProjectAccess::Kind::Write);
    }

    static bool lock(EditorSession& other, const TestFolder& project) {
        FileError refusal;
        return other.tryLock(project.path.c_str(), refusal);
    }

    std::string last() const { return log.last() ? log.last()->text.data() : ""; }

    const TestFolder folder;
    MessageLog log;
    EditorSession session;
    ProjectAccess access{session};
};

TEST_F(ProjectAccessTest, WithoutAProjectNothingIsAskedFor) {
    EXPECT_FALSE(access.update(log));
    EXPECT_EQ(access.obstacle(), "");
    EXPECT_EQ(log.count(), 0u);
}

TEST_F(ProjectAccessTest, WhoWritesGoesOnAsLongAsNothingHappens) {
    openToWrite();
    EXPECT_FALSE(access.update(log));
    EXPECT_EQ(access.kind(), ProjectAccess::Kind::Write);
    EXPECT_EQ(access.obstacle(), "");
    EXPECT_EQ(log.count(), 0u);
}

TEST_F(ProjectAccessTest, WhoReadsIsToldWhoWritesAndBecomesHimAfterwards) {
    {
        EditorSession other;
        ASSERT_TRUE(lock(other, folder));
        EXPECT_FALSE(access.take(folder.path.c_str()));
        ASSERT_TRUE(session.open(folder.path.c_str()));
        access.begin(ProjectAccess::Kind::Read);
        EXPECT_FALSE(access.update(log));
        EXPECT_TRUE(access.obstacle().hasPrefix("another program has the project open for writing: "));
        EXPECT_EQ(log.count(), 0u);
    }
    EXPECT_TRUE(access.update(log));
    EXPECT_EQ(access.kind(), ProjectAccess::Kind::Write);
    EXPECT_TRUE(session.isLocked());
    EXPECT_EQ(access.obstacle(), "");
    EXPECT_EQ(last(), "No other program has " + folder.path + " any more: it can be saved");
    EXPECT_FALSE(access.update(log));
}

TEST_F(ProjectAccessTest, AReaderWhoAskedNobodyIsOneAllTheSame) {
    ASSERT_TRUE(session.open(folder.path.c_str()));
    access.begin(ProjectAccess::Kind::Read);
    EXPECT_EQ(access.obstacle(), "it was opened read-only");
}

TEST_F(ProjectAccessTest, WhoHasAnotherProjectIsNotNamed) {
    const TestFolder second;
    second.write("project.json", "{}");
    EditorSession other;
    ASSERT_TRUE(lock(other, second));
    ASSERT_TRUE(session.open(folder.path.c_str()));
    EXPECT_FALSE(access.take(second.path.c_str()));
    access.begin(ProjectAccess::Kind::Read);
    EXPECT_EQ(access.obstacle(), "it was opened read-only");
}

TEST_F(ProjectAccessTest, ALockThatIsLostIsTakenAgain) {
    openToWrite();
    std::filesystem::remove_all(folder / ".editor");
    EXPECT_FALSE(access.update(log));
    EXPECT_TRUE(session.isLocked());
    EXPECT_TRUE(std::filesystem::exists(folder / ".editor/lock"));
    EXPECT_EQ(last(), "Locked " + folder.path + " again, as its folder .editor had been removed");
}

TEST_F(ProjectAccessTest, ALockThatAnotherProgramHasTakenMakesAReader) {
    openToWrite();
    std::filesystem::remove_all(folder / ".editor");
    EditorSession other;
    ASSERT_TRUE(lock(other, folder));
    EXPECT_TRUE(access.update(log));
    EXPECT_EQ(access.kind(), ProjectAccess::Kind::Read);
    EXPECT_TRUE(access.obstacle().hasPrefix("another program has the project open for writing: "));
    EXPECT_TRUE(last().starts_with("ProjectAccess::update(): " + folder.path + ": another program has the project"))
        << last();
    EXPECT_TRUE(last().ends_with("; it is read-only here until that program has closed it")) << last();
    EXPECT_FALSE(access.update(log));
    EXPECT_EQ(log.count(), 1u);
}

TEST_F(ProjectAccessTest, WhoTakesAPictureAsksForNothing) {
    ASSERT_TRUE(session.open(folder.path.c_str()));
    access.begin(ProjectAccess::Kind::Picture);
    EXPECT_FALSE(access.update(log));
    EXPECT_FALSE(session.isLocked());
    EXPECT_EQ(access.obstacle(), "");
    EXPECT_FALSE(std::filesystem::exists(folder / ".editor"));
}

}
}
