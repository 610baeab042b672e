#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "support/Json.h"

namespace QuorvaneEngine::Test {

/** The log of a change manager on a small project. */
class ChangeManagerLog: public testing::Test {
protected:
    ChangeManagerLog() { load(project, R"({"a":0,"b":0,"c":0,"x":0,"y":0,"text":"t","list":[1,2]})"); }

    void push(const char* path, int value, bool merge = false) {
        changes.pushChange(path, rapidjson::Value{value}, merge);
    }

    /** An entry as "path old -> new, group". */
    std::string entry(std::size_t index) const {
        const Change& change = changes.changes()[index];
        return std::string{change.path.data(), change.path.size()} + " " +
            (change.oldValue ? toText(*change.oldValue) : "()") + " -> " +
            (change.newValue ? toText(*change.newValue) : "()") + ", " + std::to_string(change.group);
    }

    std::vector<std::string> log() const {
        std::vector<std::string> log;
        for(std::size_t i = 0; i != changes.changes().size(); ++i) log.push_back(entry(i));
        return log;
    }

    using Log = std::vector<std::string>;

    ProjectFile project;
    ChangeManager changes{project};
};

}
