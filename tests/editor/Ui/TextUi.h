#pragma once

#include <gtest/gtest.h>

#include "editor/Ui/BoundUi.h"

namespace QuorvaneEngine::Test {

/** Two inputs of one line each, and what is no text. */
class UiTextInput: public BoundUi {
protected:
    UiTextInput() { loadProject(R"({"a":{"name":"old","other":"another","empty":"","null":null},"first":false})"); }

    /** Draws two inputs. */
    bool use(const GuiTest::Script& script) {
        return run(
            [this] {
                changed += ui.inputText("a/name");
                ui.inputText("a/other");
            },
            script);
    }

    /** Values of every type but a text, and their names, of which one is not there. */
    static constexpr char Wrong[] = R"({"null":null,"number":2.5,"true":true,"object":{},"list":["a"],"first":false})";
    static constexpr const char* WrongNames[]{"null", "number", "true", "object", "list", "missing"};

    static constexpr char Name[] = "//Window/a/name/##val";
    static constexpr char Other[] = "//Window/a/other/##val";

    int changed = 0;
};

}
