#include "ResourceNames.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "PathTokens.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TestDocument.h"

namespace QuorvaneEngine {

namespace {

/** The independent answer: walks the whole collection. */
rapidjson::Value* walked(rapidjson::Document& document, const std::string& name) {
    for(auto& entry: document["meshes"].GetObject()) {
        const rapidjson::Value* const own = scanMembers(entry.value, "name");
        if(own && own->IsString() && name == own->GetString()) return &entry.value;
    }
    return nullptr;
}

}

TEST(ResourceNames, FindsTheFirstEntryWithTheName) {
    for(const int count: {3, 32, 33, 200}) {
        ProjectFile project;
        rapidjson::Document document = parsed(R"({"meshes":{}})");
        for(int i = 0; i != count; ++i) {
            rapidjson::Value entry{rapidjson::kObjectType};
            const std::string name = "name " + std::to_string(i / 2);
            entry.AddMember("name", rapidjson::Value{name.data(), document.GetAllocator()}, document.GetAllocator());
            document["meshes"].AddMember(
                rapidjson::Value{std::to_string(i).data(), document.GetAllocator()}, entry, document.GetAllocator());
        }
        project.replace(std::move(document));
        EXPECT_EQ(project.resourceByName("meshes", "name 1").value(), project.getValue("/meshes/2", false)) << count;
        EXPECT_FALSE(project.resourceByName("meshes", "name").existsInProject()) << count;
        EXPECT_FALSE(project.resourceByName("textures", "name 1").existsInProject()) << count;
    }
}

TEST(ResourceNames, EntriesOfOtherTypesHaveNoName) {
    ProjectFile project;
    std::string json = R"({"meshes":{"a":1,"b":"name","c":[],"d":{"name":1},"e":{"name":null},"f":{"name":"1"})";
    for(int i = 0; i != 100; ++i) json += ",\"" + std::to_string(i) + "\":{}";
    project.replace(parsed(json + "}}"));
    EXPECT_EQ(project.resourceByName("meshes", "1").value(), project.getValue("/meshes/f", false));
    EXPECT_FALSE(project.resourceByName("meshes", "").existsInProject());
    for(const char* other: {"null", "[]", "1", R"("text")", "true"}) {
        project.replace(parsed(std::string{R"({"meshes":)"} + other + "}"));
        EXPECT_FALSE(project.resourceByName("meshes", "1").existsInProject()) << other;
    }
    project.replace(parsed("[]"));
    EXPECT_FALSE(project.resourceByName("meshes", "1").existsInProject());
}

TEST(ResourceNames, EntriesThatMovedWithoutANoteAreFound) {
    ProjectFile project;
    std::string json = R"({"meshes":{"0":{"name":"0"})";
    for(int i = 1; i != 100; ++i) json += ",\"" + std::to_string(i) + R"(":{"name":")" + std::to_string(i) + "\"}";
    project.replace(parsed(json + "}}"));
    ASSERT_TRUE(project.resourceByName("meshes", "50").existsInProject());
    project.document()["meshes"].EraseMember("10");
    EXPECT_EQ(project.resourceByName("meshes", "50").value(), project.getValue("/meshes/50", false));
    EXPECT_FALSE(project.resourceByName("meshes", "10").existsInProject());
}

TEST(ResourceNames, RandomChangesAgreeWithAWalk) {
    std::mt19937 random{3};
    ProjectFile project;
    project.replace(parsed(R"({"meshes":{}})"));
    rapidjson::Document& document = project.document();
    for(int step = 0; step != 20000; ++step) {
        rapidjson::Value& meshes = document["meshes"];
        auto& allocator = document.GetAllocator();
        const std::string id = std::to_string(random() % 100);
        const std::string name = "name " + std::to_string(random() % 40);
        const std::string path = "/meshes/" + id;
        rapidjson::Value* const entry = scanMembers(meshes, view(id));
        if(!entry) {
            rapidjson::Value added{rapidjson::kObjectType};
            added.AddMember("x", 1, allocator);
            meshes.AddMember(rapidjson::Value{id.data(), allocator}, added, allocator);
            project.noteChange(view(path + "/x"));
        } else if(random() % 3 == 0) {
            meshes.EraseMember(id.data());
            // As if its last member had been removed, and the emptied entry with it.
            const std::string removed = random() % 2 ? path : path + "/x";
            project.noteChange(view(removed));
        } else {
            entry->RemoveAllMembers();
            entry->AddMember("name", rapidjson::Value{name.data(), allocator}, allocator);
            const std::string changed = random() % 2 ? path : path + "/name";
            project.noteChange(view(changed));
        }
        if(random() % 2) continue;
        const std::string wanted = "name " + std::to_string(random() % 40);
        ASSERT_EQ(project.resourceByName("meshes", view(wanted)).value(), walked(document, wanted)) << step;
    }
}

}
