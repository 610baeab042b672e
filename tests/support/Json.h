#pragma once

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "QuorvaneEditor/ProjectFile.h"

namespace QuorvaneEngine::Test {

/** A value as compact JSON text, to be compared byte for byte. */
inline std::string toText(const rapidjson::Value& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

inline std::string toText(ProjectFile& project) { return toText(project.document()); }

/** What a test's own text says. A mistake in it ends the test. */
inline rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    if(document.HasParseError()) {
        ADD_FAILURE() << "not JSON: " << json;
        std::abort();
    }
    return document;
}

inline void load(ProjectFile& project, const std::string& json) { project.replace(parsed(json)); }

}
