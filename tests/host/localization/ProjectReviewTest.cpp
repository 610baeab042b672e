#include "ProjectReview.h"

#include <algorithm>
#include <string>
#include <utility>

#include "TestProject.h"

namespace QuorvaneEngine {

/** The lines, with a line break after each. */
static std::string review(TestProject& project) {
    const std::string before = project.text();
    std::string all;
    for(const Containers::String& line: reviewProject(project.project())) all += copied(line) + "\n";
    EXPECT_EQ(project.text(), before);
    EXPECT_EQ(project.changeCount(), 0u);
    return all;
}

static std::string reviewOf(const std::string& json) {
    TestProject project{json};
    return review(project);
}

TEST(ProjectReview, IsQuietAboutTheSampleAndAboutAnEmptyProject) {
    EXPECT_EQ(reviewOf("{}"), "");
    EditorSession session;
    ASSERT_TRUE(session.open(QUORVANE_SOURCE_DIR "/samples/lighthouse"));
    EXPECT_TRUE(reviewProject(session.project()).isEmpty());
}

TEST(ProjectReview, IsQuietAboutWhatAnImportNotes) {
    EXPECT_EQ(
        reviewOf(R"({"localization":{"namespaces":{"ui":{"flat":true,"order":{"de":["a","b"],"fr":[]}},"empty":{}},)"
                 R"("values":{"en":{"n":1,"b":true,"list":[],"none":{}},"de":{"n":"eins"}}}})"),
        "");
}

struct TypeCase {
    /** A project with "@" where the value belongs. */
    const char* project;
    const char* place;
    const char* type;
};

/** A value of every type, and what it is called. */
constexpr std::pair<const char*, const char*> Values[]{{"null", "null"}, {"false", "false"}, {"true", "true"},
    {R"({"a":{}})", "an object"}, {"[1]", "an array"}, {"\"\"", "a string"}, {"7", "a number"}, {"7.5", "a number"},
    {"-1", "a number"}};

static bool fits(const std::string& type, const std::string& value) {
    if(type == "an object") return value[0] == '{';
    if(type == "a string") return value[0] == '"';
    if(type == "true or false") return value == "true" || value == "false";
    if(type == "an array of strings") return false;
    if(type == "a string, a number, true, false, null, or an empty container")
        return value[0] != '{' && value[0] != '[';
    return value == "7";
}

class ReviewOfADocumentedKey: public testing::TestWithParam<TypeCase> {};

TEST_P(ReviewOfADocumentedKey, TellsEveryWrongTypeByFileAndPlace) {
    const TypeCase& key = GetParam();
    for(const auto& [value, name]: Values) {
        std::string json = key.project;
        json.replace(json.find('@'), 1, value);
        const std::string found = reviewOf(json);
        const std::string line = std::string{key.place} + ": is " + name + ", but must be " + key.type + "\n";
        // What stands in a container that fits may be wrong in its turn.
        if(fits(key.type, value)) EXPECT_EQ(found.find(std::string{key.place} + ": is "), std::string::npos) << json;
        else EXPECT_EQ(found.substr(0, line.size()), line) << json << "\n" << found;
    }
}

#define COLLECTION(name)                                                                                               \
    TypeCase{R"({")" name R"(":@})", "project.json: /" name, "an object"},                                             \
        TypeCase{R"({")" name R"(":{"a/b":@}})", "project.json: /" name "/a~1b", "an object"}, TypeCase {              \
        R"({")" name R"(":{"a/b":{"name":@}}})", "project.json: /" name "/a~1b/name", "a string"                       \
    }

INSTANTIATE_TEST_SUITE_P(Keys, ReviewOfADocumentedKey,
    testing::Values(TypeCase{R"({"languages":@})", "project.json: /languages", "an object"},
        TypeCase{R"({"languages":{"de":@}})", "project.json: /languages/de", "an object"},
        TypeCase{R"({"languages":{"de":{"isDefault":@}}})", "project.json: /languages/de/isDefault", "true or false"},
        TypeCase{R"({"localization":@})", "project.json: /localization", "an object"},
        TypeCase{R"({"localization":{"terms":@}})", "project.json: /localization/terms", "an object"},
        TypeCase{R"({"localization":{"terms":{"~":@}}})", "project.json: /localization/terms/~0", "an object"},
        TypeCase{R"({"localization":{"terms":{"":{"sourceText":@}}}})", "project.json: /localization/terms//sourceText",
            "a string"},
        TypeCase{R"({"localization":{"terms":{"a":{"translatable":@}}}})",
            "project.json: /localization/terms/a/translatable", "true or false"},
        TypeCase{
            R"({"localization":{"terms":{"a":{"note":@}}}})", "project.json: /localization/terms/a/note", "a string"},
        TypeCase{R"({"localization":{"terms":{"a":{"maxLength":@}}}})", "project.json: /localization/terms/a/maxLength",
            "a whole number from 0 up"},
        TypeCase{R"({"localization":{"terms":{"a":{"silenced":@}}}})", "project.json: /localization/terms/a/silenced",
            "an object"},
        TypeCase{R"({"localization":{"terms":{"a":{"silenced":{"outer-blanks":@}}}}})",
            "project.json: /localization/terms/a/silenced/outer-blanks", "a string"},
        TypeCase{R"({"localization":{"checks":@}})", "project.json: /localization/checks", "an object"},
        TypeCase{R"({"localization":{"checks":{"outer-blanks":@}}})", "project.json: /localization/checks/outer-blanks",
            "a string"},
        TypeCase{R"({"localization":{"namespaces":@}})", "project.json: /localization/namespaces", "an object"},
        TypeCase{
            R"({"localization":{"namespaces":{"ui":@}}})", "project.json: /localization/namespaces/ui", "an object"},
        TypeCase{R"({"localization":{"namespaces":{"ui":{"flat":@}}}})",
            "project.json: /localization/namespaces/ui/flat", "true or false"},
        TypeCase{R"({"localization":{"namespaces":{"ui":{"order":@}}}})",
            "project.json: /localization/namespaces/ui/order", "an object"},
        TypeCase{R"({"localization":{"namespaces":{"ui":{"order":{"de":@}}}}})",
            "project.json: /localization/namespaces/ui/order/de", "an array of strings"},
        TypeCase{R"({"localization":{"values":@}})", "project.json: /localization/values", "an object"},
        TypeCase{R"({"localization":{"values":{"de":@}}})", "project.json: /localization/values/de", "an object"},
        TypeCase{R"({"localization":{"values":{"de":{"n":@}}}})", "project.json: /localization/values/de/n",
            "a string, a number, true, false, null, or an empty container"},
        TypeCase{R"({"localization":{"strings":@}})", "project.json: /localization/strings", "an object"},
        TypeCase{R"({"localization":{"strings":{"a":@}}})", "project.json: /localization/strings/a", "a string"},
        TypeCase{R"({"localization":{"translations":@}})", "project.json: /localization/translations", "an object"},
        TypeCase{R"({"localization":{"translations":{"de":@}}})", "project.json: /localization/translations/de",
            "an object"},
        TypeCase{R"({"localization":{"translations":{"pt-BR":{"a":@}}}})", "localization/pt-BR.json: /a", "an object"},
        TypeCase{R"({"localization":{"translations":{"no code":{"a":@}}}})",
            "project.json: /localization/translations/no code/a", "an object"},
        TypeCase{R"({"localization":{"translations":{"de":{"a":{"text":@}}}}})", "localization/de.json: /a/text",
            "a string"},
        TypeCase{R"({"localization":{"translations":{"de":{"a":{"source":@}}}}})", "localization/de.json: /a/source",
            "a string"},
        TypeCase{R"({"localization":{"translations":{"de":{"a":{"state":@}}}}})", "localization/de.json: /a/state",
            "a string"},
        TypeCase{R"({"localization":{"translations":{"de":{"a":{"note":@}}}}})", "localization/de.json: /a/note",
            "a string"},
        COLLECTION("animations"), COLLECTION("fonts"), COLLECTION("images"), COLLECTION("materials"),
        COLLECTION("meshes"), COLLECTION("objects"), COLLECTION("pipelines"), COLLECTION("shaders"),
        COLLECTION("skins"), COLLECTION("textures")));

TEST(ProjectReview, TellsOfEachTermWhoseSourceIsGoneOrIsNoText) {
    EXPECT_EQ(reviewOf(R"({"title":"x","level":1,"objects":{"door":{"text":"Open"}},"localization":{"terms":{
        "held":{"sourceText":"/objects/door/text"},"plain":{"sourceText":"title"},"silent":{},"empty":{"sourceText":""},
        "gone":{"sourceText":"/objects/gate/text"},"a/b":{"sourceText":"lost"},"counted":{"sourceText":"level"},
        "whole":{"sourceText":"/objects/door"}}}})"),
        "project.json: /localization/terms/gone/sourceText: leads to /objects/gate/text, which is not there\n"
        "project.json: /localization/terms/a~1b/sourceText: names lost as its source, which is no member of the "
        "project's root and no path, as it has no \"/\" in front\n"
        "project.json: /localization/terms/counted/sourceText: leads to level, which is no text\n"
        "project.json: /localization/terms/whole/sourceText: leads to /objects/door, which is no text\n");
}

