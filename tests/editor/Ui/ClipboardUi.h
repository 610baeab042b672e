#pragma once

#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "Ui/Scope.h"
#include "editor/Ui/BoundUi.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine::Test {

/** Values that are copied and pasted. */
class UiClipboard: public BoundUi {
protected:
    UiClipboard() {
        loadProject(R"({"three":[1,2,3],"two":[1.5,2.5],"number":2.5,"yes":true,"no":false,"text":"some text",)"
                    R"("object":{"a":{"b":1}},"nothing":null,"list":[[],[]],"first":false})");
    }

    /** Copies a value as a widget of it would. */
    std::string copied(const char* name) {
        std::string text;
        frames(
            [&] {
                const Scope scope{&ui, name};
                ui.copyValue();
                text = ImGui::GetClipboardText();
            },
            1);
        return text;
    }

    /** Pastes a text onto a value; what was warned of. */
    std::string pasted(const std::string& text, const char* name) {
        const CapturedOutput output;
        frames(
            [&] {
                const Scope scope{&ui, name};
                ImGui::SetClipboardText(text.c_str());
                ui.pasteValue();
            },
            1);
        EXPECT_EQ(output.error(), "");
        return output.warning();
    }
};

}
