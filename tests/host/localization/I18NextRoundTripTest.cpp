#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Catalogue.h"
#include "I18NextReader.h"
#include "I18NextWriter.h"
#include "JsonModel.h"
#include "JsonReader.h"
#include "TermTree.h"
#include "TestProject.h"

namespace QuorvaneEngine {

using namespace std::string_literals;

namespace {

class RandomModels {
public:
    /** @param scalars  what stands for texts and other values, as JSON writes them */
    RandomModels(const unsigned seed, std::vector<std::string> scalars): _random{seed}, _scalars{std::move(scalars)} {}

    JsonModel file() { return object(0); }

private:
    unsigned below(const std::size_t limit) { return unsigned(_random() % limit); }

    JsonModel value(const unsigned depth) {
        const unsigned kind = below(10);
        if(depth < 6 && kind < 3) return object(depth);
        if(depth < 6 && kind == 3) return array(depth);
        return JsonModel::scalar(_scalars[below(_scalars.size())]);
    }

    JsonModel object(const unsigned depth) {
        static const std::string names[]{"a", "b", "menu", "Menu", "", ".", "..", "a.b", "[0]", "[", "[00]", "0", "-1",
            "%", "%2E", "50%", ":", "ns:key", "Status: Loading...", "#", "##", "~", "/", "a/b", " ", " a", "%20a", "ä",
            "日本", "😀", "\0"s, "\n", "\\", "\"", "\x7f", "__proto__", "constructor", "key_0", "key_1", "key_plural",
            "key"};
        JsonModel made;
        for(unsigned count = below(depth ? 5 : 12); count; --count) {
            const std::string& name = names[below(std::size(names))];
            if(!made.member(name)) made.children.push_back({name, value(depth + 1)});
        }
        return made;
    }

    JsonModel array(const unsigned depth) {
        JsonModel made{JsonModel::Kind::Array, {}, {}};
        for(unsigned count = below(5); count; --count) made.children.push_back({"", value(depth + 1)});
        return made;
    }

    std::mt19937 _random;
    std::vector<std::string> _scalars;
};

/** What is written of a file that was read, over itself or for the first time. */
std::string readAndWritten(const std::string& bytes, const bool isOver) {
    Catalogue catalogue;
    JsonError error;
    EXPECT_TRUE(readI18Next(viewed(bytes), catalogue, error)) << copied(error.reason) << '\n' << bytes;
    TermTree tree;
    std::vector<Containers::StringView> texts;
    std::vector<const rapidjson::Value*> values;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        Int other = -1;
        EXPECT_EQ(tree.insert(entry.key, Int(texts.size()), other), TermConflict::None) << copied(entry.key);
        texts.push_back(entry.text);
        values.push_back(entry.value);
    }
    const TermTexts terms{{texts.data(), texts.size()}, {values.data(), values.size()}};
    return copied(writeI18Next(tree, terms, isOver ? &catalogue : nullptr));
}

}

TEST(I18NextRoundTrip, RandomFilesComeBackByteForByte) {
    RandomModels models{1,
        {"\"text\"", "\"ä\\n\\\"\\\\/\"", "\"{{name}} $t(a.b)\"", "\" \"", "true", "false", "0", "-12", "1.5",
            "18446744073709551615", "-9223372036854775808", "0.1", "-0.0", "1.0e+30", "5.0e-324"}};
    for(int i = 0; i != 10000; ++i) {
        const std::string bytes = models.file().file();
        ASSERT_EQ(readAndWritten(bytes, false), bytes);
        ASSERT_EQ(readAndWritten(bytes, true), bytes);
    }
}

TEST(I18NextRoundTrip, NumbersAreSpelledAsInTheFileThatIsThere) {
    RandomModels models{2,
        {"1.0", "1.50", "1e5", "1E+05", "-0", "-0.000", "0e0", "12345678901234567890", "1234567890123456789012345",
            "0.1000000000000000055511151231257827", "1e-400", "-1e-999", "179769313486231570e291", "\"1\""}};
    for(int i = 0; i != 1000; ++i) {
        const std::string bytes = models.file().file();
        ASSERT_EQ(readAndWritten(bytes, true), bytes);
    }
}

TEST(I18NextRoundTrip, MissingTextsAreLeftOutAndNothingElse) {
    RandomModels models{3, {"\"text\"", "\"\"", "null", "null", "12"}};
    for(int i = 0; i != 10000; ++i) {
        JsonModel model = models.file();
        const std::string bytes = model.file();
        if(!model.leaveOut()) model = {};
        const std::string expected = model.file();
        ASSERT_EQ(readAndWritten(bytes, false), expected) << bytes;
        ASSERT_EQ(readAndWritten(bytes, true), expected) << bytes;
    }
}

TEST(I18NextRoundTrip, DeepestFileComesBack) {
    JsonModel deep = JsonModel::scalar("\"x\"");
    for(int i = 0; i != 255; ++i)
        deep = i % 2 ? JsonModel{JsonModel::Kind::Array, {}, {{"", deep}}}
                     : JsonModel{JsonModel::Kind::Object, {}, {{"a.b", deep}}};
    const std::string bytes = JsonModel{JsonModel::Kind::Object, {}, {{"a", deep}}}.file();
    EXPECT_EQ(readAndWritten(bytes, false), bytes);
}

TEST(I18NextRoundTrip, LongestArrayComesBack) {
    JsonModel list{JsonModel::Kind::Array, {}, {}};
    for(int i = 0; i != 65536; ++i) list.children.push_back({"", JsonModel::scalar("\"x\"")});
    const std::string bytes = JsonModel{JsonModel::Kind::Object, {}, {{"list", list}}}.file();
    EXPECT_EQ(readAndWritten(bytes, false), bytes);
}

TEST(I18NextRoundTrip, OtherLayoutsOfTheSameFileComeBackInOurs) {
    EXPECT_EQ(readAndWritten("\xef\xbb\xbf{\t\"a\":{\"b\" :\r\n\"\\u00e4\\/\"},\"c\":[1,2]}", false),
        "{\n  \"a\": {\n    \"b\": \"ä/\"\n  },\n  \"c\": [\n    1,\n    2\n  ]\n}\n");
}

}
