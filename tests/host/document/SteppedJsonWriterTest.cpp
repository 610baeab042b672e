#include "SteppedJsonWriter.h"

#include <string>
#include <vector>

#include "EditorSessionTest.h"

namespace QuorvaneEngine {
namespace {

class SteppedJsonWriterTest: public WarnedTest {
protected:
    /** What is written in steps of some values. */
    static std::string written(const rapidjson::Document& document, const std::size_t members, int& steps) {
        SteppedJsonWriter writer{document};
        for(steps = 1; !writer.write(members); ++steps) {
        }
        std::string text;
        for(const std::string& part: writer.takeParts()) text += part;
        return text;
    }
};

TEST_F(SteppedJsonWriterTest, WritesTheSameInWhateverSteps) {
    for(const char* const json: {"{}", R"({"a": 1})", R"({"a": {}, "b": [], "c": null})",
            R"({"a": {"b": {"c": {"d": {"e": {"f": 1, "g": [{}, {"h": 2}]}}}, "i": "\u00fc\n\""}, "j": -1.5}, "k": true})"}) {
        const rapidjson::Document document = documentOf(json);
        for(const std::size_t members: {1u, 2u, 3u, 1000u}) {
            int steps = 0;
            EXPECT_EQ(textOf(documentOf(written(document, members, steps))), textOf(document)) << json;
        }
    }
}

TEST_F(SteppedJsonWriterTest, ALargeTextComesInPartsOfWhichNoneHasToGrow) {
    constexpr std::size_t Size = SteppedJsonWriter::PartSize;
    std::string json{"{"};
    for(int i = 0; json.size() < 4 * Size; ++i) json += "\"member " + std::to_string(i) + "\": \"a text\", ";
    const rapidjson::Document document = documentOf((json + "\"last\": 1}").c_str());
    SteppedJsonWriter writer{document};
    while(!writer.write(200)) {
    }
    const std::vector<std::string> parts = writer.takeParts();
    EXPECT_GT(parts.size(), 3u);
    std::string text;
    for(const std::string& part: parts) {
        EXPECT_LT(part.size(), Size + 1000);
        EXPECT_LE(part.capacity(), 2 * Size);
        text += part;
    }
    EXPECT_EQ(textOf(documentOf(text)), textOf(document));
}

TEST_F(SteppedJsonWriterTest, AStepIsAsLargeAsWasAskedFor) {
    const rapidjson::Document document = documentOf(R"({"a": {"b": 1, "c": 2, "d": {"e": 3}}, "f": 4})");
    int steps = 0;
    written(document, 1, steps);
    EXPECT_EQ(steps, 7) << "six values, and the end";
    written(document, 7, steps);
    EXPECT_EQ(steps, 1);
}

}
}
