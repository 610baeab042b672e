#include "QuorvaneEditor/LocalizationTools.h"

#include <random>

#include "Exchange.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

/** A project of random terms and translations, without conflicts between keys. */
std::string randomProject(std::mt19937& random) {
    const char* const texts[]{"text", "ä\\n\\\"", "{{count}} lamps", "日本語", "$t(other)", "a\\tb"};
    std::string terms, strings, translations[2];
    const auto append = [](std::string& object, const std::string& member) {
        object += (object.empty() ? "" : ",") + member;
    };
    for(unsigned i = 0, count = 1 + random() % 30; i != count; ++i) {
        std::string key = "k" + std::to_string(i);
        for(unsigned depth = random() % 3; depth != 0; --depth) key = "g" + std::to_string(random() % 3) + '.' + key;
        if(random() % 8 == 0) key += ".[0]";
        append(terms,
            '"' + key + R"(":{"sourceText":"/localization/strings/)" + key + R"(","translatable":)" +
                (random() % 6 ? "true}" : "false}"));
        append(strings, '"' + key + "\":\"" + texts[random() % std::size(texts)] + '"');
        for(std::string& language: translations)
            if(random() % 3)
                append(language, '"' + key + R"(":{"text":")" + texts[random() % std::size(texts)] + R"("})");
    }
    return R"({"languages":{"en":{"isDefault":true},"de":{},"ja":{}},"localization":{"terms":{)" + terms +
        R"(},"strings":{)" + strings + R"(},"translations":{"de":{)" + translations[0] + R"(},"ja":{)" +
        translations[1] + "}}}}";
}

}

TEST(LocalizationTools, RandomProjectsGoOutAndComeBackTheSame) {
    std::mt19937 random{3};
    const CapturedOutput output;
    for(int i = 0; i != 20; ++i) {
        TestProject project{randomProject(random)};
        TestFolder folder;
        exportTo(project, {"en", "de", "ja"}, folder / "out");
        exportCompressedTo(project, {"en", "de", "ja"}, folder / "out.zip");

        // Back into the same project nothing changes.
        const std::string before = project.text();
        importFrom(project, {"en", "de", "ja"}, folder / "out");
        importFrom(project, {"en", "de", "ja"}, folder / "out.zip");
        EXPECT_EQ(project.text(), before);
        EXPECT_EQ(project.changeCount(), 0u);

        // Into an empty one, from folder and archive, all comes back, and goes out again as the same bytes.
        TestProject fromFolder{"{}"}, fromArchive{"{}"};
        EXPECT_EQ(importFrom(fromFolder, {"en"}, folder / "out"), "en de ja");
        EXPECT_EQ(importFrom(fromArchive, {"en"}, folder / "out.zip"), "en de ja");
        EXPECT_EQ(fromFolder.text(), fromArchive.text());
        exportTo(fromFolder, {"en", "de", "ja"}, folder / "again");
        exportCompressedTo(fromArchive, {"en", "de", "ja"}, folder / "again.zip");
        for(const char* const name: {"en", "de", "ja"})
            EXPECT_EQ(folder.read("again/" + std::string{name} + "/translation.json"),
                folder.read("out/" + std::string{name} + "/translation.json"));
        EXPECT_EQ(folder.read("again.zip"), folder.read("out.zip"));
        fromFolder.session.undo();
        EXPECT_EQ(fromFolder.text(), "{}");
    }
    EXPECT_EQ(output.warning(), "");
}

TEST(LocalizationTools, GatheringMakesTermsThatAreExported) {
    TestProject project{R"({"objects": {"door": {"text": "Open"}}})"};
    TestFolder folder;
    expectOneUndoStep(project, [&] { LocalizationTools::gatherStrings(project.editor()); });
    exportTo(project, {"en"}, folder.path);
    EXPECT_EQ(folder.read("en/translation.json"), "{\n  \"door_text\": \"Open\"\n}\n");
}

TEST(LocalizationTools, SampleGoesOutAndComesBackTheSame) {
    TestProject project{"{}"};
    ASSERT_TRUE(project.session.open(QUORVANE_SOURCE_DIR "/samples/lighthouse"));
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en", "de", "fr", "ja", "ru", "ar", "pt-BR"}, folder / "out");
    EXPECT_EQ(output.warning(), "");
    const std::string before = project.text();
    importFrom(project, {"en"}, folder / "out");
    EXPECT_EQ(project.text(), before);

    folder.write("out/de/translation.json", R"({"menu": {"start": "Los!"}})");
    expectOneUndoStep(project, [&] { importFrom(project, {"en"}, folder / "out"); });
    EXPECT_EQ(output.warning(), "");
}

TEST(LocalizationTools, RelativePathsAreThoseOfTheProcess) {
    TestProject project{R"({"x": "X", "localization": {"terms": {"a": {"sourceText": "x", "translatable": true}}}})"};
    TestFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path);
    exportTo(project, {"en"}, "out");
    importFrom(project, {"en"}, "out");
    std::filesystem::current_path(before);
    EXPECT_EQ(folder.read("out/en/translation.json"), "{\n  \"a\": \"X\"\n}\n");
}

}
