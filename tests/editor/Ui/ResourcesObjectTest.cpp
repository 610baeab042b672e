#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ResourcesUi.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::SomeTextures;
using Test::UiResources;

class UiObjectResources: public UiResources {
protected:
    void SetUp() override {
        open(R"({"value":"o1","objects":{"o1":{"name":"Door"}}})");
        type = "objects";
    }

    std::vector<std::string> picked;
};

TEST_F(UiObjectResources, AButtonFollowsTheField) {
    data.pickObject = [](StringView, bool) {};
    for(const float scale: {1.0f, 2.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            const ImRect field = user.ItemInfo(Field).RectFull;
            const ImRect button = user.ItemInfo(PickButton).RectFull;
            IM_CHECK_LE(ImAbs(button.Min.x - field.Max.x - ImGui::GetStyle().ItemSpacing.x), 1.0f);
            IM_CHECK_LE(ImAbs(button.Max.x + scale - regionStart.x - regionWidth), 1.0f);
            IM_CHECK_GE(button.Min.y, field.Min.y - 1.0f);
            IM_CHECK_LE(button.Max.y, field.Max.y + 1.0f);
        }));
    }
}

TEST_F(UiObjectResources, WithoutALabelFieldAndButtonFillTheLine) {
    data.pickObject = [](StringView, bool) {};
    ui.flags = Ui::Flag::NoLabel;
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        const ImRect field = user.ItemInfo(Field).RectFull;
        const ImRect button = user.ItemInfo(PickButton).RectFull;
        IM_CHECK(!shows("value"));
        IM_CHECK_EQ(field.Min.x, regionStart.x);
        IM_CHECK_EQ(button.Min.x, field.Max.x + ImGui::GetStyle().ItemSpacing.x);
        IM_CHECK_EQ(button.Max.x, regionStart.x + regionWidth - 1.0f);
    }));
}

TEST_F(UiObjectResources, TheHostIsAskedForAnObjectWithThePathOfTheValue) {
    data.pickObject = [this](StringView path, bool named) {
        picked.push_back(std::string{path.data(), path.size()} + (named ? " by name" : " by ID"));
    };
    for(const bool named: {false, true}) {
        byName = named;
        EXPECT_TRUE(run([](ImGuiTestContext& user) { user.ItemClick(PickButton); }));
    }
    EXPECT_EQ(picked, (std::vector<std::string>{"/value by ID", "/value by name"}));
    EXPECT_EQ(recorded(), 0);
}

TEST_F(UiObjectResources, WhatTheHostSetsAtOnceIsAChangeOfThisFrame) {
    data.pickObject = [this](StringView path, bool) { changes.pushChange(path, StringView{"o2"}, false); };
    EXPECT_TRUE(run([](ImGuiTestContext& user) { user.ItemClick(PickButton); }));
    EXPECT_EQ(pushes, 1);
    EXPECT_EQ(value(), R"("o2")");
}

TEST_F(UiObjectResources, WithoutAHostToPickThemTheButtonIsDisabled) {
    for(EditorData* const known: {&data, static_cast<EditorData*>(nullptr)}) {
        ui.editorData = known;
        EXPECT_TRUE(run([](ImGuiTestContext& user) {
            IM_CHECK(user.ItemInfo(PickButton).ItemFlags & ImGuiItemFlags_Disabled);
            user.MouseMove(Field);
            user.MouseMoveToPos(user.ItemInfo(PickButton).RectFull.GetCenter());
            user.MouseClick();
            user.Yield(2);
        }));
    }
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiObjectResources, OthersHaveNoButton) {
    open(SomeTextures);
    type = "textures";
    EXPECT_TRUE(run([](ImGuiTestContext& user) { IM_CHECK(!user.ItemExists(PickButton)); }));
}

}
}
