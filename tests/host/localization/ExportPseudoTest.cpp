#include "Export.h"

#include "Exchange.h"
#include "ExportedDoors.h"
#include "FileSystem.h"
#include "LocalizationReport.h"
#include "PseudoLocale.h"

namespace QuorvaneEngine {

TEST(ExportPseudo, StandsBesideTheLanguages) {
    TestProject project{Doors};
    TestFolder folder;
    const Containers::Array<UnsignedInt> languages = languagesOf({"en"});
    FileError error;
    LocalizationReport report;
    const Export request{project.project(), FileSystem::disk(), languages, FallbackLanguage, {false, true}};
    EXPECT_TRUE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_EQ(folder.read("en-XA/translation.json"),
        "{\n  \"door\": {\n    \"text\": \"" + copied(PseudoLocale::text("Open")) + "\",\n    \"hint\": \"" +
            copied(PseudoLocale::text("Knock")) + "\"\n  }\n}\n");
    EXPECT_EQ(report.languages().size(), 1u);
    EXPECT_EQ(report.counts(LocalizationReport::NoLanguage).notices, 1u);
    const Files before = folder.files();
    EXPECT_TRUE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_EQ(folder.files(), before);
}

TEST(ExportPseudo, KeepsTheOrderOfItsFile) {
    TestProject project{Doors};
    TestFolder folder;
    const std::string moved = "{\n  \"door\": {\n    \"hint\": \"" + copied(PseudoLocale::text("Knock")) +
        "\",\n    \"text\": \"" + copied(PseudoLocale::text("Open")) + "\"\n  }\n}\n";
    folder.write("en-XA/translation.json", moved);
    const Containers::Array<UnsignedInt> languages = languagesOf({"en"});
    FileError error;
    LocalizationReport report;
    const Export request{project.project(), FileSystem::disk(), languages, FallbackLanguage, {false, true}};
    EXPECT_TRUE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_EQ(folder.read("en-XA/translation.json"), moved);
}

TEST(ExportPseudo, DoesNotReplaceAFileThatCannotBeRead) {
    TestProject project{Doors};
    TestFolder folder;
    folder.write("en-XA/translation.json", "{\"door\": ");
    const Files before = folder.files();
    const Containers::Array<UnsignedInt> languages = languagesOf({"en"});
    FileError error;
    LocalizationReport report;
    const Export request{project.project(), FileSystem::disk(), languages, FallbackLanguage, {false, true}};
    EXPECT_FALSE(request.toFolder(viewed(folder.path), report, error));
    EXPECT_EQ(copied(error.path), folder / "en-XA/translation.json:1:10");
    EXPECT_EQ(folder.files(), before);
}

}
