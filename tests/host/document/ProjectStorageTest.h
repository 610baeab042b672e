#pragma once

#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "MemoryFileSystem.h"
#include "ProjectStorage.h"
#include "WarnedTest.h"

namespace QuorvaneEngine {

/** A small project in memory, and the warning of the last call. */
class ProjectStorageTest: public WarnedTest {
protected:
    inline static const std::string Project = "{\n"
                                              "  \"languages\": {\n"
                                              "    \"en\": {\"isDefault\": true}\n"
                                              "  },\n"
                                              "  \"localization\": {\n"
                                              "    \"terms\": {\n"
                                              "      \"a\": {\"sourceText\": \"/objects/o/text\"}\n"
                                              "    }\n"
                                              "  },\n"
                                              "  \"objects\": {\n"
                                              "    \"o\": {\"text\": \"Hello\"}\n"
                                              "  }\n"
                                              "}\n";
    inline static const std::string German = "{\n  \"a\": {\"text\": \"Hallo\"},\n  \"b\": {\"text\": \"\"}\n}\n";
    inline static const std::string French = "{\n  \"a\": {\"text\": \"Bonjour\"}\n}\n";

    ProjectStorageTest() {
        disk.put("/p/project.json", Project);
        disk.put("/p/localization/de.json", German);
        disk.put("/p/localization/fr.json", French);
    }

    bool open(const std::string& folder = "/p") { return open(storage, folder); }

    bool open(ProjectStorage& opened, const std::string& folder) {
        return warned([&] { return opened.open({folder.data(), folder.size()}, document); });
    }

    bool save() {
        return warned([&] { return storage.save(document); });
    }

    rapidjson::Value& translations() { return document["localization"]["translations"]; }

    rapidjson::Value copy(const rapidjson::Value& value) { return rapidjson::Value{value, document.GetAllocator()}; }

    /** @ref Project as it is written. */
    static std::string written() {
        std::string bytes = Project;
        for(const auto& [from, to]: {std::pair{"{\"isDefault\": true}", "{\n      \"isDefault\": true\n    }"},
                std::pair{"{\"text\": \"Hello\"}", "{\n      \"text\": \"Hello\"\n    }"}})
            bytes.replace(bytes.find(from), std::string{from}.size(), to);
        return bytes;
    }

    MemoryFileSystem disk;
    ProjectStorage storage{disk};
    rapidjson::Document document{rapidjson::kObjectType};
};

}
