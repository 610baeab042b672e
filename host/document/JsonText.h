#pragma once

#include <string>
#include <string_view>

#include <rapidjson/document.h>

namespace QuorvaneEngine {

/** Appends a JSON string with its quotes: characters as they are, but quotes, backslashes and control characters escaped. */
void appendJsonString(std::string& out, std::string_view text);

/** Appends a JSON number: integers without a point, doubles with one, in the fewest digits that read back as the same double.
    JSON has no word for what is not finite, which becomes `null`.
    @param number   must be a number */
void appendJsonNumber(std::string& out, const rapidjson::Value& number);

/** Appends any value as compact JSON text, on one line. Takes no stack for depth. */
void appendJson(std::string& out, const rapidjson::Value& value);

}
