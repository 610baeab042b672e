#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Configuration.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <gtest/gtest.h>

#include "Print.h"
#include "TemporaryFolder.h"

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Utility::Configuration;

namespace {

struct Parsed {
    explicit Parsed(Containers::StringView text) {
        const TemporaryFolder folder;
        Utility::Path::write(folder("file.conf"), text);
        const Utility::Error redirect{&errors};
        configuration.reset(new Configuration{std::string(folder("file.conf")), Configuration::Flag::ReadOnly});
    }
    Containers::String errors;
    Containers::Pointer<Configuration> configuration;
};

} // namespace

TEST(Configuration, ReadsValuesWithoutCommentsAndBlanks) {
    const Parsed parsed{"# comment\n; another\n\n a = b c \nempty=\nequals=a=b\nquoted=\"  c \"\n"_s};
    EXPECT_TRUE(parsed.configuration->isValid());
    EXPECT_EQ(parsed.configuration->value("a"), "b c");
    EXPECT_EQ(parsed.configuration->value("equals"), "a=b");
    EXPECT_EQ(parsed.configuration->value("quoted"), "  c ");
    EXPECT_TRUE(parsed.configuration->hasValue("empty"));
    EXPECT_EQ(parsed.configuration->value("empty"), "");
    EXPECT_FALSE(parsed.configuration->hasValue("none"));
    EXPECT_EQ(parsed.configuration->value("none"), "");
    EXPECT_EQ(parsed.configuration->value<Containers::StringView>("a"), "b c");
}

TEST(Configuration, KeepsSeveralValuesOfOneName) {
    const Parsed parsed{"a=1\nb=2\na=3\n"_s};
    EXPECT_EQ(parsed.configuration->valueCount("a"), 2);
    EXPECT_EQ(parsed.configuration->value("a", 1), "3");
    EXPECT_EQ(parsed.configuration->values("a"), (std::vector<std::string>{"1", "3"}));
    EXPECT_FALSE(parsed.configuration->hasValue("a", 2));
}

TEST(Configuration, ReadsGroupsAndSubgroups) {
    const Parsed parsed{
        "top=0\n[data]\nname=A\n[data/sub]\nx=1\n[other]\nname=B\n[other]\nname=C\n[deep/down]\ny=2\n"_s};
    EXPECT_EQ(parsed.configuration->value("top"), "0");
    ASSERT_TRUE(parsed.configuration->hasGroup("data"));
    EXPECT_EQ(parsed.configuration->group("data")->value("name"), "A");
    ASSERT_TRUE(parsed.configuration->group("data")->hasGroup("sub"));
    EXPECT_EQ(parsed.configuration->group("data")->group("sub")->value("x"), "1");
    EXPECT_EQ(parsed.configuration->group("other", 1)->value("name"), "C");
    EXPECT_EQ(parsed.configuration->group("deep")->group("down")->value("y"), "2");
    EXPECT_EQ(parsed.configuration->group("none"), nullptr);
    EXPECT_FALSE(parsed.configuration->hasGroup("other", 2));
}

TEST(Configuration, ReadsValuesOfSeveralLines) {
    const Parsed parsed{"text=\"\"\"\n  one\n\ntwo\n\"\"\"\nempty=\"\"\"\n\"\"\"\nlast=1\n"_s};
    EXPECT_EQ(parsed.configuration->value("text"), "  one\n\ntwo");
    EXPECT_EQ(parsed.configuration->value("empty"), "");
    EXPECT_EQ(parsed.configuration->value("last"), "1");
}

TEST(Configuration, CopesWithMarksAndLineEndsOfWindows) {
    const Parsed parsed{"\xEF\xBB\xBF"
                        "a=1\r\n[data]\r\nb=2\r\n"_s};
    EXPECT_EQ(parsed.configuration->value("a"), "1");
    EXPECT_EQ(parsed.configuration->group("data")->value("b"), "2");
}

TEST(Configuration, MistakesPrintAndLeaveNothing) {
    const struct {
        Containers::StringView text, problem;
    } data[]{{"[data\n"_s, "missing closing bracket for a group header"_s}, {"[ ]\n"_s, "empty group name"_s},
        {"[a//b]\n"_s, "empty subgroup name"_s}, {"key\n"_s, "missing equals for a value"_s},
        {"key=\"value\n"_s, "missing closing quote for a value"_s},
        {"key=\"\"\"\nvalue\n"_s, "missing closing quotes for a multi-line value"_s}};
    for(const auto& item: data) {
        const Parsed parsed{"good=1\n" + item.text};
        EXPECT_FALSE(parsed.configuration->isValid()) << item.text.data();
        EXPECT_TRUE(parsed.configuration->isEmpty());
        EXPECT_EQ(parsed.errors, "Utility::Configuration::Configuration(): " + item.problem + "\n");
    }
}

TEST(Configuration, AFileThatIsNotThereIsValidAndEmpty) {
    const Configuration configuration{"/nowhere/at/all.conf", Configuration::Flag::ReadOnly};
    EXPECT_TRUE(configuration.isValid());
    EXPECT_TRUE(configuration.isEmpty());
}
