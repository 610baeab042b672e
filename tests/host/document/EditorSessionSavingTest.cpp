#include <cerrno>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "EditorSessionTest.h"
#include "KnownFiles.h"

/* What a save keeps, and when the project counts as saved. */

namespace QuorvaneEngine {
namespace {

TEST_F(EditorSessionTest, ASavedProjectIsOpenedAgainAsItWas) {
    ASSERT_TRUE(open());
    push("/localization/terms/t/translatable", 0);
    push("/localization/translations/de/t/text", 5);
    const std::string before = content();
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(save()) << warning;
    EXPECT_FALSE(session.hasUnsavedChanges());
    EditorSession next{nullptr, &disk};
    ASSERT_TRUE(next.open("/p"));
    EXPECT_EQ(textOf(next.project().document()), before);
    // The log goes on.
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.redo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, AFailedSaveLeavesTheUnsavedMark) {
    ASSERT_TRUE(open());
    push("/x", 1);
    const auto files = disk.files();
    const std::string before = content();
    const std::size_t begin = disk.steps();
    for(std::size_t step = 0;; ++step) {
        disk.failAt(step, ENOSPC, true);
        const bool isDone = save();
        disk.behave();
        EXPECT_EQ(content(), before);
        EXPECT_EQ(session.hasUnsavedChanges(), !isDone);
        EXPECT_EQ(warning.empty(), isDone);
        if(isDone) break;
        EXPECT_TRUE(session.changes().canUndo());
        ASSERT_LT(disk.steps() - begin, 5000);
    }
    EXPECT_NE(disk.files(), files);
}

TEST_F(EditorSessionTest, AnUndoBackToTheSavedStateSaysSaved) {
    ASSERT_TRUE(open());
    push("/x", 1);
    ASSERT_TRUE(save());
    push("/x", 2);
    push("/list/0", 7);
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.redo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, AnEditThatIsMergedIntoTheSavedOneIsUnsaved) {
    ASSERT_TRUE(open());
    push("/x", 1);
    push("/y", 1, true);
    push("/y", 2, true);
    ASSERT_TRUE(save());
    push("/y", 3, true);
    // The change manager's own mark cannot see it.
    EXPECT_FALSE(session.changes().hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.redo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(save());
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, ASavedStateThatTheLogHasLostIsNotTakenForTheEmptyLog) {
    ASSERT_TRUE(open());
    push("/x", 1);
    ASSERT_TRUE(save());
    session.undo();
    push("/y", 1);
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.changes().hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(save());
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(disk.files()["/p/project.json"].find("\"x\""), std::string::npos);
}

TEST_F(EditorSessionTest, TheMarkNeverSaysSavedOfADocumentThatDiffers) {
    std::mt19937 random{5};
    ASSERT_TRUE(open());
    std::string saved = content();
    std::size_t marks = 0, changes = 0;
    for(int i = 0; i != 4000; ++i) {
        const std::string path = std::string{"/v"} + char('0' + random() % 3);
        switch(random() % 8) {
        case 0:
        case 1: push(path.c_str(), int(random() % 3)); break;
        case 2:
        case 3:
        case 4: push(path.c_str(), int(random() % 3), true); break;
        case 5: session.undo(); break;
        case 6: session.redo(); break;
        case 7: ASSERT_TRUE(save()); saved = content();
        }
        if(random() % 3) continue;
        const bool isUnsaved = session.hasUnsavedChanges();
        ASSERT_TRUE(isUnsaved || content() == saved) << "step " << i;
        (isUnsaved ? changes : marks)++;
    }
    EXPECT_GT(marks, 100);
    EXPECT_GT(changes, 100);
}

TEST_F(EditorSessionTest, AskingAgainForTheMarkCostsNothing) {
    ASSERT_TRUE(open());
    push("/x", 1);
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
    const std::uint64_t lookups = session.project().lookupCount();
    const std::size_t steps = disk.steps();
    for(int i = 0; i != 100; ++i) EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(session.project().lookupCount(), lookups);
    EXPECT_EQ(disk.steps(), steps);
}

TEST_F(EditorSessionTest, AReplacedDocumentWithoutFolderCountsAsSaved) {
    session.replaceDocument(documentOf(R"({"images": {"i": {}}})"));
    EXPECT_EQ(content(), "{\"images\": {\"i\": {}}}\n");
    EXPECT_EQ(session.data().imageIndices["i"], 1);
    EXPECT_FALSE(session.hasUnsavedChanges());
    push("/images/j", 1);
    EXPECT_EQ(session.data().imageIndices["j"], 2);
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(EditorSessionTest, AReplacedDocumentIsUnsavedWhereItDiffersFromTheFolder) {
    ASSERT_TRUE(open());
    rapidjson::Document same;
    same.CopyFrom(session.project().document(), same.GetAllocator());
    push("/x", 1);
    session.replaceDocument(std::move(same));
    EXPECT_FALSE(session.hasUnsavedChanges());
    session.replaceDocument(documentOf(R"({"a": 1})"));
    EXPECT_TRUE(session.hasUnsavedChanges());
    push("/x", 1);
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(save());
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(disk.files()["/p/project.json"], "{\n  \"a\": 1\n}\n");
    EXPECT_FALSE(disk.exists("/p/localization/de.json"));
}

TEST_F(EditorSessionTest, WhoKeepsTheDocumentHasItUnsaved) {
    ASSERT_TRUE(open());
    EXPECT_EQ(session.lookAtDisk(), DiskState::Same);
    disk.put("/p/localization/de.json", "{}");
    EXPECT_EQ(session.lookAtDisk(), DiskState::Changed);
    session.keepDocument();
    EXPECT_EQ(session.lookAtDisk(), DiskState::Same);
    EXPECT_TRUE(session.hasUnsavedChanges());
    push("/x", 1);
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    ASSERT_TRUE(save()) << warning;
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_NE(disk.files()["/p/localization/de.json"].find("Hallo"), std::string::npos);
}

TEST_F(EditorSessionTest, AProjectThatVanishesIsToldOfOnceAndUnsavedUntilItIsBack) {
    ASSERT_TRUE(open());
    const std::string project = disk.files()["/p/project.json"];
    const auto look = [&] {
        DiskState state{};
        warned([&] {
            state = session.lookAtDisk();
            return true;
        });
        return state;
    };
    disk.removeFile("/p/project.json");
    EXPECT_EQ(look(), DiskState::Gone);
    EXPECT_EQ(warning,
        "EditorSession::lookAtDisk(): /p has no project.json any more; what is open here stays, and is saved anew\n");
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_EQ(look(), DiskState::Gone);
    EXPECT_EQ(warning, "");
    disk.put("/p/project.json", project);
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_FALSE(session.hasUnsavedChanges());
    disk.removeFile("/p/project.json");
    EXPECT_EQ(look(), DiskState::Gone);
    EXPECT_NE(warning, "");
    ASSERT_TRUE(save()) << warning;
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(look(), DiskState::Same);
    EXPECT_TRUE(disk.exists("/p/project.json"));
}

/** Sets and creations in containers that are never empty: what undo restores to the byte. */
void pushAtRandom(EditorSession& session, std::mt19937& random) {
    const auto pick = [&random](auto count) { return random() % unsigned(count); };
    const char* const places[]{"/localization/terms/", "/localization/translations/de/",
        "/localization/translations/fr/", "/images/", "/objects/"};
    const char* const keys[]{"a", "b~1c", "ä", "0", "17", "~0", "with blank", "##", "%s", "z"};
    std::string path = std::string{places[pick(std::size(places))]} + keys[pick(std::size(keys))];
    const std::string values[]{
        "1", "-2.5", "\"text \\u0007 \\ud83d\\ude00\"", "{\"text\": \"x\", \"list\": [1, {}, []]}", "[]", "null"};
    // A merged change moves in the log, and others with it, so that undo and redo of all lead elsewhere.
    session.changes().pushChange(
        Containers::StringView{path.data(), path.size()}, documentOf(values[pick(std::size(values))]), false);
}

TEST_F(EditorSessionTest, RandomChangesSurviveSavingUndoingAndRedoing) {
    for(unsigned seed = 0; seed != 40; ++seed) {
        std::mt19937 random{seed};
        disk = {};
        disk.put("/p/project.json",
            R"({"localization": {"terms": {"kept": {}}}, "images": {"kept": {}}, "objects": {"kept": {}}})");
        disk.put("/p/localization/de.json", R"({"kept": {}})");
        disk.put("/p/localization/fr.json", R"({"kept": {}})");
        ASSERT_TRUE(open());
        const std::string first = content();
        const auto firstFiles = disk.files();

        for(int i = 0; i != 60; ++i) {
            std::optional<ChangeGroup> group;
            if(random() % 4 == 0) group.emplace(session.changes());
            for(unsigned count = 1 + random() % 3; count; --count) pushAtRandom(session, random);
            group.reset();
            if(random() % 6 == 0) session.undo();
            if(random() % 6 == 0) session.redo();
            ASSERT_TRUE(random() % 20 || save());
        }
        while(session.changes().canRedo()) session.redo();
        const std::string last = content();
        ASSERT_TRUE(save());
        const auto files = disk.files();

        EditorSession next{nullptr, &disk};
        ASSERT_TRUE(next.open("/p"));
        // Translations are stored in byte order of their keys, so files tell what documents would not.
        ASSERT_TRUE(next.save());
        EXPECT_EQ(disk.files(), files);
        next.changes().pushChange("/objects/other", rapidjson::Value{1}, false);
        next.undo();
        EXPECT_FALSE(next.hasUnsavedChanges());

        while(session.changes().canUndo()) session.undo();
        EXPECT_EQ(content(), first);
        ASSERT_TRUE(save());
        ASSERT_TRUE(next.open("/p"));
        EXPECT_EQ(textOf(next.project().document()), first);
        while(session.changes().canRedo()) session.redo();
        EXPECT_EQ(content(), last);
        ASSERT_TRUE(save());
        EXPECT_EQ(disk.files(), files);
    }
}

}
}
