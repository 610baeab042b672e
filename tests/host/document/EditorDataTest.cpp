#include "QuorvaneEditor/EditorData.h"

#include <gtest/gtest.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "TestDocument.h"

namespace QuorvaneEngine {

TEST(EditorData, CurrentRevisionFollowsChangesAndLoadsAtOnce) {
    ProjectFile project;
    EditorData data{project};
    EXPECT_EQ(data.currentRevision(), 0);
    project.noteChange("/a");
    EXPECT_EQ(data.currentRevision(), 1);
    project.replace(parsed("{}"));
    EXPECT_EQ(data.currentRevision(), 2);
}

TEST(EditorData, StoredRevisionIsThatOfTheBeginningOfTheFrame) {
    ProjectFile project;
    EditorData data{project};
    project.noteChange("/a");
    EXPECT_EQ(data.storedRevision(), 0);
    data.publishRevision();
    EXPECT_EQ(data.storedRevision(), 1);
    project.noteChange("/a");
    EXPECT_EQ(data.storedRevision(), 1);
    EXPECT_EQ(data.currentRevision(), 2);
}

TEST(EditorData, IdleFrameFindsBothRevisionsEqual) {
    ProjectFile project;
    EditorData data{project};
    project.noteChange("/a");
    data.publishRevision();
    data.publishRevision();
    EXPECT_EQ(data.storedRevision(), data.currentRevision());
}

}
