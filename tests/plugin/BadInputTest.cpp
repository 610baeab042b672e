/* Documents that no editor wrote: keys of every kind, and a value of every wrong type at every place that the view reads. */

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string quoted(const std::string& text) {
    std::string json = "\"";
    for(const char c: text) {
        if(c == '"' || c == '\\') json += '\\';
        if(c == '\n') json += "\\n";
        else if(c == '\0') json += "\\u0000";
        else json += c;
    }
    return json + "\"";
}

/* Three terms, the one with the key between two others */
std::string projectWith(const std::string& key) {
    return R"({"languages":{"en":{"isDefault":true}},"hello":"Hello!","localization":{"terms":{"before":{"translatable":true},)" +
        quoted(key) + R"(:{"sourceText":"hello","translatable":true},"after":{"translatable":true}}}})";
}

class TermKeys: public testing::TestWithParam<std::string> {};

TEST_P(TermKeys, TickingChangesThatTermAndNothingElse) {
    const std::string before = projectWith(GetParam());
    ViewTest test{Containers::StringView{before.data(), before.size()}};
    const std::string document = test.document();
    std::string expected = document;
    const std::string term = R"("sourceText":"hello","translatable":true)";
    expected.replace(expected.find(term), term.size(), R"("sourceText":"hello","translatable":false)");

    /* The boxes of three rows stand one below the other: the second is the one. Keys of many lines or bytes have no path that the Test
       Engine could be told, so the mouse goes there. */
    test.run([&](ImGuiTestContext& user) {
        const ImRect first = rowItem(user, "termtablebody", "before/##translatable").RectFull;
        const ImRect last = rowItem(user, "termtablebody", "after/##translatable").RectFull;
        user.MouseMoveToPos({first.GetCenter().x, (first.GetCenter().y + last.GetCenter().y) * 0.5f});
        user.MouseClick();
        user.Yield(2);
    });
    EXPECT_EQ(test.document(), expected);
    EXPECT_EQ(test.session.changes().changes().size(), 1);
    test.session.undo();
    EXPECT_EQ(test.document(), document);
    test.session.redo();
    EXPECT_EQ(test.document(), expected);

    /* What follows is balanced: the rows behind it work on */
    EXPECT_TRUE(test.ui.scopePath().isEmpty());
    test.run([](ImGuiTestContext& user) { tick(user, "after"); });
    EXPECT_TRUE(contains(test.document(), R"("after":{"translatable":false})"));
}

INSTANTIATE_TEST_SUITE_P(BadInput, TermKeys,
    testing::Values("123", "0", "1000000000", "-", "007", std::string(10000, 'k'), "a/b", "/", "//", "a/", "~", "~0",
        "~1", "a~b/c~1", "##", "###", "a##b", "a###b", "before###x", "##translatable", "%", "%s%n%d", "100%",
        "key\nof\nlines", " ", "\xe6\x97\xa5\xe6\x9c\xac", std::string("nul\0byte", 8), "before/##translatable",
        "termstable", std::string("\0", 1), std::string("\0first", 6)));

TEST(BadInput, ATermWithAnEmptyKeyHasNoBox) {
    const std::string project = projectWith("");
    ViewTest test{project.c_str()};
    const std::string document = test.document();
    test.run([](ImGuiTestContext& user) {
        const ImRect first = rowItem(user, "termtablebody", "before/##translatable").RectFull;
        const ImRect last = rowItem(user, "termtablebody", "after/##translatable").RectFull;
        user.MouseMoveToPos({first.GetCenter().x, (first.GetCenter().y + last.GetCenter().y) * 0.5f});
        user.MouseClick();
        user.Yield(2);
        ImGuiTestItemList items;
        user.GatherItems(&items, childWindow(user, "termtablebody")->ID, 3);
        int boxes = 0;
        for(const ImGuiTestItemInfo& item: items)
            if(item.StatusFlags & ImGuiItemStatusFlags_Checkable) ++boxes;
        IM_CHECK_EQ(boxes, 2);
    });
    EXPECT_EQ(test.document(), document);
    EXPECT_TRUE(contains(test.shownText(), "Hello!"));
}

TEST(BadInput, KeysThatTheLibraryWouldHideAreShown) {
    const struct {
        std::string key;
        const char* shown;
    } keys[]{{"##", "| ## |"}, {"a##b", "| a##b |"}, {"x###y", "| x###y |"},
        {std::string("\0first", 6), "| \\0 first |"}, {std::string("nul\0byte", 8), "| nul \\0 byte |"},
        {std::string("\0", 1), "| \\0 |"}, {std::string("\0\0", 2), "| \\0 \\0 |"}};
    for(const auto& [key, shown]: keys) {
        ViewTest test{projectWith(key).c_str()};
        test.run([](ImGuiTestContext&) {});
        const std::string text = test.shownText();
        EXPECT_TRUE(contains(text, shown)) << shown << text;
    }
}

