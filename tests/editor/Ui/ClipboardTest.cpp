#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "ClipboardUi.h"

namespace QuorvaneEngine {
namespace {

using Test::toText;
using Test::UiClipboard;

constexpr char CannotParse[] = "Cannot parse pasted value.\n";
constexpr char OtherType[] = "Pasted value did not match type of the target property.\n";

// Copying

TEST_F(UiClipboard, ValuesAreCopiedAsJson) {
    EXPECT_EQ(copied("three"), "[1,2,3]");
    EXPECT_EQ(copied("two"), "[1.5,2.5]");
    EXPECT_EQ(copied("number"), "2.5");
    EXPECT_EQ(copied("yes"), "true");
    EXPECT_EQ(copied("text"), "\"some text\"");
    EXPECT_EQ(copied("object"), R"({"a":{"b":1}})");
    EXPECT_EQ(copied("object/a/b"), "1");
    EXPECT_EQ(copied("nothing"), "null");
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AMissingValueIsCopiedAsNull) { EXPECT_EQ(copied("missing"), "null"); }

TEST_F(UiClipboard, TextsAreEscapedOnTheClipboard) {
    loadProject(R"({"text":"a\"b\\\n\u0000é"})");
    EXPECT_EQ(copied("text"), "\"a\\\"b\\\\\\n\\u0000\xc3\xa9\"");
}

TEST_F(UiClipboard, WhatIsCopiedCanBePastedBack) {
    for(const char* name: {"three", "two", "number", "yes", "no", "text", "object", "nothing", "list"}) {
        const std::string before = value((std::string{"/"} + name).c_str());
        EXPECT_EQ(pasted(copied(name), name), "");
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), before);
    }
    EXPECT_EQ(recorded(), 9);
}

// Pasting

TEST_F(UiClipboard, AVectorIsPastedOntoOneOfItsSize) {
    EXPECT_EQ(pasted("[7,8,9.5]", "three"), "");
    EXPECT_EQ(value("/three"), "[7,8,9.5]");
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, AVectorIsNotPastedOntoOneOfAnotherSize) {
    EXPECT_EQ(pasted(copied("three"), "two"), "Pasted value array size did not match, expected 2 but got 3\n");
    EXPECT_EQ(pasted("[]", "three"), "Pasted value array size did not match, expected 3 but got 0\n");
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, ElementsAndMembersAreNotCompared) {
    EXPECT_EQ(pasted(R"(["a",null,{}])", "three"), "");
    EXPECT_EQ(value("/three"), R"(["a",null,{}])");
    EXPECT_EQ(pasted(R"({"other":[1]})", "object"), "");
    EXPECT_EQ(value("/object"), R"({"other":[1]})");
    expectUndoAndRedo();
}

TEST_F(UiClipboard, AllNumbersAreOneType) {
    EXPECT_EQ(pasted("5", "number"), "");
    EXPECT_EQ(value("/number"), "5");
    EXPECT_EQ(pasted("-1e3", "number"), "");
    EXPECT_EQ(value("/number"), "-1000.0");
    expectUndoAndRedo();
}

TEST_F(UiClipboard, TrueAndFalseAreTwoTypes) {
    EXPECT_EQ(pasted("true", "no"), OtherType);
    EXPECT_EQ(pasted("false", "yes"), OtherType);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pasted("false", "no"), "");
    EXPECT_EQ(pasted("true", "yes"), "");
    EXPECT_EQ(recorded(), 2);
    EXPECT_EQ(toText(project), loaded);
}

TEST_F(UiClipboard, EachTypeIsRefusedByAllOthers) {
    struct Case {
        const char* name;
        const char* json;
    };
    constexpr Case cases[]{
        {"three", "[1,2,3]"},
        {"number", "1"},
        {"yes", "true"},
        {"no", "false"},
        {"text", "\"5\""},
        {"object", "{}"},
        {"nothing", "null"},
    };
    for(const Case& from: cases)
        for(const Case& to: cases) {
            if(from.name == to.name) continue;
            EXPECT_EQ(pasted(from.json, to.name), OtherType) << from.name << ' ' << to.name;
        }
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, NothingIsPastedOntoAMissingValue) {
    for(const char* json: {"1", "null", "true", "\"text\"", "[]", "{}"})
        EXPECT_EQ(pasted(json, "missing"), OtherType) << json;
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AByteOrderMarkIsSkipped) {
    EXPECT_EQ(pasted("\xef\xbb\xbf[4,5,6]", "three"), "");
    EXPECT_EQ(value("/three"), "[4,5,6]");
}

TEST_F(UiClipboard, PastesDoNotMerge) {
    pasted("3", "number");
    pasted("4", "number");
    EXPECT_EQ(recorded(), 2);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, WhatIsNoJsonIsRefused) {
    for(const std::string& text: {std::string{}, std::string{"some text"}, std::string{"[1,2"}, std::string{"\"\xff\""},
            std::string(1000000, '['), std::string{"1e99999999999999"}, std::string{R"({"a":1,"a":2})"},
            std::string(10000000, 'x'), std::string(10000000, '\xff'), std::string{"[1,2,3] x"}})
        for(const char* name: {"three", "number", "text", "object", "missing"})
            EXPECT_EQ(pasted(text, name), CannotParse) << text.substr(0, 20) << ' ' << name;
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiClipboard, AClipboardThatHoldsNoTextIsRefused) {
    ImGui::GetPlatformIO().Platform_GetClipboardTextFn = [](ImGuiContext*) -> const char* { return nullptr; };
    EXPECT_EQ(pasted("", "number"), CannotParse);
}

TEST_F(UiClipboard, TenMegabytesOfTextArePasted) {
    const std::string text = '"' + std::string(10000000, 'x') + '"';
    EXPECT_EQ(pasted(text, "text"), "");
    EXPECT_EQ(value("/text"), text);
    expectUndoAndRedo();
}

TEST_F(UiClipboard, TheProjectGetsNoDeeperThanItsFilesCanBe) {
    const auto nested = [](std::size_t depth) {
        return "[" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + ",0]";
    };
    // The document itself is a container, too.
    EXPECT_EQ(pasted(nested(256), "list"), CannotParse);
    EXPECT_EQ(pasted(nested(255), "list"), "");
    EXPECT_EQ(value("/list"), nested(255));
    expectUndoAndRedo();
    loadProject(R"({"a":{"b":[[],[]]}})");
    EXPECT_EQ(pasted(nested(255), "a/b"), CannotParse);
    EXPECT_EQ(pasted(nested(254), "a/b"), "");
}

}
}
