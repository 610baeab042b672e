#include <string>

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include "InspectorDesk.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

/** Edits of the sample project, each compared with the whole document, there, back and there again. */
class InspectorEdits: public testing::Test {
protected:
    /** Selects an object and edits it, which has to be one step.
        @param from     a piece of the document as text, there once
        @param to       what it has to be instead */
    void edit(const char* object, const std::string& from, const std::string& to, const GuiTest::Script& script) {
        const std::string before = desk.document();
        const std::size_t at = before.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        ASSERT_EQ(before.find(from, at + 1), std::string::npos) << from;
        std::string after = before;
        after.replace(at, from.size(), to);
        const GuiTest::Gui draw = [this] { desk.draw(); };
        gui.run("edit", draw, [&](ImGuiTestContext& user) {
            user.Yield(3);
            user.SetRef("Inspector");
            user.ItemClick(treeRow(object));
            user.Yield(2);
            script(user);
            user.Yield(2);
        });
        EXPECT_EQ(desk.document(), after);
        gui.run("undo and redo", draw, [&](ImGuiTestContext& user) {
            user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Z);
            user.Yield(2);
            IM_CHECK(desk.document() == before);
            user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_Y);
            user.Yield(2);
            IM_CHECK(desk.document() == after);
        });
    }

    static void type(ImGuiTestContext& user, const ImGuiID item, const char* text) {
        user.ItemInput(item);
        user.KeyCharsReplace(text);
        user.KeyPress(ImGuiKey_Tab);
    }

    /** Clicks a row of the list that is open. */
    static void choose(ImGuiTestContext& user, const char* const row) {
        user.Yield(2);
        const ImVector<ImGuiPopupData>& open = ImGui::GetCurrentContext()->OpenPopupStack;
        IM_CHECK(!open.empty());
        user.SetRef(open.back().Window);
        user.ItemClick(row);
    }

    /** The input of a component of a vector. */
    static ImGuiID component(const std::string& path, const int index) {
        return ImHashStr("", 0, ImHashData(&index, sizeof(index), widget(path)));
    }

    /** What the box of a bit lies in. */
    static ImGuiID widgetBit(const std::string& path, const int bit) {
        return ImHashData(&bit, sizeof(bit), scopeOf(path));
    }

    /** The input of a component of a colour. */
    static ImGuiID colorComponent(const std::string& path, const char* const name) {
        return ImHashStr(name, 0, widget(path));
    }

    GuiTest gui{{1600.0f, 1400.0f}};
    InspectorDesk desk;
};

TEST_F(InspectorEdits, ANumberIsTypedAndClampedToWhatIsKnownOfIt) {
    edit("/objects/keeper", R"("age":67)", R"("age":150)",
        [](ImGuiTestContext& user) { user.ItemInputValue(widget("/objects/keeper/age"), 1000); });
}

TEST_F(InspectorEdits, ANumberIsDraggedInOneStep) {
    edit("/objects/keeper", R"("walkSpeed":0.9,)", R"("walkSpeed":20.0,)", [](ImGuiTestContext& user) {
        // To the end of its range, wherever the drag began to count.
        for(int i = 0; i != 1; ++i) user.ItemDragWithDelta(widget("/objects/keeper/walkSpeed"), {3000.0f, 0.0f});
    });
}

TEST_F(InspectorEdits, AVectorIsTyped) {
    edit("/objects/keeper", R"("translation":[2.5,0.0,-1.25])", R"("translation":[2.5,4.0,-1.25])",
        [](ImGuiTestContext& user) { user.ItemInputValue(component("/objects/keeper/translation", 1), 4.0f); });
}

/* The GUI library edits in steps of a 255th, the other components with the one that is typed. */
TEST_F(InspectorEdits, AColorIsTyped) {
    edit("/objects/lantern", R"("lightColor":[1.0,0.74,0.36])",
        R"("lightColor":[0.0,0.7411764860153198,0.3607843220233917])",
        [](ImGuiTestContext& user) { user.ItemInputValue(colorComponent("/objects/lantern/lightColor", "##X"), 0); });
}

TEST_F(InspectorEdits, ATextIsTyped) {
    edit("/objects/lantern", R"("title":"Brass Lantern")", R"("title":"Tin Lantern")",
        [](ImGuiTestContext& user) { type(user, widget("/objects/lantern/title"), "Tin Lantern"); });
}

TEST_F(InspectorEdits, ALongTextIsTypedInSeveralLines) {
    edit("/objects/lantern", R"("description":"Warm to the touch, even when it has been out for hours.")",
        R"("description":"Cold.\nDark.")", [](ImGuiTestContext& user) {
            const ImGuiWindow* const lines = around("/objects/lantern/description", "##lines");
            IM_CHECK(lines != nullptr);
            user.MouseMoveToPos({lines->Pos.x + 20.0f, lines->Pos.y + 12.0f});
            user.MouseClick();
            user.KeyCharsReplace("Cold.");
            user.KeyPress(ImGuiKey_Enter);
            user.KeyChars("Dark.");
            user.ItemClick(treeRow("/objects/rope"));
        });
}

