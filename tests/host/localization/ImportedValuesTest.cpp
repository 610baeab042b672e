#include "ImportedValues.h"

#include "Catalogue.h"
#include "ProjectEdit.h"
#include "TestProject.h"

namespace QuorvaneEngine {

TEST(ImportedValues, AreKeptWhereTheyAreNewOrDiffer) {
    TestProject project{R"({"localization":{"values":{"en":{"n":5,"same":true,"text":"T"}}}})"};
    const ProjectTerms terms{project.project()};
    ImportedValues values{project.project().document(), terms, "en"};
    Catalogue catalogue;
    const rapidjson::Value six{6}, yes{true}, list{rapidjson::kArrayType};
    catalogue.addValue("n", six);
    catalogue.addValue("same", yes);
    catalogue.addValue("list", list);
    catalogue.add("text", "T");
    catalogue.add("other", "a text");
    const TermOutcome outcomes[]{
        TermOutcome::Changed, TermOutcome::Unchanged, TermOutcome::Added, TermOutcome::Unchanged, TermOutcome::Added};
    for(std::size_t i = 0; i != 5; ++i)
        EXPECT_EQ(values.keep(catalogue.entries()[i].key, 0, catalogue.entries()[i]), outcomes[i]) << i;
    EXPECT_FALSE(values.isEmpty());
    std::vector<TermLayout::Key> keys;
    values.appendKeys(0, keys);
    std::string all;
    for(const TermLayout::Key& key: keys) all += copied(key.fileKey) + ' ';
    EXPECT_EQ(all, "n same text n list other ");

    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        values.collect(edit);
        edit.push();
    });
    EXPECT_EQ(project.at("/localization/values/en"), R"({"n":6,"same":true,"text":"T","list":[],"other":"a text"})");
}

TEST(ImportedValues, TakeThePlaceThatOthersHaveLeft) {
    // So many that the whole object is set anew.
    constexpr int Count = 40;
    std::string members, numbers;
    for(int i = 0; i != Count; ++i) {
        members += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":null";
        numbers += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":7";
    }
    TestProject project{R"({"localization":{"values":{"en":{)" + members + "}}}}"};
    const ProjectTerms terms{project.project()};
    ImportedValues values{project.project().document(), terms, "en"};
    Catalogue catalogue;
    const rapidjson::Value seven{7};
    for(int i = 0; i != Count; ++i) catalogue.addValue(viewed('k' + std::to_string(i)), seven);
    for(const CatalogueEntry& entry: catalogue.entries())
        EXPECT_EQ(values.keep(entry.key, 0, entry), TermOutcome::Added);
    expectOneUndoStep(project, [&] {
        ProjectEdit edit{project.editor()};
        values.collect(edit);
        edit.push();
    });
    EXPECT_EQ(project.at("/localization/values/en"), '{' + numbers + '}');
}

TEST(KeptNotice, IsOneHoweverMuchIsKept) {
    LocalizationReport report;
    KeptNotice notice;
    notice.report(report, 0, "de.json");
    EXPECT_EQ(report.lines().size(), 0u);
    notice.add("n", "is a number and no text");
    notice.report(report, 0, "de.json");
    notice.add("flag", "is true or false and no text");
    notice.add("m", "is a number and no text");
    notice.report(report, 0, "de.json");
    ASSERT_EQ(report.lines().size(), 2u);
    EXPECT_EQ(copied(report.lines()[0].term), "n");
    EXPECT_EQ(copied(report.lines()[0].reason), "is a number and no text: it is kept as it is");
    EXPECT_EQ(copied(report.lines()[0].file), "de.json");
    EXPECT_EQ(copied(report.lines()[1].term), "n");
    EXPECT_EQ(copied(report.lines()[1].reason), "is a number and no text: it is kept as it is, and so are 2 more");
}

TEST(ImportedValues, AreDescribed) {
    for(const auto& [json, text]:
        {std::pair{"1.5", "is a number and no text"}, {"false", "is true or false and no text"},
            {"[]", "is an empty array and no text"}, {"{}", "is an empty object and no text"}}) {
        rapidjson::Document value;
        value.Parse(json);
        EXPECT_EQ(copied(describeValue(value)), text);
    }
}

}
