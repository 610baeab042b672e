#pragma once

#include <string>

#include <gtest/gtest.h>

#include <Corrade/Containers/StringView.h>

#include <rapidjson/document.h>

#include "JsonText.h"

namespace QuorvaneEngine {

inline Corrade::Containers::StringView view(const std::string& text) { return {text.data(), text.size()}; }

/** A document from JSON text that must be valid. Doubles are read exactly. */
inline rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(json.data(), json.size());
    EXPECT_FALSE(document.HasParseError()) << json;
    return document;
}

inline std::string printed(const rapidjson::Value& value) {
    std::string text;
    appendJson(text, value);
    return text;
}

/** The same, or "nothing" for null. */
inline std::string printed(const rapidjson::Value* value) { return value ? printed(*value) : "nothing"; }

}