TEST(BadInput, TheHostFreesThePathOfALongKeyWhenTheModuleIsGone) {
    const std::string key(10000, 'k');
    ViewTest test{projectWith(key).c_str()};
    test.frames(3);
    ASSERT_GT(test.ui.path.size(), key.size() + 1);
    /* The scope is closed again, behind which what later ones did not overwrite is left */
    EXPECT_TRUE(test.ui.scopePath().isEmpty());
    EXPECT_TRUE(contains(std::string(test.ui.path.data(), test.ui.path.size()), std::string(9000, 'k')));
    test.module = nullptr;
    ASSERT_EQ(test.manager.unload("Localization"), Corrade::PluginManager::LoadState::NotLoaded);
    test.ui.path = {};
    EXPECT_TRUE(test.ui.path.isEmpty());
}

/* Wrong types */

const char* const Values[]{"null", "true", "false", "0", "-1", "1.5", "12345678901234567890", "\"\"", "\"text\"", "[]",
    "[1, \"x\", {}]", "{}", "{\"a\": 1}", "[[[]]]"};

void drawBothTabs(ViewTest& test) {
    test.frames(3);
    test.run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        selectTab(user, "Terms");
        search(user, "##termsearch", "a");
        search(user, "##termsearch", "");
    });
}

TEST(BadInput, TermsOfEveryWrongTypeAreAnEmptyTable) {
    for(const char* const value: Values)
        for(const std::string& members:
            {std::string{"\"localization\": "} + value, std::string{"\"localization\": {\"terms\": "} + value + "}"}) {
            SCOPED_TRACE(members);
            ViewTest test{("{\"languages\": {\"en\": {\"isDefault\": true}}, " + members + "}").c_str()};
            drawBothTabs(test);
            EXPECT_TRUE(contains(test.shownText(), "Translatable?"));
        }
}

TEST(BadInput, ATermOfEveryWrongTypeIsARowWithAnEmptyText) {
    for(const char* const value: Values)
        for(const std::string& term: {std::string{value}, std::string{"{\"sourceText\": "} + value + "}",
                std::string{"{\"translatable\": "} + value + "}",
                std::string{"{\"sourceText\": \"source\", \"translatable\": true}, \"x\": "} + value}) {
            SCOPED_TRACE(term);
            ViewTest test{("{\"languages\": {\"en\": {\"isDefault\": true}}, \"source\": " + std::string{value} +
                ", \"localization\": {\"terms\": {\"first\": {}, \"term\": " + term + ", \"last\": {}}}}")
                              .c_str()};
            drawBothTabs(test);
            const std::string shown = test.shownText();
            EXPECT_TRUE(contains(shown, "| term |")) << shown;
            EXPECT_TRUE(contains(shown, "| last |")) << shown;
        }
}

TEST(BadInput, TickingATermOfAWrongTypeChangesThatTermAlone) {
    for(const char* const value: {"null", "5", "\"text\"", "[]"}) {
        SCOPED_TRACE(value);
        ViewTest test{
            (std::string{R"({"languages":{"en":{"isDefault":true}},"localization":{"terms":{"first":{},"term":)"} +
                value + R"(,"last":{}}}})")
                .c_str()};
        test.run([](ImGuiTestContext& user) { tick(user, "term"); });
        const std::string after = test.document();
        EXPECT_TRUE(contains(after, R"("first":{})")) << after;
        EXPECT_TRUE(contains(after, R"("last":{})")) << after;
        EXPECT_TRUE(contains(after, R"("languages":{"en":{"isDefault":true}})")) << after;
    }
}

TEST(BadInput, LanguagesOfEveryWrongTypeAreNone) {
    for(const char* const value: Values) {
        if(std::string{value} == "{\"a\": 1}") continue;
        SCOPED_TRACE(value);
        ViewTest test{("{\"languages\": " + std::string{value} + "}").c_str()};
        drawBothTabs(test);
        test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
        EXPECT_TRUE(contains(test.shownText(), "\xef\x80\x85 English")) << test.shownText();
    }
}

TEST(BadInput, ALanguageOfEveryWrongTypeIsNoDefault) {
    for(const char* const value: Values)
        for(const std::string& language: {std::string{value}, std::string{"{\"isDefault\": "} + value + "}"}) {
            if(language == "{\"isDefault\": true}") continue;
            SCOPED_TRACE(language);
            ViewTest test{("{\"languages\": {\"de\": " + language + ", \"en\": {\"isDefault\": true}}}").c_str()};
            drawBothTabs(test);
            test.run([](ImGuiTestContext& user) { selectTab(user, "Languages"); });
            EXPECT_TRUE(contains(test.shownText(), "\xef\x80\x85 English")) << test.shownText();
        }
}

}
}
