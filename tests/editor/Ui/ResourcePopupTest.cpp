#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ResourcePopupUi.h"

namespace QuorvaneEngine {
namespace {

using Containers::StringView;
using Test::Picker;
using Test::SomeTextures;
using Test::toText;
using Test::UiResourcePopup;

// What is listed

TEST_F(UiResourcePopup, AClickListsNoneAndAllResourcesInDocumentOrder) {
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        IM_CHECK(!popup());
        openList(user);
        IM_CHECK(popup() != nullptr);
        IM_CHECK(shows("Rock"));
        // The field comes before the list.
        const std::size_t none = shown.rfind("- none -");
        IM_CHECK(none < shown.find("Grass"));
        IM_CHECK(shown.find("Grass") < shown.find("Rock"));
        IM_CHECK(shown.find("Rock") < shown.find("tall grass"));
    }));
    EXPECT_EQ(listed(), (Ids{"t9", "t1", "t5"}));
    EXPECT_EQ(pushes, 0);
}

TEST_F(UiResourcePopup, TypingSearchesByName) {
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("GRASS");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t9", "t5"}));
        IM_CHECK(!shows("Rock"));
        user.KeyPress(ImGuiKey_Backspace, 5);
        user.KeyChars("ck");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t1"}));
        user.KeyChars("x");
        user.Yield(2);
        IM_CHECK(listed().empty());
        IM_CHECK(shows("- none -"));
        // IDs are not searched.
        user.KeyPress(ImGuiKey_Backspace, 3);
        user.KeyChars("t9");
        user.Yield(2);
        IM_CHECK(listed().empty());
    }));
}

TEST_F(UiResourcePopup, OpeningClearsTheSearch) {
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("rock");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t1"}));
        // Escape would empty it before.
        choose(user, "t1");
        IM_CHECK(!popup());
        IM_CHECK_EQ(ui.resourceSearch[0], 'r');
        openList(user);
        IM_CHECK_EQ(ui.resourceSearch[0], '\0');
        IM_CHECK(listed() == (Ids{"t9", "t1", "t5"}));
        user.KeyChars("ta");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t5"}));
    }));
}

TEST_F(UiResourcePopup, FromItsFirstFrameOnNothingOfTheLastSearchShows) {
    open(SomeTextures);
    ui.resourceSearch[0] = 'k';
    int framesWithList = 0;
    EXPECT_TRUE(gui.run(
        "open",
        [&] {
            draw();
            if(!ImGui::IsPopupOpen("", ImGuiPopupFlags_AnyPopup)) return;
            ++framesWithList;
            EXPECT_EQ(listed(), (Ids{"t9", "t1", "t5"})) << framesWithList;
        },
        [](ImGuiTestContext& user) { openList(user); }));
    EXPECT_GT(framesWithList, 2);
}

TEST_F(UiResourcePopup, AnEmptiedSearchListsAllAgain) {
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("rock");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t1"}));
        // Enter leaves the search, which empties itself and takes the keyboard again.
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(4);
        IM_CHECK_EQ(ui.resourceSearch[0], '\0');
        IM_CHECK(listed() == (Ids{"t9", "t1", "t5"}));
    }));
}

TEST_F(UiResourcePopup, AMissingCollectionListsNoneAlone) {
    for(const char* const json:
        {R"({"value":null})", R"({"value":null,"textures":["x"]})", R"({"value":null,"textures":"x"})"}) {
        open(json);
        EXPECT_TRUE(run([this](ImGuiTestContext& user) {
            openList(user);
            IM_CHECK(listed().empty());
            IM_CHECK(shown.find("- none -") != shown.rfind("- none -"));
            user.KeyPress(ImGuiKey_Escape);
        }));
    }
}

TEST_F(UiResourcePopup, TheFilterDecidesWhatIsOffered) {
    open(SomeTextures);
    std::vector<std::string> asked;
    filter = [&](ValueAccess& entry) {
        const StringView name = entry["name"].asString();
        asked.emplace_back(name.data(), name.size());
        return name.contains("rass");
    };
    EXPECT_TRUE(run([&](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(listed() == (Ids{"t9", "t5"}));
        IM_CHECK(!shows("Rock"));
        user.KeyChars("tall");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t5"}));
        const std::size_t before = asked.size();
        user.Yield(5);
        IM_CHECK_EQ(asked.size(), before);
        choose(user, "t5");
    }));
    EXPECT_EQ(value(), R"("t5")");
}

