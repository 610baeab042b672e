#include <string>

#include <gtest/gtest.h>

#include "EditorUser.h"

namespace QuorvaneEngine::Test {
namespace {

/** Somebody who has unticked the first marked term, and saved nothing. */
class EditorQuit: public EditorUser {
protected:
    static constexpr std::size_t Save = 0;
    static constexpr std::size_t DontSave = 1;
    static constexpr std::size_t Cancel = 2;

    bool change(EditorWindow& editor) {
        std::vector<Area> marks;
        if(!editor.waitUntil([&] { return (marks = ticks(editor.picture())).size() > 10; })) return false;
        editor.click(marks[0]);
        return editor.waitForTitle("* a lighthouse - Quorvane");
    }

    /** Waits until the question is on the screen. */
    bool waitForQuestion(const EditorWindow& editor) {
        return editor.waitUntil([&] { return (answers = buttons(editor.picture())).size() == 3; });
    }

    /** Waits until nothing is dimmed any more. */
    static bool waitForNoQuestion(const EditorWindow& editor) {
        return editor.waitUntil([&] { return !searchField(editor.picture()).isEmpty(); });
    }

    bool isAsSaved() const {
        return read(project / "project.json") == read(QUORVANE_SOURCE_DIR "/samples/lighthouse/project.json");
    }

    /** Of the last question. */
    std::vector<Area> answers;
};

TEST_F(EditorQuit, WhoCancelsStaysAndWhoDoesNotSaveLosesTheChange) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(change(editor));
    editor.press("ctrl+q");
    ASSERT_TRUE(waitForQuestion(editor)) << answers.size() << " answers";
    editor.click(answers[Cancel]);
    EXPECT_TRUE(waitForNoQuestion(editor));
    EXPECT_TRUE(editor.isRunning());
    EXPECT_EQ(editor.title(), "* a lighthouse - Quorvane");
    EXPECT_TRUE(isAsSaved());

    editor.press("ctrl+q");
    ASSERT_TRUE(waitForQuestion(editor)) << answers.size() << " answers";
    editor.click(answers[DontSave]);
    EXPECT_EQ(editor.waitForEnd(), 0) << printed();
    EXPECT_TRUE(isAsSaved());
}

TEST_F(EditorQuit, WhoSavesFindsTheChangeOnTheDisk) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(change(editor));
    editor.press("ctrl+q");
    ASSERT_TRUE(waitForQuestion(editor)) << answers.size() << " answers";
    editor.click(answers[Save]);
    EXPECT_EQ(editor.waitForEnd(), 0) << printed();
    const std::string saved = read(project / "project.json");
    EXPECT_NE(
        saved.find(R"("game.subtitle": {"sourceText": "/objects/title_screen/subtitleText", "translatable": false})"),
        std::string::npos);
}

TEST_F(EditorQuit, TheButtonOfTheWindowAsksAsWell) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(change(editor));
    editor.close();
    ASSERT_TRUE(waitForQuestion(editor)) << answers.size() << " answers";
    editor.press("Escape");
    EXPECT_TRUE(waitForNoQuestion(editor));
    EXPECT_TRUE(editor.isRunning());

    editor.close();
    ASSERT_TRUE(waitForQuestion(editor)) << answers.size() << " answers";
    editor.click(answers[Save]);
    EXPECT_EQ(editor.waitForEnd(), 0) << printed();
    EXPECT_FALSE(isAsSaved());
}

TEST_F(EditorQuit, NobodyIsAskedAboutAChangeThatWasUndone) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(change(editor));
    editor.press("ctrl+z");
    EXPECT_TRUE(editor.waitForTitle("a lighthouse - Quorvane"));
    editor.close();
    EXPECT_EQ(editor.waitForEnd(), 0) << printed();
    EXPECT_TRUE(isAsSaved());
}

}
}
