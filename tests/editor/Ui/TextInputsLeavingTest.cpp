#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "BoundUi.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;
using Test::toText;

constexpr char Name[] = "//Window/a/name/##val";
constexpr char Lines[] = "//Window/a/lines/##val";

// The menu

/** A field that is typed in. */
struct TypedField {
    const char* widget;
    void (*draw)(Ui& ui);
    const char* item;
    const char* typed;
    const char* path;
    const char* stored;
};

void PrintTo(const TypedField& field, std::ostream* stream) { *stream << field.widget; }

constexpr TypedField TypedFields[]{
    {"inputText", [](Ui& ui) { ui.inputText("a/name"); }, Name, "new", "/a/name", "\"new\""},
    {"inputTextMultiline", [](Ui& ui) { ui.inputTextMultiline("a/lines", false, false); }, Lines, "new", "/a/lines",
        "\"new\""},
    {"fileSelect", [](Ui& ui) { ui.fileSelect("a/name", "title", {}); }, "//Window/a/name/##value", "new", "/a/name",
        "\"new\""},
    {"inputFloat", [](Ui& ui) { ui.inputFloat("a/float", 0.0f, 100.0f, 1.0f, 1.0f); }, "//Window/a/float/##val", "7.5",
        "/a/float", "7.5"},
    {"inputInt3", [](Ui& ui) { ui.inputInt3("a/ints", 0, 100, 1.0f, 1.0f); }, "//Window/a/ints/##val/$$1", "7",
        "/a/ints", "[1,7,3]"},
    {"colorEdit3", [](Ui& ui) { ui.colorEdit3("a/rgb"); }, "//Window/a/rgb/##val/##Y", "255", "/a/rgb",
        "[0.0,1.0,0.0]"},
};

class UiTypedField: public Test::BoundUi, public testing::WithParamInterface<TypedField> {
protected:
    UiTypedField() {
        loadProject(R"({"a":{"name":"old","lines":"old","float":1.5,"ints":[1,2,3],"rgb":[0,0,0]},"first":false})");
    }

    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                // Lines fill what is left.
                ImGui::Button("above");
                GetParam().draw(ui);
            },
            script);
    }

    static void type(ImGuiTestContext& user) {
        user.ItemInput(GetParam().item);
        user.KeyCharsReplace(GetParam().typed);
        user.Yield(2);
    }
};

INSTANTIATE_TEST_SUITE_P(
    Fields, UiTypedField, testing::ValuesIn(TypedFields), [](const auto& info) { return info.param.widget; });

TEST_P(UiTypedField, OpeningTheMenuRecordsWhatWasTyped) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        type(user);
        IM_CHECK_EQ(recorded(), 0);
        user.MouseMove(GetParam().item);
        user.MouseClick(ImGuiMouseButton_Right);
        user.Yield(3);
        IM_CHECK_EQ(recorded(), 1);
        // The menu stays open and takes the new value.
        user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
        user.Yield(2);
    }));
    EXPECT_EQ(value(GetParam().path), GetParam().stored);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_P(UiTypedField, OpeningTheMenuWithoutTypingRecordsNothing) {
    EXPECT_TRUE(use([](ImGuiTestContext& user) {
        user.ItemInput(GetParam().item);
        user.Yield(2);
        user.MouseMove(GetParam().item);
        user.MouseClick(ImGuiMouseButton_Right);
        user.Yield(3);
    }));
    EXPECT_EQ(toText(project), loaded);
    EXPECT_EQ(recorded(), 0);
}

// Values that change meanwhile

class UiOvertakenText: public Test::BoundUi {
protected:
    UiOvertakenText() { loadProject(R"({"a":{"name":"old","lines":"old"},"first":false})"); }

    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                ui.inputText("a/name");
                ui.inputTextMultiline("a/lines", false, false);
            },
            script);
    }

    /** Another view changes the value. */
    void overtake(const char* path) { changes.pushChange(path, Containers::StringView{"overtaken"}, false); }
};

TEST_F(UiOvertakenText, EscapeKeepsTheNewValue) {
    const struct {
        const char* item;
        const char* path;
    } fields[]{{Name, "/a/name"}, {Lines, "/a/lines"}};
    for(const auto& field: fields) {
        loadProject(loaded);
        EXPECT_TRUE(use([&](ImGuiTestContext& user) {
            user.ItemInput(field.item);
            user.KeyCharsReplace("typed");
            overtake(field.path);
            user.Yield(2);
            user.KeyPress(ImGuiKey_Escape);
            user.Yield(3);
        }));
        EXPECT_EQ(value(field.path), "\"overtaken\"");
        EXPECT_EQ(recorded(), 1);
        EXPECT_TRUE(ui.pendingText.isEmpty());
        EXPECT_EQ(ui.pendingItem, 0u);
        expectUndoAndRedo();
    }
}

TEST_F(UiOvertakenText, WhoTypedNothingKeepsTheNewValue) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemInput(Name);
        user.Yield(2);
        overtake("/a/name");
        user.Yield(2);
        user.ItemInput(Lines);
        user.Yield(3);
    }));
    EXPECT_EQ(value("/a/name"), "\"overtaken\"");
    EXPECT_EQ(recorded(), 1);
    EXPECT_TRUE(ui.pendingText.isEmpty());
}

TEST_F(UiOvertakenText, WhatWasTypedReplacesTheNewValue) {
    EXPECT_TRUE(use([this](ImGuiTestContext& user) {
        user.ItemInput(Name);
        user.KeyCharsReplace("typed");
        overtake("/a/name");
        user.Yield(2);
        user.ItemInput(Lines);
        user.Yield(3);
    }));
    EXPECT_EQ(value("/a/name"), "\"typed\"");
    expectUndoAndRedo();
}

TEST_F(UiOvertakenText, WhatIsStoredAlreadyWhenTheFieldIsLeftIsNoChange) {
    Int revision = 0;
    EXPECT_TRUE(use([&](ImGuiTestContext& user) {
        user.ItemInput(Name);
        user.KeyCharsReplace("overtaken");
        overtake("/a/name");
        revision = project.revision();
        user.Yield(2);
        user.ItemInput(Lines);
        user.Yield(3);
    }));
    EXPECT_EQ(value("/a/name"), "\"overtaken\"");
    EXPECT_EQ(recorded(), 1);
    // A change would have merged with that of the other view.
    EXPECT_EQ(project.revision(), revision);
    EXPECT_TRUE(ui.pendingText.isEmpty());
}

}
}
