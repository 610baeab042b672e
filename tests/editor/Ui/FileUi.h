#pragma once

#include <string>
#include <vector>

#include <imgui.h>

#include "QuorvaneEditor/EditorData.h"
#include "editor/Ui/BoundUi.h"
#include "support/DialogProgram.h"

namespace QuorvaneEngine::Test {

/** A file field for the value "/a/file", and another input. What a dialog answers is said before. */
class FileUi: public BoundUi {
protected:
    static constexpr const char* Field = "//Window/a/file/##value";
    static constexpr const char* Button = "//Window/a/file/...";

    FileUi() {
        ui.editorData = &data;
        data.projectFolder = "/projects/game";
        loadProject(R"({"a":{"file":"pictures/old.png"},"first":false})");
    }

    bool draw() {
        return ui.fileSelect("a/file", Containers::StringView{"Choose a picture!"}.prefix(16),
            Containers::ArrayView<const Containers::StringView>{filters.data(), filters.size()});
    }

    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                start = ImGui::GetCursorScreenPos();
                width = ImGui::GetContentRegionAvail().x;
                const Int before = project.revision();
                const bool isPushed = draw();
                EXPECT_EQ(isPushed, project.revision() != before);
                pushes += isPushed;
                // The tab key leaves an input for another one.
                ImGui::InputText("elsewhere", other, sizeof(other));
            },
            script);
    }

    bool choose() {
        return use([](ImGuiTestContext& user) {
            user.ItemClick(Button);
            user.Yield(2);
        });
    }

    static void type(ImGuiTestContext& user, const char* text) {
        user.ItemClick(Field);
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyChars(text);
        user.Yield(2);
    }

    std::string file() { return value("/a/file"); }

    DialogProgram dialog;
    EditorData data{project};
    std::vector<Containers::StringView> filters{"Pictures", "*.png *.jpg"};

    /** Where the line of the field begins, and its width. */
    ImVec2 start;
    float width = 0.0f;

    /** The frames in which the field said that it pushed a change. */
    int pushes = 0;

private:
    char other[8] = "";
};

}
