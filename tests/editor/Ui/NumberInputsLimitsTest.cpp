#include <ostream>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "BoundUi.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;

/** A widget of each kind. */
struct Kind {
    const char* name;
    bool (*draw)(Ui& ui, const char* name, int min, int max, float speed, float fastSpeed);
    int count;
    bool isFloat;

    /** Whether what is typed stays within the limits. */
    bool isClamped = false;
};

void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

template <bool (Ui::*input)(Containers::StringView, float, float, float, float)>
bool drawFloat(Ui& ui, const char* name, int min, int max, float speed, float fastSpeed) {
    return (ui.*input)(name, float(min), float(max), speed, fastSpeed);
}

template <bool (Ui::*input)(Containers::StringView, Int, Int, float, float)>
bool drawInt(Ui& ui, const char* name, int min, int max, float speed, float fastSpeed) {
    return (ui.*input)(name, min, max, speed, fastSpeed);
}

constexpr Kind Kinds[]{
    {"inputFloat", drawFloat<&Ui::inputFloat>, 1, true},
    {"inputFloat2", drawFloat<&Ui::inputFloat2>, 2, true},
    {"inputFloat3", drawFloat<&Ui::inputFloat3>, 3, true},
    {"inputFloat4", drawFloat<&Ui::inputFloat4>, 4, true},
    {"inputInt", drawInt<&Ui::inputInt>, 1, false, true},
    {"inputInt2", drawInt<&Ui::inputInt2>, 2, false},
    {"inputInt3", drawInt<&Ui::inputInt3>, 3, false},
    {"inputInt4", drawInt<&Ui::inputInt4>, 4, false},
};

class UiNumberLimits: public Test::BoundUi, public testing::WithParamInterface<Kind> {
protected:
    UiNumberLimits() { loadProject(R"({"one":5,"many":[5,5,5,5],"first":false})"); }

    const char* name() const { return GetParam().count == 1 ? "one" : "many"; }

    bool edit(int min, int max, const GuiTest::Script& script) {
        return run([&] { GetParam().draw(ui, name(), min, max, 1.0f, 10.0f); }, script);
    }

    /** Each of the numbers in turn. */
    template <class F> void each(F&& edited) {
        for(int i = 0; i != GetParam().count; ++i) {
            const std::string item = std::string{"//Window/"} + name() + "/##val";
            edited((GetParam().count == 1 ? item : item + "/$$" + std::to_string(i)).c_str());
        }
    }

    /** What the value is when all its numbers are the same. */
    std::string all(int number) const {
        const std::string text = std::to_string(number) + (GetParam().isFloat ? ".0" : "");
        if(GetParam().count == 1) return text;
        std::string array = "[" + text;
        for(int i = 1; i != GetParam().count; ++i) array += "," + text;
        return array + "]";
    }

    std::string edited() { return value((std::string{"/"} + name()).c_str()); }
};

INSTANTIATE_TEST_SUITE_P(
    Kinds, UiNumberLimits, testing::ValuesIn(Kinds), [](const auto& info) { return std::string{info.param.name}; });

TEST_P(UiNumberLimits, DragsStayWithinThem) {
    EXPECT_TRUE(edit(-2, 8, [this](ImGuiTestContext& user) {
        each([&](const char* item) { drag(user, item, {100.0f}); });
        IM_CHECK_STR_EQ(edited().c_str(), all(8).c_str());
        each([&](const char* item) { drag(user, item, {-100.0f}); });
    }));
    EXPECT_EQ(edited(), all(-2));
    expectUndoAndRedo();
}

TEST_P(UiNumberLimits, OnlyASingleIntegerClampsWhatIsTyped) {
    EXPECT_TRUE(edit(0, 10, [this](ImGuiTestContext& user) {
        each([&](const char* item) { user.ItemInputValue(item, 50); });
        IM_CHECK_STR_EQ(edited().c_str(), all(GetParam().isClamped ? 10 : 50).c_str());
        each([&](const char* item) { user.ItemInputValue(item, -50); });
    }));
    EXPECT_EQ(edited(), all(GetParam().isClamped ? 0 : -50));
    expectUndoAndRedo();
}

TEST_P(UiNumberLimits, TwoZerosAreNoneButForASingleInteger) {
    EXPECT_TRUE(edit(0, 0, [this](ImGuiTestContext& user) {
        each([&](const char* item) { drag(user, item, {-20.0f}); });
        IM_CHECK_STR_EQ(edited().c_str(), all(GetParam().isClamped ? 0 : -15).c_str());
        each([&](const char* item) { user.ItemInputValue(item, 50); });
    }));
    EXPECT_EQ(edited(), all(GetParam().isClamped ? 0 : 50));
}

TEST_P(UiNumberLimits, TwoEqualOnesLeaveADragOneNumber) {
    EXPECT_TRUE(edit(7, 7, [this](ImGuiTestContext& user) {
        each([&](const char* item) { drag(user, item, {20.0f}); });
        IM_CHECK_STR_EQ(edited().c_str(), all(7).c_str());
        each([&](const char* item) { user.ItemInputValue(item, 50); });
    }));
    EXPECT_EQ(edited(), all(GetParam().isClamped ? 7 : 50));
}

TEST_P(UiNumberLimits, TwoInTheWrongOrderAreNone) {
    EXPECT_TRUE(edit(10, 0, [this](ImGuiTestContext& user) {
        each([&](const char* item) { drag(user, item, {20.0f}); });
        IM_CHECK_STR_EQ(edited().c_str(), all(25).c_str());
        each([&](const char* item) { user.ItemInputValue(item, 50); });
    }));
    EXPECT_EQ(edited(), all(50));
}

TEST_P(UiNumberLimits, TheCommandModifierDragsFastUntilItIsReleased) {
    EXPECT_TRUE(edit(0, 1000, [this](ImGuiTestContext& user) {
        each([&](const char* item) {
            user.MouseMove(item);
            user.MouseDown();
            moveBy(user, 10.0f);
            user.KeyDown(ImGuiMod_Super);
            moveBy(user, 10.0f);
            user.KeyUp(ImGuiMod_Super);
            moveBy(user, 10.0f);
            user.MouseUp();
            user.Yield();
        });
    }));
    EXPECT_EQ(edited(), all(125));
}

TEST_P(UiNumberLimits, DragsAreRoundedToWhatIsShown) {
    EXPECT_TRUE(run([this] { GetParam().draw(ui, name(), 0, 1000, 0.00027f, 1.0f); },
        [this](ImGuiTestContext& user) { each([&](const char* item) { drag(user, item, {10.0f}); }); }));
    // 0.0027 is 0.003 with three digits, and nothing for integers.
    if(!GetParam().isFloat) {
        EXPECT_EQ(recorded(), 0);
        return;
    }
    const rapidjson::Value& value = *project.getValue((std::string{"/"} + name()).c_str(), false);
    for(int i = 0; i != GetParam().count; ++i)
        EXPECT_EQ((GetParam().count == 1 ? value : value[rapidjson::SizeType(i)]).GetFloat(), 5.003f);
}

}
}
