#include "QuorvaneEditor/ValueAccess.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "TestDocument.h"

namespace QuorvaneEngine {

TEST(ValueAccess, KeyIsAMemberAndAPathBeginsAtTheRoot) {
    ProjectFile project;
    project.replace(parsed(R"({"a":{"b":1,"a":2},"b":3})"));
    const ValueAccess a = project.root()["a"];
    EXPECT_EQ(printed(a["b"].value()), "1");
    EXPECT_EQ(printed(a["/b"].value()), "3");
    EXPECT_EQ(printed(a["/a/a"].value()), "2");
    EXPECT_FALSE(a["a/b"].existsInProject());
}

TEST(ValueAccess, EmptyKeyIsTheMemberWithoutAName) {
    ProjectFile project;
    project.replace(parsed(R"({"":{"":1}})"));
    EXPECT_EQ(printed(project.root()[""][""].value()), "1");
}

TEST(ValueAccess, MemberTakesAnyKeyAsItIs) {
    ProjectFile project;
    project.replace(parsed(R"({"/x":1,"x":2,"~1":3,"%":4})"));
    EXPECT_EQ(printed(project.root().member("/x").value()), "1");
    EXPECT_EQ(printed(project.root()["/x"].value()), "2");
    EXPECT_EQ(printed(project.root().member("~1").value()), "3");
    EXPECT_EQ(printed(project.root().member("%").value()), "4");
}

TEST(ValueAccess, MissingValueHasNoMembers) {
    ProjectFile project;
    const ValueAccess missing = project.root()["a"]["b"]["c"];
    EXPECT_FALSE(missing.existsInProject());
    EXPECT_EQ(missing.value(), nullptr);
    EXPECT_TRUE(missing.begin() == missing.end());
}

TEST(ValueAccess, NullInTheDocumentExists) {
    ProjectFile project;
    project.replace(parsed(R"({"a":null})"));
    EXPECT_TRUE(project.root()["a"].existsInProject());
}

TEST(ValueAccess, KeysAreAppendedInDocumentOrder) {
    ProjectFile project;
    project.replace(parsed(R"({"b":1,"a":2,"":3})"));
    Containers::Array<Containers::StringView> keys;
    project.root().keys(keys);
    project.root().keys(keys);
    ASSERT_EQ(keys.size(), 6u);
    EXPECT_EQ(keys[0], "b");
    EXPECT_EQ(keys[1], "a");
    EXPECT_EQ(keys[2], "");
    EXPECT_EQ(keys[3], "b");
}

TEST(ValueAccess, IterationYieldsTheSameKeys) {
    ProjectFile project;
    project.replace(parsed(R"({"b":1,"a":2})"));
    std::vector<std::string> keys;
    for(const Containers::StringView key: project.root()) keys.emplace_back(key.data(), key.size());
    EXPECT_EQ(keys, (std::vector<std::string>{"b", "a"}));
}

namespace {

/** Every documented key, as a path with one example for each name that users choose. */
constexpr const char* DocumentedPaths[]{"/languages/de/isDefault", "/localization/terms/door/sourceText",
    "/localization/terms/door/translatable", "/localization/terms/door/note", "/localization/terms/door/maxLength",
    "/localization/strings/door", "/localization/translations/de/door/text",
    "/localization/translations/de/door/source", "/localization/translations/de/door/state",
    "/localization/translations/de/door/note", "/animations/x/name", "/fonts/x/name", "/images/x/name",
    "/materials/x/name", "/meshes/x/name", "/objects/door/name", "/pipelines/x/name", "/shaders/x/name",
    "/skins/x/name", "/textures/x/name"};

constexpr const char* AnyJson[]{"null", "true", "false", "0", "-1", "1.5", "1e300", "18446744073709551615", R"("")",
    R"("text")", "[]", R"([1,"a",{}])", "{}", R"({"a":1})"};

/** Asks everything that can be asked. */
void readAll(ProjectFile& project, const ValueAccess& value, const char* json) {
    const std::string text{json};
    EXPECT_TRUE(value.existsInProject());
    EXPECT_EQ(value.asBool(), text == "true");
    EXPECT_EQ(value.asString(), text == R"("text")" ? "text" : "");
    EXPECT_EQ(value.size(), text == R"([1,"a",{}])" ? 3u : text == R"({"a":1})" ? 1u : 0u);
    EXPECT_EQ(value.isObject(), text[0] == '{');
    EXPECT_EQ(value.member("a").existsInProject(), text == R"({"a":1})");
    EXPECT_FALSE(value["0"].existsInProject());
    EXPECT_FALSE(value["a"]["b"]["/c"]["d"].existsInProject());
    Containers::Array<Containers::StringView> keys;
    value.keys(keys);
    EXPECT_EQ(keys.size(), text == R"({"a":1})" ? 1u : 0u);
    std::size_t walked = 0;
    for(const Containers::StringView key: value) walked += key == "a";
    EXPECT_EQ(walked, keys.size());
    EXPECT_FALSE(project.resourceByName("objects", "no such name").existsInProject());
}

/** A document in which the value at a path is @p json : the path itself, or one that ends early. */
std::string documentWith(const std::string& path, const std::string& json) {
    std::string text, closing;
    for(std::size_t begin = 1; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        text += "{\"" + path.substr(begin, end - begin) + "\":";
        closing += '}';
        begin = end + 1;
    }
    return text + json + closing;
}

}

TEST(ValueAccess, EveryDocumentedKeyMayHoldAnyTypeAtAnyLevel) {
    std::size_t cases = 0;
    for(const std::string path: DocumentedPaths) {
        for(std::size_t end = path.size(); end; end = path.rfind('/', end - 1)) {
            const std::string cut = path.substr(0, end);
            for(const char* const json: AnyJson) {
                SCOPED_TRACE(cut + " = " + json);
                ProjectFile project;
                project.replace(parsed(documentWith(cut, json)));
                readAll(project, project.root()[view(cut)], json);
                // What lies below a value of a wrong type is missing.
                const bool isWhole = cut.size() == path.size();
                EXPECT_EQ(project.root()[view(path)].existsInProject(), isWhole);
                EXPECT_NE(project.getValue(view(path), true), nullptr);
                project.noteChange(view(path));
                ++cases;
            }
        }
    }
    EXPECT_GT(cases, 900u);
}

}