TEST_F(UiResourcePopup, TheListFollowsTheProject) {
    open(SomeTextures);
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("grass");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t9", "t5"}));
        changes.pushRemoval("/textures/t9");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t5"}));
        changes.pushChange("/textures/t1/name", StringView{"stone grass"}, false);
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"t1", "t5"}) || listed() == (Ids{"t5", "t1"}));
        IM_CHECK(shows("stone grass"));
    }));
}

TEST_F(UiResourcePopup, EntriesOfEveryKindAreListed) {
    open(R"({"value":null,"textures":{"a":{},"b":7,"c":null,"d":["x"],"e":{"name":5},"f":"x","":{"name":"empty"},
        "g##h":{"name":"n##m"},"i%s":{"name":"%s%n"},"j###k":{"name":"J"},"l###k":{"name":"L"},"m\u0000n":{"name":"M"},
        "o\u0000p":{"name":"O\u0000P"},"q/r~s":{"name":"Q\nsecond line"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK_EQ(listed().size(), std::size_t{14});
        user.Yield(3);
    }));
    frames();
}

TEST_F(UiResourcePopup, ResourcesWithoutANameAreListedByTheirId) {
    type = "fonts";
    open(R"({"value":null,"fonts":{"the id":{},"other":{"name":"Serif"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(shows("the id"));
        choose(user, "the id");
    }));
    EXPECT_EQ(value(), R"("the id")");
}

TEST_F(UiResourcePopup, ResourcesWithoutANameAreNotListedWhereTheValueIsOne) {
    byName = true;
    open(R"({"value":null,"textures":{"a":{},"b":{"name":"Rock"},"c":5,"d":{"name":""},"e":{"name":"Rock"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(listed() == (Ids{"b", "e"}));
        choose(user, "e");
    }));
    EXPECT_EQ(value(), R"("Rock")");
}

TEST_F(UiResourcePopup, NamesAreShownAsTheyStandAndOnOneLine) {
    type = "fonts";
    open(R"({"value":null,"fonts":{"a":{"name":"shown##too"},"b":{"name":"100%s"},"c":{"name":"first\nsecond"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(shows("shown##too"));
        IM_CHECK(shows("100%s"));
        IM_CHECK(shows("first"));
        IM_CHECK(!shows("second"));
    }));
}

// Choosing

TEST_F(UiResourcePopup, ARowSetsTheIdAsOneChangeAndCloses) {
    open(SomeTextures);
    const std::string before = toText(project);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        choose(user, "t5");
        IM_CHECK(!popup());
    }));
    EXPECT_EQ(value(), R"("t5")");
    EXPECT_EQ(pushes, 1);
    EXPECT_TRUE(shows("tall grass")) << "in the field";
    const std::string after = toText(project);
    ASSERT_EQ(recorded(), 1);
    changes.undoLast();
    EXPECT_EQ(toText(project), before);
    changes.redoLastUndo();
    EXPECT_EQ(toText(project), after);
}

TEST_F(UiResourcePopup, ResourcesOfOneNameAreRowsOfTheirOwn) {
    open(R"({"value":null,"textures":{"a":{"name":"Rock"},"b":{"name":"Rock"},"c":{"name":"Rock"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        user.KeyChars("rock");
        user.Yield(2);
        IM_CHECK(listed() == (Ids{"a", "b", "c"}));
        choose(user, "b");
    }));
    EXPECT_EQ(value(), R"("b")");
}

TEST_F(UiResourcePopup, ARowSetsTheNameWhereTheValueIsOne) {
    open(SomeTextures);
    byName = true;
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        choose(user, "t5");
    }));
    EXPECT_EQ(value(), R"("tall grass")");
}

