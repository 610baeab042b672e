#include "ExampleCode.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Examples.h"

namespace QuorvaneEngine::Test {
namespace {

using Gallery::bodyOf;

std::string read(const char* path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::string bodyIn(const std::string& source, const char* function) { return bodyOf(source.c_str(), function); }

TEST(ExampleCode, IsWhatStandsBetweenTheBracesOfAFunction) {
    const std::string source = R"(
void first(Ui&) {
    one();

    if(two())
        three({4, 5});
}

void second(Ui& ui) { ui.six(); }

void third(
    Ui&, State&) {
    seven();
}
)";
    EXPECT_EQ(bodyIn(source, "first"), "one();\n\nif(two())\n    three({4, 5});");
    EXPECT_EQ(bodyIn(source, "second"), "ui.six();");
}

TEST(ExampleCode, IsEmptyWhereThereIsNoSuchFunction) {
    EXPECT_EQ(bodyIn("\nvoid firstOfAll(Ui&) {\n    one();\n}\n", "first"), "");
    EXPECT_EQ(bodyIn("    void first(Ui&) {\n    one();\n}\n", "first"), "");
    EXPECT_EQ(bodyIn("\nvoid first(Ui&) {\n    one();\n", "first"), "");
    EXPECT_EQ(bodyIn("\nvoid first(Ui&)", "first"), "");
    EXPECT_EQ(bodyIn("", "first"), "");
}

const std::string source = read(QUORVANE_SOURCE_DIR "/samples/gallery/Examples.cpp");

TEST(GalleryExamples, EachHasLinesThatUseWhatItIsNamedAfter) {
    ASSERT_FALSE(Gallery::examples().isEmpty());
    for(const Gallery::Example& example: Gallery::examples()) {
        const std::string body = bodyIn(source, example.name);
        const std::string name = example.name;
        const std::string use = name == "pushScope" ? "const Scope " : name + '(';
        EXPECT_NE(body.find(use), std::string::npos) << name << ":\n" << body;
    }
}

TEST(GalleryExamples, AreEachInOneFamilyAndOnce) {
    std::set<std::string> names, families;
    std::string family;
    for(const Gallery::Example& example: Gallery::examples()) {
        EXPECT_TRUE(names.insert(example.name).second) << example.name;
        if(family != example.family) {
            EXPECT_TRUE(families.insert(example.family).second) << example.family;
        }
        family = example.family;
    }
}

/* The header's functions from the basic widgets on, each at the beginning of its declaration. */
TEST(GalleryExamples, ThereIsOneForEveryWidgetOfTheToolkit) {
    const std::string header = read(QUORVANE_SOURCE_DIR "/editor/Ui/Ui.h");
    const std::size_t begin = header.find("@name Basic widgets");
    const std::size_t end = header.find("ProjectFile* project;");
    ASSERT_TRUE(begin < end && end < header.size());
    const std::string widgets = header.substr(begin, end - begin);
    const std::set<std::string> noWidgets{"scaled", "textResizeCallback", "checkboxHeight", "copyValue", "pasteValue"};
    std::string code;
    for(const Gallery::Example& example: Gallery::examples()) code += bodyIn(source, example.name) + '\n';

    const std::regex declaration{R"(\n    (?:static )?[\w:]+ (\w+)\()"};
    std::set<std::string> names;
    for(auto at = std::sregex_iterator{widgets.begin(), widgets.end(), declaration}; at != std::sregex_iterator{}; ++at)
        names.insert((*at)[1]);
    EXPECT_GT(names.size(), 35u);
    for(const std::string& name: names) {
        if(noWidgets.count(name)) continue;
        EXPECT_TRUE(std::regex_search(code, std::regex{R"((ui\.|Ui::))" + name + R"(\()"})) << name;
    }
}

}
}
