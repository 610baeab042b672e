#include "EditorSession.h"

#include <cerrno>
#include <string>

#include "EditorSessionTest.h"

namespace QuorvaneEngine {
namespace {

TEST_F(EditorSessionTest, BeginsWithAnEmptyDocumentInNoFolder) {
    EXPECT_EQ(content(), "{}\n");
    EXPECT_EQ(session.folder(), "");
    EXPECT_EQ(session.data().projectFolder, "");
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): the project has no folder\n");
    push("/a", 1);
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, TheEditorLeadsToAllThatTheSessionOwns) {
    EditorSession other{nullptr, &disk};
    EXPECT_EQ(&session.editor().project(), &session.project());
    EXPECT_EQ(&session.editor().changeManager(), &session.changes());
    EXPECT_EQ(&session.editor().state(), &session.state());
    EXPECT_EQ(session.editor().jobSystem(), nullptr);
    EXPECT_EQ(session.editor().projectPath(), "");
    ASSERT_TRUE(open());
    EXPECT_EQ(session.editor().projectPath(), "/p");
    EXPECT_EQ(session.folder(), "/p");
    EXPECT_EQ(session.data().projectFolder, "/p");
}

TEST_F(EditorSessionTest, OpeningMakesAFreshProjectOfAllFiles) {
    ASSERT_TRUE(open());
    EXPECT_NE(content().find("Hallo"), std::string::npos);
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_FALSE(session.changes().canUndo());
}

TEST_F(EditorSessionTest, TheEditorsFolderIsMadeOnlyWhenAskedFor) {
    ASSERT_TRUE(open());
    EXPECT_FALSE(disk.exists("/p/.editor"));
    session.makeEditorFolder();
    EXPECT_TRUE(disk.exists("/p/.editor/.gitignore"));
}

TEST_F(EditorSessionTest, OpeningAnotherProjectForgetsTheLogAndTheGroup) {
    ASSERT_TRUE(open());
    push("/x", 1);
    session.changes().openGroup();
    push("/x", 2);
    ASSERT_TRUE(open("/q"));
    EXPECT_FALSE(session.changes().isGroupOpen());
    EXPECT_FALSE(session.changes().canUndo());
    EXPECT_FALSE(session.changes().canRedo());
    EXPECT_FALSE(session.changes().hasUnsavedChanges());
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(content(), "{\"meshes\": {\"m\": {}}}\n");
}

TEST_F(EditorSessionTest, OpeningLeavesTheViewsAsTheyAreAndAsksForTheLayoutAnew) {
    const UnsignedInt view = session.state().registerView("A View");
    session.state().isViewOpen(view) = false;
    session.editor().layoutLoadScheduled = true;
    ASSERT_TRUE(open());
    EXPECT_EQ(session.state().registerView("A View"), view);
    EXPECT_FALSE(session.state().isViewOpen(view));
    EXPECT_FALSE(session.editor().layoutLoadScheduled);
}

TEST_F(EditorSessionTest, AProjectThatCannotBeOpenedLeavesEverythingAsItWas) {
    ASSERT_TRUE(open());
    push("/x", 1);
    session.changes().openGroup();
    push("/y", 1);
    session.editor().layoutLoadScheduled = true;
    const std::string before = content();
    const Int revision = session.project().revision();
    disk.put("/q/project.json", "{\"a\": ");
    EXPECT_FALSE(open("/q"));
    EXPECT_EQ(warning, "ProjectStorage::open(): /q/project.json:1:7: the text ends too early\n");
    EXPECT_FALSE(open("/r"));
    EXPECT_EQ(warning, "ProjectStorage::open(): /r/project.json: cannot be read: No such file or directory\n");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(session.project().revision(), revision);
    EXPECT_EQ(session.folder(), "/p");
    EXPECT_EQ(session.data().projectFolder, "/p");
    EXPECT_TRUE(session.changes().isGroupOpen());
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_TRUE(session.editor().layoutLoadScheduled);
    session.changes().commit();
    EXPECT_TRUE(save());
}

TEST_F(EditorSessionTest, AFolderThatCannotBeWrittenToCanBeOpened) {
    disk.failAt(5, EROFS, true);
    ASSERT_TRUE(open("/q"));
    session.makeEditorFolder();
    EXPECT_EQ(warning, "");
    push("/x", 1);
    EXPECT_FALSE(save());
    EXPECT_EQ(warning, "ProjectStorage::save(): /q/.editor/save/journal: cannot be read: Read-only file system\n");
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, UndoAndRedoDoNothingInAnOpenGroup) {
    ASSERT_TRUE(open());
    push("/x", 1);
    session.undo();
    session.changes().openGroup();
    session.redo();
    session.undo();
    EXPECT_FALSE(session.changes().canUndo());
    session.changes().commit();
    session.redo();
    EXPECT_TRUE(session.changes().canUndo());
}

TEST_F(EditorSessionTest, AGroupIsOneStep) {
    ASSERT_TRUE(open());
    push("/z", 0);
    const std::string before = content();
    {
        const ChangeGroup group{session.changes()};
        push("/x", 1);
        push("/y", 1);
    }
    session.undo();
    EXPECT_EQ(content(), before);
}

TEST_F(EditorSessionTest, AChangeIsPublishedByTheNextFrame) {
    ASSERT_TRUE(open());
    session.beginFrame();
    EXPECT_EQ(session.data().storedRevision(), session.data().currentRevision());
    push("/x", 1);
    EXPECT_NE(session.data().storedRevision(), session.data().currentRevision());
    session.beginFrame();
    EXPECT_EQ(session.data().storedRevision(), session.data().currentRevision());
}

TEST_F(EditorSessionTest, ResourcesAreNumberedInDocumentOrder) {
    ASSERT_TRUE(open());
    EditorData& data = session.data();
    EXPECT_EQ(data.imageIndices.size(), 2);
    EXPECT_EQ(data.imageIndices["b"], 1);
    EXPECT_EQ(data.imageIndices["a"], 2);
    EXPECT_EQ(data.meshIndices.size(), 0);
    ASSERT_TRUE(open("/q"));
    EXPECT_EQ(data.imageIndices.size(), 0);
    EXPECT_EQ(data.meshIndices["m"], 1);
}

TEST_F(EditorSessionTest, ResourcesAreNumberedAnewWhenTheyAreAddedOrRemoved) {
    ASSERT_TRUE(open("/q"));
    EditorData& data = session.data();
    push("/meshes/n/x", 1);
    EXPECT_EQ(data.meshIndices["n"], 2);
    push("/materials/w", 1);
    EXPECT_EQ(data.materialIndices["w"], 1);
    push("/meshes/n/x", 2);
    EXPECT_EQ(data.meshIndices.size(), 2);
    session.changes().pushRemoval("/meshes/m");
    EXPECT_EQ(data.meshIndices.size(), 1);
    EXPECT_EQ(data.meshIndices["n"], 1);
    session.undo();
    EXPECT_EQ(data.meshIndices["n"], 1);
    EXPECT_EQ(data.meshIndices["m"], 2);
    const rapidjson::Document other = documentOf(R"({"o": {}})");
    session.changes().pushChange("/meshes", other, false);
    EXPECT_EQ(data.meshIndices.size(), 1);
    EXPECT_EQ(data.meshIndices["o"], 1);
    {
        const ChangeGroup group{session.changes()};
        push("/meshes/p", 1);
        push("/meshes/q", 1);
    }
    EXPECT_EQ(data.meshIndices["q"], 3);
    session.undo();
    EXPECT_EQ(data.meshIndices.size(), 1);
    push("/meshes", 5);
    EXPECT_EQ(data.meshIndices.size(), 0);
}

}
}
