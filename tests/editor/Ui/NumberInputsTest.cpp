#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BoundUi.h"

namespace QuorvaneEngine {
namespace {

using Test::toText;

constexpr char Wrong[] =
    R"({"null":null,"true":true,"text":"5","object":{"a":1},"empty":[],"short":[7],"mixed":["x",null,{},[1]],)"
    R"("far":1e300,"large":18446744073709551615,"first":false})";

class UiNumberInputs: public Test::BoundUi {
protected:
    UiNumberInputs() {
        loadProject(R"({"a":{"float":1.5,"int":5,"floats":[1,2,3,4],"ints":[1,2,3,4]},"first":false})");
    }
};

TEST_F(UiNumberInputs, ADragChangesTheNumberByItsSpeed) {
    EXPECT_TRUE(run([this] { ui.inputFloat("a/float", 0.0f, 100.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) { drag(user, "//Window/a/float/##val", {40.0f}); }));
    EXPECT_EQ(value("/a/float"), "21.5");
    expectUndoAndRedo();
}

TEST_F(UiNumberInputs, TheCommandModifierDragsFastUntilItIsReleased) {
    EXPECT_TRUE(run([this] { ui.inputFloat("a/float", 0.0f, 1000.0f, 0.5f, 5.0f); },
        [this](ImGuiTestContext& user) {
            const auto moveOn = [&user] { moveBy(user, 20.0f); };
            user.MouseMove("//Window/a/float/##val");
            user.MouseDown();
            moveOn();
            IM_CHECK_STR_EQ(value("/a/float").c_str(), "11.5");
            user.KeyDown(ImGuiMod_Super);
            moveOn();
            IM_CHECK_STR_EQ(value("/a/float").c_str(), "111.5");
            user.KeyUp(ImGuiMod_Super);
            moveOn();
            IM_CHECK_STR_EQ(value("/a/float").c_str(), "121.5");
            user.MouseUp();
        }));
    EXPECT_EQ(recorded(), 1);
}

TEST_F(UiNumberInputs, OneDragIsOneChange) {
    int changed = 0;
    EXPECT_TRUE(run([&] { changed += ui.inputFloat3("a/floats", 0.0f, 100.0f, 0.5f, 2.0f); },
        [](ImGuiTestContext& user) {
            drag(user, "//Window/a/floats/##val/$$1", {10.0f, 10.0f, -6.0f, 10.0f});
        }));
    EXPECT_EQ(changed, 4);
    EXPECT_EQ(recorded(), 1);
    EXPECT_EQ(value("/a/floats"), "[1.0,14.0,3.0]");
    expectUndoAndRedo();
}

TEST_F(UiNumberInputs, TheFirstEntryOfALogDoesNotMerge) {
    changes.reset(project);
    EXPECT_TRUE(run([this] { ui.inputInt("a/int", 0, 1000, 1.0f, 2.0f); },
        [](ImGuiTestContext& user) {
            drag(user, "//Window/a/int/##val", {10.0f, 10.0f, 10.0f});
        }));
    ASSERT_EQ(changes.changes().size(), 2u);
    EXPECT_EQ(toText(*changes.changes()[0].newValue), "15");
    EXPECT_EQ(toText(*changes.changes()[1].oldValue), "15");
    EXPECT_EQ(toText(*changes.changes()[1].newValue), "35");
}

TEST_F(UiNumberInputs, DragsStayWithinTheLimits) {
    EXPECT_TRUE(run(
        [this] {
            ui.inputFloat("a/float", -1.0f, 3.0f, 1.0f, 1.0f);
            ui.inputInt("a/int", -2, 8, 1.0f, 1.0f);
        },
        [this](ImGuiTestContext& user) {
            drag(user, "//Window/a/float/##val", {100.0f});
            drag(user, "//Window/a/int/##val", {100.0f});
            IM_CHECK_STR_EQ(value("/a/float").c_str(), "3.0");
            IM_CHECK_STR_EQ(value("/a/int").c_str(), "8");
            drag(user, "//Window/a/float/##val", {-100.0f});
            drag(user, "//Window/a/int/##val", {-100.0f});
        }));
    EXPECT_EQ(value("/a/float"), "-1.0");
    EXPECT_EQ(value("/a/int"), "-2");
    expectUndoAndRedo();
}

TEST_F(UiNumberInputs, OnlyASingleIntegerClampsWhatIsTyped) {
    EXPECT_TRUE(run(
        [this] {
            ui.inputFloat("a/float", 0.0f, 10.0f, 1.0f, 1.0f);
            ui.inputInt("a/int", 0, 10, 1.0f, 1.0f);
            ui.inputInt3("a/ints", 0, 10, 1.0f, 1.0f);
            ui.inputFloat2("a/floats", 0.0f, 10.0f, 1.0f, 1.0f);
        },
        [](ImGuiTestContext& user) {
            user.ItemInputValue("//Window/a/float/##val", 50.25f);
            user.ItemInputValue("//Window/a/int/##val", 500);
            user.ItemInputValue("//Window/a/ints/##val/$$2", 500);
            user.ItemInputValue("//Window/a/floats/##val/$$0", -50.0f);
        }));
    EXPECT_EQ(value("/a/float"), "50.25");
    EXPECT_EQ(value("/a/int"), "10");
    EXPECT_EQ(value("/a/ints"), "[1,2,500]");
    EXPECT_EQ(value("/a/floats"), "[-50.0,2.0]");
    EXPECT_EQ(recorded(), 4);
    expectUndoAndRedo();
}

TEST_F(UiNumberInputs, WhatJsonDoesNotHaveIsTypedAsTheNearestNumber) {
    const auto number = [this](const char* path) { return project.getValue(path, false)->GetDouble(); };
    constexpr double max = std::numeric_limits<float>::max();
    EXPECT_TRUE(run([this] { ui.inputFloat2("a/floats", 0.0f, 0.0f, 1.0f, 1.0f); },
        [&](ImGuiTestContext& user) {
            user.ItemInput("//Window/a/floats/##val/$$0");
            user.KeyCharsReplaceEnter("1e99");
            IM_CHECK_EQ(number("/a/floats/0"), max);
            IM_CHECK_EQ(number("/a/floats/1"), 2.0);
            user.ItemInput("//Window/a/floats/##val/$$1");
            user.KeyCharsReplaceEnter("-inf");
            IM_CHECK_EQ(number("/a/floats/0"), max);
            IM_CHECK_EQ(number("/a/floats/1"), -max);
            user.ItemInput("//Window/a/floats/##val/$$0");
            user.KeyCharsReplaceEnter("nan");
            IM_CHECK_EQ(number("/a/floats/0"), 0.0);
            IM_CHECK_EQ(number("/a/floats/1"), -max);
        }));
    expectUndoAndRedo();
}

TEST_F(UiNumberInputs, WhatIsTypedIsNoChangeWhenEscapeIsPressed) {
    EXPECT_TRUE(run([this] { ui.inputFloat("a/float", 0.0f, 10.0f, 1.0f, 1.0f); },
        [](ImGuiTestContext& user) {
            user.ItemInput("//Window/a/float/##val");
            user.KeyCharsReplace("7");
            user.KeyPress(ImGuiKey_Escape);
        }));
    EXPECT_EQ(recorded(), 0);
}

/** A widget of each kind, of which some number is changed. */
struct Kind {
    const char* name;
    bool (*draw)(Ui& ui, const char* name);
    int count;
    bool isFloat;
};

void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

constexpr Kind Kinds[]{
    {"inputFloat", [](Ui& ui, const char* name) { return ui.inputFloat(name, 0.0f, 100.0f, 1.0f, 10.0f); }, 1, true},
    {"inputFloat2", [](Ui& ui, const char* name) { return ui.inputFloat2(name, 0.0f, 100.0f, 1.0f, 10.0f); }, 2, true},
    {"inputFloat3", [](Ui& ui, const char* name) { return ui.inputFloat3(name, 0.0f, 100.0f, 1.0f, 10.0f); }, 3, true},
    {"inputFloat4", [](Ui& ui, const char* name) { return ui.inputFloat4(name, 0.0f, 100.0f, 1.0f, 10.0f); }, 4, true},
    {"inputInt", [](Ui& ui, const char* name) { return ui.inputInt(name, 0, 100, 1.0f, 10.0f); }, 1, false},
    {"inputInt2", [](Ui& ui, const char* name) { return ui.inputInt2(name, 0, 100, 1.0f, 10.0f); }, 2, false},
    {"inputInt3", [](Ui& ui, const char* name) { return ui.inputInt3(name, 0, 100, 1.0f, 10.0f); }, 3, false},
    {"inputInt4", [](Ui& ui, const char* name) { return ui.inputInt4(name, 0, 100, 1.0f, 10.0f); }, 4, false},
};

class UiNumberKinds: public UiNumberInputs, public testing::WithParamInterface<Kind> {
protected:
    bool draw(const char* name) { return GetParam().draw(ui, name); }

    /** Where the last number is. */
    std::string last(const std::string& name) const {
        const std::string item = "//Window/" + name + "/##val";
        return GetParam().count == 1 ? item : item + "/$$" + std::to_string(GetParam().count - 1);
    }

    /** What a value is when the last of its numbers, which are these, is another one. */
    std::string with(std::initializer_list<int> numbers, int lastNumber) const {
        const char* const end = GetParam().isFloat ? ".0" : "";
        if(GetParam().count == 1) return std::to_string(lastNumber) + end;
        std::string text = "[";
        int i = 0;
        for(const int number: numbers) {
            if(++i == GetParam().count) break;
            text += std::to_string(number) + end + ",";
        }
        return text + std::to_string(lastNumber) + end + "]";
    }
};

INSTANTIATE_TEST_SUITE_P(
    Kinds, UiNumberKinds, testing::ValuesIn(Kinds), [](const auto& info) { return std::string{info.param.name}; });

TEST_P(UiNumberKinds, EachNumberIsEditedAndAllAreWritten) {
    const std::string name = GetParam().count > 1 ? "a/ints" : "a/int";
    int changed = 0;
    EXPECT_TRUE(run([&] { changed += draw(name.c_str()); },
        [&](ImGuiTestContext& user) { drag(user, last(name).c_str(), {20.0f}); }));
    EXPECT_EQ(value(("/" + name).c_str()), with({1, 2, 3, 4}, GetParam().count == 1 ? 25 : 20 + GetParam().count));
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(recorded(), 1);
    expectUndoAndRedo();
}

TEST_P(UiNumberKinds, TheLabelTakesAThirdOfTheLine) {
    const std::string name = GetParam().count > 1 ? "a/ints" : "a/int";
    frames([&] {
        const float start = ImGui::GetCursorScreenPos().x;
        const float width = ImGui::GetContentRegionAvail().x;
        draw(name.c_str());
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, ImGui::GetWindowPos().x + 0.33f * width);
        EXPECT_NEAR(ImGui::GetItemRectMax().x, start + width, 1.0f);
        ui.pushFlags(Ui::Flag::NoLabel);
        draw(name.c_str());
        ui.popFlags();
        EXPECT_FLOAT_EQ(ImGui::GetItemRectMin().x, start);
        EXPECT_NEAR(ImGui::GetItemRectMax().x, start + width, 1.0f);
    });
}

TEST_P(UiNumberKinds, TheMenuCopiesTheWholeValue) {
    const std::string name = GetParam().count > 1 ? "a/ints" : "a/int";
    EXPECT_TRUE(run([&] { draw(name.c_str()); },
        [&](ImGuiTestContext& user) {
            user.ItemClick(last(name).c_str(), ImGuiMouseButton_Right);
            user.ItemClick("//$FOCUSED/\xef\x83\x85 Copy");
            user.Yield();
            IM_CHECK_STR_EQ(ImGui::GetClipboardText(), GetParam().count > 1 ? "[1,2,3,4]" : "5");
        }));
    EXPECT_EQ(recorded(), 0);
}

TEST_P(UiNumberKinds, ValuesOfOtherTypesCountAsZeroUntilTheyAreEdited) {
    loadProject(Wrong);
    for(const char* name: {"null", "true", "text", "object", "empty", "missing"}) {
        loadProject(Wrong);
        EXPECT_TRUE(run([&] { draw(name); },
            [&](ImGuiTestContext& user) {
                user.Yield(2);
                IM_CHECK_EQ(recorded(), 0);
                user.ItemInputValue(last(name).c_str(), 9);
            }));
        EXPECT_EQ(value((std::string{"/"} + name).c_str()), with({0, 0, 0}, 9)) << name;
        EXPECT_EQ(recorded(), 1);
        expectUndoAndRedo();
    }
}

TEST_P(UiNumberKinds, ShortMixedAndFarValuesAreDrawn) {
    loadProject(Wrong);
    frames([this] {
        for(const char* name: {"short", "mixed", "far", "large"}) EXPECT_FALSE(draw(name));
    });
    EXPECT_EQ(toText(project), loaded);
}

TEST_P(UiNumberKinds, AnIdleFrameAllocatesNothing) {
    const auto widgets = [this] { draw(GetParam().count > 1 ? "a/floats" : "a/float"); };
    EXPECT_EQ(idleAllocations(widgets), 0u);
}

}
}
