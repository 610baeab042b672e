#include "ExportFiles.h"

#include "Exchange.h"
#include "LocalizationReport.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(ExportFiles, EveryConflictIsReportedWithBothKeys) {
    TestProject project{R"({"x":"X","localization":{"terms":{"menu":{"sourceText":"x","translatable":true},
        "menu.file":{"sourceText":"x","translatable":true},"menu.edit":{"sourceText":"x","translatable":true},
        "ui:a.b":{"sourceText":"x","translatable":true},"ui:a":{"sourceText":"x","translatable":true}},
        "values":{"en":{"menu.n":1}}}})"};
    TestFolder folder;
    const CapturedOutput output;
    exportTo(project, {"en"}, folder.path);
    const auto line = [](const std::string& key, const std::string& other) {
        return "LocalizationTools::exportTerms(): " + key + ": cannot stand beside " + other +
            ": one is a text, and the other lies below it\n";
    };
    EXPECT_EQ(output.warning(),
        line("menu.file", "menu") + line("menu.edit", "menu") + line("menu.n", "menu") + line("ui:a", "ui:a.b"));
}

TEST(ExportFiles, AreReadOneAfterTheOtherAndFailWithTheFirst) {
    TestProject project{R"({"localization":{"namespaces":{"a":{},"b":{}}}})"};
    const UnsignedInt languages[]{UnsignedInt(findLanguage("de")), UnsignedInt(findLanguage("fr"))};
    std::string asked;
    std::vector<ExportFile> files;
    LocalizationReport report;
    const auto read = [&](const Containers::StringView path, Containers::String&) {
        asked += copied(path) + ' ';
        return path != "fr/a.json";
    };
    EXPECT_FALSE(makeExportFiles(
        project.project().document(), FallbackLanguage, languages, false, read, files, report, nullptr));
    EXPECT_EQ(asked, "de/a.json de/b.json fr/a.json ");
}

}
