#include "QuorvaneEditor/ProjectFile.h"

#include <cctype>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "ChangeManager.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TestDocument.h"

namespace QuorvaneEngine {

namespace {

rapidjson::Document withTerms(unsigned count) {
    std::string json = R"({"localization":{"terms":{)";
    for(unsigned i = 0; i != count; ++i)
        json += (i ? ",\"" : "\"") + std::to_string(i) + R"(":{"sourceText":"/t)" + std::to_string(i) + R"("})";
    return parsed(json + "}}}");
}

}

TEST(ProjectFile, BeginsAsAnEmptyObjectAtRevisionZero) {
    ProjectFile project;
    EXPECT_EQ(printed(project.document()), "{}");
    EXPECT_EQ(project.revision(), 0);
    EXPECT_EQ(project.lookupCount(), 0u);
    EXPECT_EQ(&project.allocator(), &project.document().GetAllocator());
}

TEST(ProjectFile, ReplaceKeepsTheAddressOfTheRootAndCountsARevision) {
    ProjectFile project;
    const rapidjson::Document* const root = &project.document();
    project.replace(parsed(R"({"a":1})"));
    EXPECT_EQ(&project.document(), root);
    EXPECT_EQ(printed(project.document()), R"({"a":1})");
    EXPECT_EQ(project.revision(), 1);
    EXPECT_EQ(&project.allocator(), &project.document().GetAllocator());
}

TEST(ProjectFile, ReplaceForgetsWhatWasIndexed) {
    ProjectFile project;
    for(const unsigned count: {100u, 200u, 50u}) {
        project.replace(withTerms(count));
        EXPECT_TRUE(project.getValue("/localization/terms/49", false));
        EXPECT_EQ(bool(project.getValue("/localization/terms/150", false)), count == 200);
    }
}

