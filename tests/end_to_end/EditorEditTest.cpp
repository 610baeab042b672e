#include <string>

#include <gtest/gtest.h>

#include "EditorUser.h"

namespace QuorvaneEngine::Test {
namespace {

/** A text with another one in the place of a part of it, which is there once. */
std::string replaced(const std::string& text, const std::string& part, const std::string& other) {
    const std::size_t place = text.find(part);
    EXPECT_NE(place, std::string::npos);
    EXPECT_EQ(text.find(part, place + 1), std::string::npos);
    return text.substr(0, place) + other + text.substr(place + part.size());
}

class EditorEdit: public EditorUser {
protected:
    std::string saved() const { return read(project / "project.json"); }

    /** Waits for a number of boxes with a mark. */
    bool waitForMarks(const EditorWindow& editor, const std::size_t count) {
        return editor.waitUntil([&] { return (marks = ticks(editor.picture())).size() == count; });
    }

    /** Leaves one term in the list. */
    bool search(EditorWindow& editor, const std::string& text) {
        Area field{};
        if(!editor.waitUntil([&] {
               const Picture picture = editor.picture();
               field = searchField(picture);
               return !field.isEmpty() && ticks(picture).size() > 10;
           }))
            return false;
        editor.click(field);
        editor.type(text);
        return waitForMarks(editor, 1);
    }

    const std::string before = read(QUORVANE_SOURCE_DIR "/samples/lighthouse/project.json");

    /** "menu.credits" is neither the first of the terms nor the last one. */
    const std::string after = replaced(before, R"("/objects/title_screen/creditsText", "translatable": true)",
        R"("/objects/title_screen/creditsText", "translatable": false)");

    std::vector<Area> marks;
};

TEST_F(EditorEdit, ASearchedTermIsTickedSavedUndoneAndDoneAgain) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(search(editor, "menu.credits")) << marks.size() << " marks";

    editor.click(marks[0]);
    EXPECT_TRUE(editor.waitForTitle("* a lighthouse - Quorvane"));
    EXPECT_TRUE(waitForMarks(editor, 0));
    EXPECT_EQ(saved(), before);
    editor.press("ctrl+s");
    EXPECT_TRUE(editor.waitForTitle("a lighthouse - Quorvane"));
    EXPECT_EQ(saved(), after);

    editor.press("ctrl+z");
    EXPECT_TRUE(editor.waitForTitle("* a lighthouse - Quorvane"));
    EXPECT_TRUE(waitForMarks(editor, 1));
    editor.press("ctrl+shift+z");
    EXPECT_TRUE(editor.waitForTitle("a lighthouse - Quorvane"));
    EXPECT_TRUE(waitForMarks(editor, 0));
    EXPECT_EQ(saved(), after);

    editor.press("ctrl+z");
    EXPECT_TRUE(waitForMarks(editor, 1));
    editor.press("ctrl+s");
    EXPECT_TRUE(editor.waitForTitle("a lighthouse - Quorvane"));
    EXPECT_EQ(saved(), before);
    editor.press("ctrl+q");
    EXPECT_EQ(editor.waitForEnd(), 0) << printed();
}

TEST_F(EditorEdit, SavingLeavesEveryOtherFileAsItWas) {
    EditorWindow editor{alike({project.string()}), desk(), environment()};
    ASSERT_TRUE(editor.isOpen()) << printed();
    ASSERT_TRUE(search(editor, "menu.credits")) << marks.size() << " marks";
    editor.click(marks[0]);
    EXPECT_TRUE(editor.waitForTitle("* a lighthouse - Quorvane"));
    editor.press("ctrl+s");
    EXPECT_TRUE(editor.waitForTitle("a lighthouse - Quorvane"));
    for(const char* const code: {"ar", "de", "fr", "ja", "pt-BR", "ru"}) {
        const std::string file = std::string{"localization/"} + code + ".json";
        EXPECT_EQ(read(project / file), read(std::filesystem::path{QUORVANE_SOURCE_DIR "/samples/lighthouse"} / file))
            << file;
    }
    EXPECT_EQ(saved(), after);
}

}
}
