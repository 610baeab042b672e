#pragma once

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeGroup.h"
#include "EditorSession.h"
#include "JsonReader.h"
#include "MemoryFileSystem.h"
#include "WarnedTest.h"

namespace QuorvaneEngine {

/** What the reader of the project's files makes of JSON text, which must be valid. */
inline rapidjson::Document documentOf(const std::string& json) {
    rapidjson::Document document;
    JsonError error;
    EXPECT_TRUE(JsonReader::read({json.data(), json.size()}, document, error)) << json;
    return document;
}

/** A session on two projects in memory, and the warning of the last call. */
class EditorSessionTest: public WarnedTest {
protected:
    EditorSessionTest() {
        disk.put("/p/project.json",
            R"({"languages": {"en": {"isDefault": true}}, "images": {"b": {"name": "B"}, "a": {"name": "A"}}, )"
            R"("localization": {"terms": {"t": {"translatable": true}}}, "list": [1, 2]})");
        disk.put("/p/localization/de.json", R"({"t": {"text": "Hallo"}})");
        disk.put("/q/project.json", R"({"meshes": {"m": {}}})");
    }

    bool open(const char* folder = "/p") {
        return warned([&] { return session.open(folder); });
    }
    bool save() {
        return warned([&] { return session.save(); });
    }

    void push(const char* path, int value, bool merge = false) {
        session.changes().pushChange(path, rapidjson::Value{value}, merge);
    }

    std::string content() { return textOf(session.project().document()); }

    MemoryFileSystem disk;
    EditorSession session{nullptr, &disk};
};

}