TEST_F(InspectorEdits, AValueOfAnUnfoldedSectionIsTyped) {
    edit("/objects/keeper", R"("noText":"I cannot do this alone.")", R"("noText":"No.")", [](ImGuiTestContext& user) {
        user.ScrollToBottom(region("##rows")->ID);
        user.Yield(2);
        user.ItemClick(ImHashStr("##/objects/keeper/answers", 0, region("##rows")->ID));
        user.Yield(2);
        user.ScrollToBottom(region("##rows")->ID);
        user.Yield(2);
        type(user, widget("/objects/keeper/answers/noText"), "No.");
    });
}

TEST_F(InspectorEdits, AFlagIsFlippedByItsName) {
    desk.load(R"({"languages": {"en": {"isDefault": true}}, "objects": {}, "pipelines": {"p": {"colorMask": 15}}})");
    const auto find = [](ImGuiTestContext& user) {
        user.Yield(3);
        user.SetRef("Inspector");
        user.ItemDoubleClick(treeRow("/pipelines"));
        user.Yield(2);
    };
    gui.run(
        "unfold", [this] { desk.draw(); }, find);
    edit("/pipelines/p", R"("colorMask":15)", R"("colorMask":11)", [](ImGuiTestContext& user) {
        const int blue = 2;
        user.ItemClick(ImHashStr("Blue", 0, widgetBit("/pipelines/p/colorMask", blue)));
    });
}

TEST_F(InspectorEdits, WhoGoesOnWithAnotherObjectKeepsWhatHeTyped) {
    edit("/objects/lantern", R"("title":"Brass Lantern")", R"("title":"Tin Lantern")", [](ImGuiTestContext& user) {
        user.ItemInput(widget("/objects/lantern/title"));
        user.KeyCharsReplace("Tin Lantern");
        user.ItemClick(treeRow("/objects/rope"));
    });
}

TEST_F(InspectorEdits, ABoxIsTicked) {
    edit("/objects/lantern", R"("stackable":false,"title":"Brass Lantern")",
        R"("stackable":true,"title":"Brass Lantern")",
        [](ImGuiTestContext& user) { user.ItemClick(widget("/objects/lantern/stackable", "##stackable")); });
}

TEST_F(InspectorEdits, AChoiceIsMade) {
    edit("/objects/keeper", R"("mood":"dry")", R"("mood":"bright")", [](ImGuiTestContext& user) {
        user.ItemClick(widget("/objects/keeper/mood"));
        choose(user, "**/bright");
    });
}

TEST_F(InspectorEdits, AReferenceIsPicked) {
    edit("/objects/keeper", R"("mesh":"keeper","material":"wool")", R"("mesh":"boy","material":"wool")",
        [](ImGuiTestContext& user) {
            user.ItemClick(widget("/objects/keeper/mesh"));
            user.Yield(2);
            user.KeyChars("thin");
            user.Yield(2);
            user.KeyCharsReplace("boy");
            user.Yield(2);
            choose(user, "**/##boy");
        });
}

TEST_F(InspectorEdits, ABitIsFlipped) {
    edit("/objects/lantern", R"("visible":true,"layers":9,"weight":1.4)", R"("visible":true,"layers":11,"weight":1.4)",
        [](ImGuiTestContext& user) { user.ItemClick(widget("/objects/lantern/layers", "1")); });
}

TEST_F(InspectorEdits, ANameIsChangedByDoubleClick) {
    edit("/objects/lantern", R"("name":"Lantern","kind":"item")", R"("name":"Lamp","kind":"item")",
        [](ImGuiTestContext& user) {
            const ImGuiWindow* const values = region("##rows")->ParentWindow;
            user.MouseMoveToPos({values->Pos.x + 12.0f, values->Pos.y + 8.0f});
            user.MouseDoubleClick();
            user.Yield(2);
            user.KeyCharsReplaceEnter("Lamp");
        });
}

TEST_F(InspectorEdits, AnEntryOfAListIsPicked) {
    edit("/objects/marta", R"("sells":["rope","shell"])", R"("sells":["rope","lantern"])", [](ImGuiTestContext& user) {
        ImGuiWindow* const list = around("/objects/marta/sells", "##list");
        IM_CHECK(list != nullptr);
        user.MouseMoveToPos({list->Pos.x + 20.0f, list->Pos.y + ImGui::GetTextLineHeightWithSpacing() * 1.5f});
        user.MouseClick();
        user.Yield(2);
        user.ItemClick(ImHashStr("##val", 0, widget("/objects/marta/sells", "1")));
        user.Yield(2);
        choose(user, "**/##lantern");
    });
}

}
}
