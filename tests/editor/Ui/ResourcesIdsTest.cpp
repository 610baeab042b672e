#include <algorithm>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "editor/Ui/Picker.h"
#include "support/Allocations.h"
#include "support/CapturedOutput.h"
#include "support/CpuTime.h"

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::CapturedOutput;
using Test::Picker;
using Test::SomeTextures;
using Test::toText;

class UiResourceIds: public testing::Test, protected Picker {
protected:
    bool drop() {
        return run([](ImGuiTestContext& user) {
            user.ItemDragAndDrop("//Window/source", Field);
            user.Yield(2);
        });
    }

    /** What a frame shows while the mouse is over the field. */
    std::string hovered() {
        std::string text;
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            user.MouseMove(Field);
            user.Yield(2);
            text = shown;
            user.MouseMoveToVoid();
        }));
        return text;
    }
};

TEST_F(UiResourceIds, OneThatIsNotUtf8IsNotSet) {
    open(SomeTextures);
    const std::string before = toText(project);
    for(const char* const id: {"caf\xe9", "\xff", "t1\xc3"}) {
        draggedId = id;
        const CapturedOutput output;
        EXPECT_TRUE(drop());
        EXPECT_EQ(output.warning(), "Ui::selectResource(): the ID of the resource for /value is not UTF-8\n");
    }
    EXPECT_EQ(toText(project), before);
    EXPECT_EQ(recorded(), 0);
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiResourceIds, OfTwoResourcesWithOneNameTheFirstIsShown) {
    byName = true;
    open(R"({"value":"Rock","textures":{"x":{"name":"Sand"},"b":{"name":"Rock"},"a":{"name":"Rock"}}})");
    EXPECT_NE(hovered().find("id: b"), std::string::npos);
    EXPECT_EQ(shown.find("id: a"), std::string::npos);
}

TEST_F(UiResourceIds, TheTooltipShowsTheBeginningOfALongOne) {
    // Characters of three bytes, so that the limit lies within one.
    std::string id = "x";
    for(int i = 0; i != 100000; ++i) id += "\xe2\x82\xac";
    for(const bool named: {false, true}) {
        byName = named;
        open(R"({"value":")" + (named ? "Rock" : id) + R"(","textures":{")" + id + R"(":{"name":"Rock"}}})");
        const std::string text = hovered();
        const std::size_t begin = text.find("id: x\xe2\x82\xac");
        ASSERT_NE(begin, std::string::npos);
        const std::string tip = text.substr(begin, text.find('\n', begin) - begin);
        EXPECT_LT(tip.size(), 300u);
        EXPECT_EQ(tip.substr(tip.size() - 6), "\xe2\x82\xac...");
    }
}

TEST_F(UiResourceIds, ALongOneCostsAnIdleFrameNoMemory) {
    const std::string id(100000, 'x');
    open(R"({"value":")" + id + R"(","textures":{")" + id + R"(":{"name":"Rock"},")" + id + R"(y":{"name":"Sand"}}})");
    const auto plain = [this] {
        ImGui::SetNextWindowPos(position);
        ImGui::SetNextWindowSize({400.0f, 200.0f});
        const WindowGuard window{ImGui::Begin("Window")};
        ui.selectResource("value", type, byName);
    };
    std::uint64_t count = 1;
    EXPECT_TRUE(gui.run(
        "idle",
        [&] {
            const Allocations allocations;
            plain();
            count = allocations.count();
        },
        [&](ImGuiTestContext& user) {
            user.MouseMove(Field);
            user.Yield(10);
            IM_CHECK_EQ(count, std::uint64_t{0});
            openList(user);
            user.Yield(10);
            IM_CHECK_EQ(count, std::uint64_t{0});
        }));
}

TEST_F(UiResourceIds, ThatOfANameIsFoundWithoutAWalkThroughAllResources) {
    byName = true;
    /** The shortest of some frames with the mouse over the field, in seconds. */
    const auto hoveredFrame = [this](int count) {
        std::string json = R"({"value":"the last","textures":{)";
        for(int i = 0; i != count; ++i) json += "\"k" + std::to_string(i) + R"(":{"name":"n"},)";
        open(json + R"("last":{"name":"the last"}}})");
        double shortest = 1.0e9;
        bool isHovered = false;
        EXPECT_TRUE(gui.run(
            "hover",
            [&] {
                const double begin = cpuTime();
                draw();
                const double seconds = cpuTime() - begin;
                if(isHovered) shortest = std::min(shortest, seconds);
            },
            [&](ImGuiTestContext& user) {
                user.MouseMove(Field);
                user.Yield(2);
                IM_CHECK(shows("id: last"));
                isHovered = true;
                user.Yield(50);
                isHovered = false;
                user.MouseMoveToVoid();
            }));
        return shortest;
    };
    const double few = hoveredFrame(10);
    EXPECT_LT(hoveredFrame(300000), 4.0 * few);
}

TEST_F(UiResourceIds, LongOnesThatBeginAlikeAreRowsOfTheirOwn) {
    type = "fonts";
    const std::string id(1000, 'x');
    open(R"({"value":null,"fonts":{")" + id + R"(a":{"name":"A"},")" + id + R"(b":{"name":"B"}}})");
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        const ImRect rows = region()->InnerRect;
        user.MouseMoveToPos({rows.Min.x + 20.0f, rows.Min.y + 2.5f * (ImGui::GetTextLineHeight() + 2.0f)});
        user.MouseClick();
        user.Yield(3);
    }));
    EXPECT_EQ(value(), '"' + id + "b\"");
}

}
}
