#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "EditorSession.h"
#include "JsonReader.h"

namespace QuorvaneEngine {

inline std::string copied(const Containers::StringView text) { return {text.data(), text.size()}; }

inline Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

/** A project in memory, of JSON text. */
class TestProject {
public:
    explicit TestProject(const std::string& json) {
        rapidjson::Document document;
        JsonError error;
        EXPECT_TRUE(JsonReader::read(viewed(json), document, error)) << json << copied(error.reason);
        session.replaceDocument(std::move(document));
    }

    /** The whole document. */
    std::string text() { return printed(session.project().document()); }

    /** The value at a path as JSON, "nothing" where there is none. */
    std::string at(const std::string& path) {
        const rapidjson::Value* const value = session.project().getValue(viewed(path), false);
        return value ? printed(*value) : "nothing";
    }

    QuorvaneEditor& editor() { return session.editor(); }
    ProjectFile& project() { return session.project(); }

    /** How many changes are in the log. */
    std::size_t changeCount() { return session.changes().changes().size(); }

    static std::string printed(const rapidjson::Value& value) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
        value.Accept(writer);
        return {buffer.GetString(), buffer.GetSize()};
    }

    EditorSession session;
};

/** Calls @p act, and compares the whole document after one undo with that before, and after one redo with that after. */
template <class Act> void expectOneUndoStep(TestProject& project, Act&& act) {
    const std::string before = project.text();
    act();
    const std::string after = project.text();
    EXPECT_NE(before, after);
    project.session.undo();
    EXPECT_EQ(project.text(), before);
    EXPECT_FALSE(project.session.changes().canUndo());
    project.session.redo();
    EXPECT_EQ(project.text(), after);
    EXPECT_FALSE(project.session.changes().canRedo());
}

}
