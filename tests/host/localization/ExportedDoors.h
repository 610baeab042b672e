#pragma once

#include <map>
#include <string>

namespace QuorvaneEngine {

/** Contents of files by their paths, as @ref TestFolder::files() has them. */
using Files = std::map<std::string, std::string>;

/** A project of a door, and what an export writes of it. */
inline constexpr const char* Doors =
    R"({"objects": {"door": {"text": "Open", "hint": "Knock"}}, "name": "Game", "localization": {"terms": {
    "door.text": {"sourceText": "/objects/door/text", "translatable": true},
    "door.hint": {"sourceText": "/objects/door/hint", "translatable": true},
    "name": {"sourceText": "name", "translatable": false}},
    "translations": {"de": {"door.hint": {"text": "Klopfen"}, "door.text": {"text": ""}, "name": {"text": "Spiel"}}}}})";

inline constexpr const char* English = "{\n  \"door\": {\n    \"text\": \"Open\",\n    \"hint\": \"Knock\"\n  }\n}\n";
inline constexpr const char* German = "{\n  \"door\": {\n    \"hint\": \"Klopfen\"\n  }\n}\n";

}