// Memory that one document has left is often the next one's: same addresses, same sizes, other keys.
TEST(ProjectFile, DocumentsAtTheAddressOfOlderOnesAreNotTakenForThem) {
    ProjectFile project;
    for(int run = 0; run != 20; ++run) {
        std::string json = R"({"meshes":{)";
        for(int i = 0; i != 100; ++i) {
            const std::string id = std::to_string(10000 + 1000 * (run % 10) + i);
            json += "\"" + id + R"(":{"name":"n)" + id + "\"},";
        }
        project.replace(parsed(json + R"("last":{"name":"last"}}})"));
        for(int i = 0; i != 100; ++i) {
            const std::string id = std::to_string(10000 + 1000 * (run % 10) + i);
            ASSERT_TRUE(project.getValue(view("/meshes/" + id), false)) << run;
            // Every other document, so that names are remembered of one whose memory is reused.
            ASSERT_TRUE(run % 2 == 0 || project.resourceByName("meshes", view("n" + id)).existsInProject()) << run;
        }
    }
}

TEST(ProjectFile, RootMayBeAnyValue) {
    ProjectFile project;
    for(const char* json: {"null", "true", "1", R"("a")", "[]", R"([{"a":1}])"}) {
        project.replace(parsed(json));
        EXPECT_EQ(project.getValue("", false), &project.document()) << json;
        EXPECT_EQ(project.getValue("/a", false), nullptr) << json;
        EXPECT_EQ(project.root().value(), &project.document()) << json;
        project.noteChange("/a/b");
    }
    EXPECT_EQ(printed(project.getValue("/0/a", false)), "1");
}

TEST(ProjectFile, ValueIsFoundByPointer) {
    ProjectFile project;
    project.replace(parsed(R"({"":{"":1},"a/b":{"m~n":[0,{"x":2}]},"a":3})"));
    EXPECT_EQ(project.getValue("", false), &project.document());
    EXPECT_EQ(printed(project.getValue("//", false)), "1");
    EXPECT_EQ(printed(project.getValue("/a~1b/m~0n/1/x", false)), "2");
    for(const char* path: {"a", "/a/b", "/a~1b/m~0n/01/x", "/a~1b/m~0n/-", "/a~1b/m~n", "#/a", "/a~", "/b"})
        EXPECT_EQ(project.getValue(path, false), nullptr) << path;
}

TEST(ProjectFile, LargeObjectsAnswerAsSmallOnes) {
    ProjectFile project;
    project.replace(withTerms(1000));
    for(const unsigned i: {0u, 1u, 500u, 999u}) {
        const std::string path = "/localization/terms/" + std::to_string(i) + "/sourceText";
        EXPECT_EQ(printed(project.getValue(view(path), false)), "\"/t" + std::to_string(i) + "\"");
    }
    EXPECT_EQ(project.getValue("/localization/terms/1000", false), nullptr);
    EXPECT_EQ(project.getValue("/localization/terms/01", false), nullptr);
}

TEST(ProjectFile, DefaultsAnswerForWhatIsMissing) {
    ProjectFile project;
    project.replace(parsed(R"({"languages":{"en":{"isDefault":true},"de":{}},"localization":1})"));
    EXPECT_EQ(printed(project.getValue("/languages/en/isDefault", true)), "true");
    EXPECT_EQ(printed(project.getValue("/languages/de/isDefault", true)), "false");
    EXPECT_EQ(printed(project.getValue("/languages/fr/isDefault", true)), "false");
    EXPECT_EQ(printed(project.getValue("/localization/terms/door/translatable", true)), "false");
    EXPECT_EQ(project.getValue("/localization/terms/door/other", true), nullptr);
    EXPECT_EQ(project.getValue("/localization/terms/~/translatable", true), nullptr);
    EXPECT_EQ(project.getValue("/languages/de/isDefault", false), nullptr);
}

TEST(ProjectFile, DefaultsAreNotPartOfTheDocument) {
    ProjectFile project;
    project.getValue("/languages/de/isDefault", true);
    EXPECT_EQ(printed(project.document()), "{}");
}

TEST(ProjectFile, MemberHasExactlyTheKey) {
    ProjectFile project;
    project.replace(parsed(R"({"a/b":1,"~":2,"a":{"b":3},"list":[4]})"));
    rapidjson::Document& root = project.document();
    EXPECT_EQ(printed(project.member(root, "a/b")), "1");
    EXPECT_EQ(printed(project.member(root, "~")), "2");
    EXPECT_EQ(project.member(root, "a~1b"), nullptr);
    EXPECT_EQ(project.member(root, "/a"), nullptr);
    EXPECT_EQ(project.member(*project.member(root, "list"), "0"), nullptr);
}

TEST(ProjectFile, NotedChangesCountAsRevisions) {
    ProjectFile project;
    project.noteChange("/a");
    project.noteChange("/a");
    project.noteChange("");
    project.noteChange("no pointer");
    EXPECT_EQ(project.revision(), 4);
}

TEST(ProjectFile, NotedChangesAreFoundAtOnce) {
    ProjectFile project;
    project.replace(withTerms(1000));
    auto& allocator = project.allocator();
    rapidjson::Value& terms = *project.getValue("/localization/terms", false);
    ASSERT_TRUE(project.getValue("/localization/terms/5", false));

    terms.EraseMember("5");
    project.noteChange("/localization/terms/5/sourceText");
    EXPECT_EQ(project.getValue("/localization/terms/5", false), nullptr);
    EXPECT_EQ(printed(project.getValue("/localization/terms/999/sourceText", false)), R"("/t999")");

    terms.AddMember("5", rapidjson::Value{1}, allocator);
    project.noteChange("/localization/terms/5");
    EXPECT_EQ(printed(project.getValue("/localization/terms/5", false)), "1");

    rapidjson::Value copy{withTerms(100)["localization"]["terms"], allocator};
    terms = copy;
    project.noteChange("/localization/terms");
    EXPECT_TRUE(project.getValue("/localization/terms/99", false));
    EXPECT_EQ(project.getValue("/localization/terms/100", false), nullptr);
}

TEST(ProjectFile, LookUpsAreCountedOnceEach) {
    ProjectFile project;
    project.replace(parsed(R"({"a":{"b":{"c":1}}})"));
    EXPECT_EQ(project.lookupCount(), 0u);
    project.getValue("/a/b/c", false);
    EXPECT_EQ(project.lookupCount(), 1u);
    project.getValue("/missing", true);
    project.member(project.document(), "a");
    project.root()["a"];
    project.root()["/a"];
    project.root().member("x");
    project.resourceByName("a", "b");
    EXPECT_EQ(project.lookupCount(), 7u);
    project.noteChange("/a/b");
    project.root();
    for(const Containers::StringView key: project.root()) EXPECT_EQ(key, "a");
    EXPECT_EQ(project.lookupCount(), 7u);
}

TEST(ProjectFile, ReadingAllocatesNothing) {
    ProjectFile project;
    project.replace(withTerms(1000));
    ASSERT_TRUE(project.getValue("/localization/terms/5", false));
    const std::size_t before = allocationCount();
    const bool isFound = project.getValue("/localization/terms/7/sourceText", true);
    const bool isDefault = project.getValue("/localization/terms/a~1b/translatable", true);
    const bool isMissing = !project.root()["localization"]["terms"].member("missing").existsInProject();
    EXPECT_EQ(allocationCount(), before);
    EXPECT_TRUE(isFound);
    EXPECT_TRUE(isDefault);
    EXPECT_TRUE(isMissing);
}

class ProjectFileUnderChanges: public testing::TestWithParam<unsigned> {};

TEST_P(ProjectFileUnderChanges, AgreesWithAScanAfterEveryChange) {
    std::mt19937 random{GetParam()};
    ProjectFile project;
    project.replace(withTerms(50));
    ChangeManager changes{project};
    const auto anyPath = [&] {
        // No digits alone: those would create arrays.
        const std::string term = "k" + std::to_string(random() % 120);
        switch(random() % 10) {
        case 0: return "/localization/translations/l" + std::to_string(random() % 2) + "/" + term;
        case 1: return "/localization/translations/l" + std::to_string(random() % 2) + "/" + term + "/text";
        case 2: return "/t" + term;
        case 3: return random() % 50 ? "/localization/terms/" + term : std::string{"/localization/terms"};
        default: return "/localization/terms/" + term + (random() % 2 ? "/translatable" : "/sourceText");
        }
    };
    std::size_t found = 0, large = 0;
    for(int step = 0; step != 5000; ++step) {
        const std::string path = anyPath();
        const unsigned action = random() % 10;
        if(action < 5) {
            // Containers are set as a whole, so that what lies below stays a container.
            rapidjson::Value value{1};
            if(path == "/localization/terms")
                value.CopyFrom(withTerms(random() % 100)["localization"]["terms"], project.allocator());
            else if(path[1] == 'l' && std::isdigit(path.back()))
                value.SetObject().AddMember("text", step, project.allocator());
            changes.pushChange(view(path), value, random() % 2);
        } else if(action < 8) changes.pushRemoval(view(path));
        else
            for(unsigned i = random() % 20; i && (action == 8 ? changes.canUndo() : changes.canRedo()); --i)
                action == 8 ? changes.undoLast() : changes.redoLastUndo();
        large += project.root()["/localization/terms"].size() > 32;
        for(int i = 0; i != 10; ++i) {
            const std::string asked = i ? anyPath() : path;
            rapidjson::Value* const value = project.getValue(view(asked), false);
            ASSERT_EQ(value, JsonObject::valueByPointer(project.document(), view(asked))) << step << " " << asked;
            found += value != nullptr;
        }
    }
    EXPECT_GT(found, 2000u);
    EXPECT_GT(large, 1000u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ProjectFileUnderChanges, testing::Range(1u, 5u));

TEST(ProjectFile, DeepDocumentsAreReadAndReplaced) {
    rapidjson::Document document{rapidjson::kArrayType};
    for(int i = 0; i != 1000000; ++i) {
        rapidjson::Value outer{rapidjson::kArrayType};
        outer.PushBack(static_cast<rapidjson::Value&>(document), document.GetAllocator());
        static_cast<rapidjson::Value&>(document) = outer;
    }
    ProjectFile project;
    project.replace(std::move(document));
    std::string path;
    for(int i = 0; i != 1000000; ++i) path += "/0";
    ASSERT_TRUE(project.getValue(view(path), false));
    EXPECT_TRUE(project.getValue(view(path), false)->IsArray());
    EXPECT_EQ(printed(project.document()).size(), 2000002u);
    project.replace(parsed("{}"));
}

}
