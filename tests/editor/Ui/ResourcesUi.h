#pragma once

#include <string>

#include <gtest/gtest.h>

#include "editor/Ui/Picker.h"

namespace QuorvaneEngine::Test {

/** The field of a picker. */
class UiResources: public testing::Test, protected Picker {
protected:
    /** What stands beside a value that refers to no resource. */
    static constexpr const char* Sign = "\xef\x81\xb1";

    static constexpr const char* PickButton = "//Window/value/\xef\x87\xbb";

    /** Some textures, and a value. */
    static std::string withValue(const std::string& value) {
        std::string json = SomeTextures;
        return json.replace(json.find("null"), 4, value);
    }
};

}
