#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "editor/Ui/Picker.h"

namespace QuorvaneEngine::Test {

/** The list that a picker opens. */
class UiResourcePopup: public testing::Test, protected Picker {
protected:
    using Ids = std::vector<std::string>;

    static constexpr const char* Search = "//$FOCUSED/##resourcepickersearch";

    /** The IDs that are listed. */
    Ids listed() const {
        Ids ids;
        for(const Containers::StringView id: ui.resourceResults) ids.emplace_back(id.data(), id.size());
        return ids;
    }

    /** Clicks the row of a resource, by its ID. */
    static void choose(ImGuiTestContext& user, const char* id) {
        user.ItemClick((std::string{"**/##"} + id).c_str());
        user.Yield(3);
    }

    /** A project with so many resources, of the names "name 0", "name 1" and so on. */
    static std::string idsOf(int count, const char* collection) {
        std::string json = std::string{R"({"value":null,")"} + collection + "\":{";
        for(int i = 0; i != count; ++i)
            json += (i ? ",\"k" : "\"k") + std::to_string(i) + R"(":{"name":"name )" + std::to_string(i) + "\"}";
        return json + "}}";
    }
};

}