TEST_F(UiResourcePopup, TwoChoicesAreTwoChanges) {
    open(SomeTextures);
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        for(const char* const id: {"t5", "t1"}) {
            openList(user);
            choose(user, id);
        }
    }));
    EXPECT_EQ(recorded(), 2);
    changes.undoLast();
    EXPECT_EQ(value(), R"("t5")");
}

TEST_F(UiResourcePopup, NoneSetsNullAlsoWhereItIsNullAlready) {
    open(R"({"value":"t1","textures":{"t1":{"name":"Rock"}}})");
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        for(int i = 1; i != 3; ++i) {
            openList(user);
            user.ItemClick("**/- none -");
            user.Yield(3);
            IM_CHECK(!popup());
            IM_CHECK_EQ(pushes, i);
            IM_CHECK_STR_EQ(value().c_str(), "null");
        }
    }));
    EXPECT_EQ(recorded(), 2);
    changes.undoLast();
    changes.undoLast();
    EXPECT_EQ(value(), R"("t1")");
}

TEST_F(UiResourcePopup, ChoosingRepairsAnUnknownReference) {
    open(R"({"value":["of another type"],"textures":{"t1":{"name":"Rock"}}})");
    EXPECT_TRUE(run([](ImGuiTestContext& user) {
        openList(user);
        choose(user, "t1");
    }));
    EXPECT_EQ(value(), R"("t1")");
    EXPECT_FALSE(shows("\xef\x81\xb1"));
}

TEST_F(UiResourcePopup, AValueAmongTheResourcesThemselvesCanBeSet) {
    // What is set makes the members of the collection move, and with them the short strings in there.
    open(R"({"textures":{"a":{"name":"A"},"b":{"name":"B"}}})");
    pick = [this] {
        ui.pushScope("textures", nullptr);
        const bool changed = ui.selectResource("value", "textures", byName);
        ui.popScope();
        return changed;
    };
    for(const bool named: {false, true}) {
        byName = named;
        EXPECT_TRUE(run([](ImGuiTestContext& user) {
            user.ItemClick("//Window/textures/value/##val");
            user.Yield(3);
            choose(user, "b");
        }));
        EXPECT_NE(toText(project).find(named ? R"("value":"B")" : R"("value":"b")"), std::string::npos);
        changes.undoLast();
    }
}

TEST_F(UiResourcePopup, TheSameKeyTwiceIsTwoRowsThatMeanTheFirst) {
    byName = true;
    open(R"({"value":null,"fonts":{"a":{"name":"first"},"a":{"name":"second"}}})");
    type = "fonts";
    EXPECT_TRUE(run([this](ImGuiTestContext& user) {
        openList(user);
        IM_CHECK(listed() == (Ids{"a", "a"}));
        const ImRect region = Picker::region()->InnerRect;
        const float pitch = ImGui::GetTextLineHeight() + 2.0f;
        user.MouseMoveToPos({region.Min.x + 20.0f, region.Min.y + 2.5f * pitch});
        user.MouseClick();
        user.Yield(3);
    }));
    EXPECT_EQ(value(), R"("first")");
}

TEST_F(UiResourcePopup, RowsOfSimilarKeysAreChosenEachForItself) {
    const std::vector<std::string> ids{"j###k", "l###k", std::string{"m\0n", 3}, std::string{"m\0o", 3}, ""};
    type = "fonts";
    open(
        R"({"value":null,"fonts":{"j###k":{"name":"J"},"l###k":{"name":"L"},"m\u0000n":{"name":"M"},"m\u0000o":{"name":"O"},
        "":{"name":"E"}}})");
    for(std::size_t i = 0; i != ids.size(); ++i) {
        EXPECT_TRUE(run([&](ImGuiTestContext& user) {
            openList(user);
            const ImRect region = Picker::region()->InnerRect;
            const float pitch = ImGui::GetTextLineHeight() + 2.0f;
            user.MouseMoveToPos({region.Min.x + 20.0f, region.Min.y + (float(i) + 1.5f) * pitch});
            user.MouseClick();
            user.Yield(3);
        }));
        const rapidjson::Value& set = project.document()["value"];
        ASSERT_TRUE(set.IsString()) << i;
        EXPECT_EQ((std::string{set.GetString(), set.GetStringLength()}), ids[i]);
    }
}

}
}
