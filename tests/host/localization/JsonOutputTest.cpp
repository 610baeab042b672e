#include "JsonOutput.h"

#include <random>
#include <string>

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "TestProject.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(JsonOutput, PutsOneBehindTheOther) {
    JsonOutput out;
    out.put('{');
    out.putNewLine(2);
    out.putString("name");
    out.put(": ");
    out.put(Containers::StringView{});
    out.put('}');
    out.putNewLine(0);
    EXPECT_EQ(out.size(), 16u);
    EXPECT_EQ(copied(out.take()), "{\n    \"name\": }\n");
}

TEST(JsonOutput, TakesBackWhatIsNotWanted) {
    JsonOutput out;
    out.put("kept");
    const std::size_t size = out.size();
    out.putString(Containers::String{Corrade::DirectInit, 10000, 'x'});
    out.truncate(size);
    out.put('!');
    EXPECT_EQ(copied(out.take()), "kept!");
}

TEST(JsonOutput, NothingIsAnEmptyText) {
    JsonOutput out;
    EXPECT_EQ(copied(out.take()), "");
}

TEST(JsonOutput, TextEndsWithAZero) {
    JsonOutput out;
    out.put("a long text, longer than what a string keeps inside");
    const Containers::String text = out.take();
    EXPECT_EQ(text.data()[text.size()], '\0');
}

TEST(JsonOutput, EscapesControlsQuotesAndBackslashesWhereverTheyStand) {
    JsonOutput out;
    out.putString("\b\t\n\f\r\v\0\x1f\x7f\"\\/ä日😀\u2028"_s);
    EXPECT_EQ(copied(out.take()), "\"\\b\\t\\n\\f\\r\\u000B\\u0000\\u001F\x7f\\\"\\\\/ä日😀\u2028\"");

    for(std::size_t size = 1; size != 70; ++size)
        for(std::size_t place = 0; place != size; ++place) {
            std::string text(size, 'x');
            text[place] = '"';
            JsonOutput quoted;
            quoted.putString(viewed(text));
            EXPECT_EQ(copied(quoted.take()), '"' + text.insert(place, "\\") + '"');
        }
}

TEST(JsonOutput, WritesStringsAsTheLibraryDoes) {
    std::mt19937 random{3};
    for(int i = 0; i != 5000; ++i) {
        std::string text(random() % 100, ' ');
        for(char& c: text) c = random() % 3 ? char(random() % 0x60 + 0x20) : char(random());
        rapidjson::StringBuffer expected;
        rapidjson::Writer<rapidjson::StringBuffer> writer{expected};
        writer.String(text.data(), rapidjson::SizeType(text.size()));
        JsonOutput out;
        out.putString(viewed(text));
        ASSERT_EQ(copied(out.take()), (std::string{expected.GetString(), expected.GetSize()}));
    }
}

}
