#include "ImportComparison.h"

#include "Exchange.h"
#include "FileSystem.h"
#include "Import.h"
#include "LocalizationReport.h"
#include "Progress.h"

namespace QuorvaneEngine {

TEST(ImportComparison, DoesNotDependOnWhichThreadIsFirst) {
    TestFolder folder;
    std::string english, other;
    for(int i = 0; i != 300; ++i) {
        const std::string key = "key" + std::to_string(i);
        english += (i ? ",\"" : "\"") + key + "\":\"Text " + std::to_string(i) + '"';
        if(i % 3) other = '"' + key + "\":\"Other " + std::to_string(i) + '"' + (other.empty() ? "" : ",") + other;
    }
    folder.write("en/menu.json", '{' + english + '}');
    for(const char* const code: {"ar", "de", "fr", "ja", "pl", "ru", "sv", "tr"})
        folder.write(std::string{code} + "/menu.json", '{' + other + R"(,"unknown":"x"})");
    std::string firstDocument, firstReport;
    for(int run = 0; run != 5; ++run) {
        TestProject project{"{}"};
        Import import{project.editor(), FallbackLanguage};
        LocalizationReport report;
        ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
        ASSERT_TRUE(import.compare(report));
        Containers::Array<UnsignedInt> languages;
        import.apply(languages);
        if(run == 0) {
            firstDocument = project.text();
            firstReport = copied(report.json());
        }
        EXPECT_EQ(project.text(), firstDocument);
        EXPECT_EQ(copied(report.json()), firstReport);
    }
}

TEST(ImportComparison, ReadsNoIndexOfTheProject) {
    TestProject project{
        R"({"localization":{"terms":{"a":{"translatable":true}},"translations":{"de":{"a":{"text":"A"}}}}})"};
    TestFolder folder;
    folder.write("de.json", R"({"a": "B"})");
    folder.write("en.json", R"({"a": "A", "b": "B"})");
    Import import{project.editor(), FallbackLanguage};
    LocalizationReport report;
    ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
    const std::uint64_t before = project.project().lookupCount();
    ASSERT_TRUE(import.compare(report));
    EXPECT_EQ(project.project().lookupCount(), before);
}

TEST(ImportComparison, ALanguageBesideAnotherOfItsKindIsNoticed) {
    TestFolder folder;
    folder.write("de-DE.json", R"({"a": "B"})");
    folder.write("fr.json", R"({"a": "C"})");
    const auto notices = [&folder](const char* const json) {
        TestProject project{json};
        Import import{project.editor(), FallbackLanguage};
        LocalizationReport report;
        EXPECT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
        EXPECT_TRUE(import.compare(report));
        std::string told;
        for(const LocalizationReport::Line& line: report.lines())
            if(line.outcome == TermOutcome::Notice)
                told += copied(AllLanguages[line.language].code) + ' ' + copied(line.reason) + '\n';
        return told;
    };
    EXPECT_EQ(notices(R"({"languages": {"en": {"isDefault": true}, "de": {}}})"),
        "de-DE is new beside the project's German (de): if that is meant, map it with --map de-DE=de\n");
    EXPECT_EQ(notices(R"({"languages": {"en": {"isDefault": true}, "de": {}, "de-DE": {}}})"), "");
    EXPECT_EQ(notices("{}"), "");
}

TEST(ImportComparison, CancelledChangesNothingAndRefusesNothing) {
    TestProject project{"{}"};
    TestFolder folder;
    folder.write("de.json", R"({"a": "B"})");
    Progress progress;
    Import import{project.editor(), FallbackLanguage, {}, &progress};
    LocalizationReport report;
    ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
    EXPECT_EQ(progress.done, progress.total);
    progress.isCancelled = true;
    EXPECT_FALSE(import.compare(report));
    EXPECT_EQ(import.refusals().size(), 0u);
}

TEST(ImportComparison, ContainersOfAWrongTypeAreRefused) {
    TestFolder folder;
    folder.write("de/menu.json", R"({"a": "A"})");
    const char* const cases[][2]{{R"({"localization": {"namespaces": 1}})", "/localization/namespaces"},
        {R"({"localization": {"namespaces": {"menu": []}}})", "/localization/namespaces/menu"},
        {R"({"localization": {"namespaces": {"menu": {"order": "x"}}}})", "/localization/namespaces/menu/order"},
        {R"({"localization": {"values": []}})", "/localization/values"},
        {R"({"localization": {"values": {"de": 1}}})", "/localization/values/de"}};
    for(const auto& [json, path]: cases) {
        TestProject project{json};
        Import import{project.editor(), FallbackLanguage};
        LocalizationReport report;
        ASSERT_TRUE(import.read(FileSystem::disk(), viewed(folder.path)));
        EXPECT_FALSE(import.compare(report));
        ASSERT_EQ(import.refusals().size(), 1u);
        EXPECT_EQ(copied(import.refusals()[0]), "project.json: " + std::string{path} + ": is no object");
    }
}

}