TEST(ProjectReview, TellsOfEachLanguageButTheDefaultThatHasNoFile) {
    EXPECT_EQ(reviewOf(R"({"languages":{"en":{"isDefault":true},"de":{},"fr":{"isDefault":false},"ja":{},"no code":{}},
        "localization":{"translations":{"ja":{}}}})"),
        "localization/de.json: missing, no texts of de\n"
        "localization/fr.json: missing, no texts of fr\n");
}

TEST(ProjectReview, SaysHowManyMoreThereAreOfAKindAfterTwenty) {
    const auto terms = [](int count) {
        std::string json = R"({"localization":{"terms":{)";
        for(int i = 0; i != count; ++i)
            json += (i ? ",\"" : "\"") + std::to_string(i) + R"(":{"note":0,"sourceText":"/gone"})";
        return json + "}}}";
    };
    const auto lines = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    const std::string twenty = reviewOf(terms(20));
    EXPECT_EQ(lines(twenty), 40);
    EXPECT_EQ(twenty.find(" more "), std::string::npos);
    const std::string more = reviewOf(terms(23));
    EXPECT_EQ(lines(more), 42);
    EXPECT_NE(more.find("/terms/19/note: is a number, but must be a string\n"
                        "and 3 more values have a wrong type\n"
                        "project.json: /localization/terms/0/sourceText: leads to /gone, which is not there\n"),
        std::string::npos)
        << more;
    EXPECT_NE(more.find("\nand 3 more terms have no source text\n"), std::string::npos) << more;
}

TEST(ProjectReview, KeepsEachFindingOnOneLine) {
    EXPECT_EQ(reviewOf(R"({"objects":{"a\nb\u0001":{"name":1}}})"),
        "project.json: /objects/a\\u000ab\\u0001/name: is a number, but must be a string\n");
}

}
