#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "TestFolder.h"
#include "end_to_end/Program.h"

namespace QuorvaneEngine::Test {

/** A project of two languages and few terms. */
inline constexpr const char* Small = R"({
  "languages": {"en": {"isDefault": true}, "de": {}},
  "localization": {"terms": {
    "door": {"sourceText": "/objects/door/text", "translatable": true},
    "key": {"sourceText": "/objects/key/text", "translatable": true},
    "brand": {"sourceText": "/objects/brand/text", "translatable": false}}},
  "objects": {"door": {"text": "Door"}, "key": {"text": "Key"}, "brand": {"text": "Quiet Harbour"}}
})";

/** The program, started as a pipeline would, in a folder of its own. */
class LocalizeProgram: public testing::Test {
protected:
    LocalizeProgram() {
        desk.write("small/project.json", Small);
        desk.write("small/localization/de.json", R"({"door": {"text": "T\u00fcr"}})");
    }

    /** Puts a copy of the sample project beside, in the folder "game". */
    void copySample() {
        std::filesystem::copy(
            QUORVANE_SOURCE_DIR "/samples/lighthouse", desk / "game", std::filesystem::copy_options::recursive);
        std::filesystem::remove_all(desk / "game/.editor");
    }

    ProgramResult run(
        std::vector<std::string> arguments, const std::vector<std::string>& environment = {"LC_ALL=C.UTF-8"}) const {
        arguments.insert(arguments.begin(), QUORVANE_LOCALIZE);
        return runProgram(arguments, desk.path, environment);
    }

    /** Output, error output and exit code, for a comparison at once. */
    std::string told(std::vector<std::string> arguments) const {
        const ProgramResult result = run(std::move(arguments));
        return result.out + "--\n" + result.error + "-- " + std::to_string(result.exitCode);
    }

    /** Standard output as JSON. */
    rapidjson::Document json(std::vector<std::string> arguments, const int exitCode) const {
        arguments.push_back("--json");
        const ProgramResult result = run(std::move(arguments));
        rapidjson::Document document;
        document.Parse(result.out.data(), result.out.size());
        EXPECT_FALSE(document.HasParseError()) << result.out;
        if(!document.IsObject()) document.SetObject();
        EXPECT_EQ(result.exitCode, exitCode) << result.error;
        EXPECT_TRUE(document.HasMember("exitCode") && document["exitCode"].GetInt() == exitCode) << result.out;
        return document;
    }

    TestFolder desk;
};

}
