#include "ImportOrder.h"

#include "Exchange.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

namespace {

void import(TestProject& project, const std::vector<std::pair<std::string, std::string>>& files) {
    TestFolder folder;
    for(const auto& [name, json]: files) folder.write(name, json);
    const CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
}

}

TEST(ImportOrder, IsNotNotedWhereAnExportHasItByItself) {
    TestProject project{"{}"};
    import(project,
        {{"en.json", R"({"b":"B","m":{"y":"Y","x":"X"},"a":"A"})"},
            { "de.json",
                R"({"m":{"x":"x"},"a":"a"})" }});
    EXPECT_EQ(project.at("/localization/namespaces"), "nothing");
}

TEST(ImportOrder, OfALanguageIsNotedWhereItDiffers) {
    TestProject project{"{}"};
    expectOneUndoStep(project, [&] {
        import(project,
            {{"en.json", R"({"b":"B","m":{"y":"Y","x":"X"},"a":"A"})"},
                {"de.json", R"({"b":"b","m":{"x":"x","y":"y"},"a":"a"})"}, {"fr.json", R"({"a":"a","m":{"y":"y"}})"},
                { "ja.json",
                    R"({"m":{"y":"y","x":"x"}})" }});
    });
    EXPECT_EQ(
        project.at("/localization/namespaces"), R"({"translation":{"order":{"fr":["a","m.y"],"de":["m.x","m.y"]}}})");
}

TEST(ImportOrder, OfValuesAmongTextsIsNotedForTheDefaultLanguageAndServesTheOthers) {
    TestProject project{"{}"};
    import(project,
        {{"en.json", R"({"a":"A","n":1,"b":"B"})"}, {"de.json", R"({"a":"a","n":2,"b":"b"})"},
            { "fr.json",
                R"({"a":"a","b":"b","n":3})" }});
    EXPECT_EQ(project.at("/localization/namespaces"), R"({"translation":{"order":{"en":["a","n","b"],"fr":[]}}})");
}

TEST(ImportOrder, OfALanguageThatHadTextsIsNotNoted) {
    TestProject project{"{}"};
    import(project, {{"en/m.json", R"({"a":"A","b":"B"})"}, { "de/m.json", R"({"a":"a"})" }});
    import(project, {{"de/m.json", R"({"b":"b","a":"a"})"}, { "en/m.json", R"({"c":"C","a":"A"})" }});
    EXPECT_EQ(project.at("/localization/namespaces"), "nothing");
    // Another namespace, and another language, are new.
    import(project,
        {{"de/n.json", R"({"y":"y","x":"x"})"}, {"en/n.json", R"({"x":"X","y":"Y"})"},
            { "fr/m.json",
                R"({"b":"b","a":"a"})" }});
    EXPECT_EQ(
        project.at("/localization/namespaces"), R"({"m":{"order":{"fr":["b","a"]}},"n":{"order":{"de":["y","x"]}}})");
}

TEST(ImportOrder, OfFormsIsThatOfTheirCategories) {
    TestProject project{"{}"};
    import(project,
        {{"en.json", R"({"a_one":"1","a_other":"2","b":"B"})"},
            {"pl.json", R"({"a_one":"1","a_few":"2","a_many":"5","a_other":"1.5","b":"b"})"},
            { "ru.json",
                R"({"a_few":"2","a_one":"1","a_other":"1.5","b":"b"})" }});
    EXPECT_EQ(
        project.at("/localization/namespaces"), R"({"translation":{"order":{"ru":["a_few","a_one","a_other","b"]}}})");
}

TEST(ImportOrder, IsNotNotedForWhatIsSkipped) {
    TestProject project{"{}"};
    import(project,
        {{"en.json", R"({"a_one":"1","a_other":"2","b":"B"})"},
            {"pl.json", R"({"a_one":"1","a_few":"2","a_many":"5","a_other":"1.5","b":"b"})"},
            // German has no such form.
            { "de.json",
                R"({"a_one":"1","a_other":"2","a_few":"2","b":"b"})" }});
    EXPECT_EQ(project.at("/localization/namespaces"), "nothing");
}

TEST(ImportOrder, OfValuesThatComeLaterIsNotNoted) {
    TestProject project{"{}"};
    import(project, {{ "en.json", R"({"a":1})" }});
    const std::string file = R"({"b":2,"a":1})";
    import(project, {{ "en.json", file }});
    EXPECT_EQ(project.at("/localization/namespaces"), "nothing");
    const std::size_t changes = project.changeCount();
    import(project, {{ "en.json", file }});
    EXPECT_EQ(project.changeCount(), changes);
}

TEST(ImportOrder, IsThatOfTheFileAlsoForWhatStandsThereInAnotherShape) {
    TestProject project{"{}"};
    import(project,
        {{"en/ui.json", R"({"a b":"A","menu.file":1,"menu.open":"Open"})"},
            {"de/ui.json", R"({"menu":{"file":2},"a b":"a"})"},
            { "fr/ui.json",
                R"({"menu":{"open":"o"},"a b":"a"})" }});
    EXPECT_EQ(project.at("/localization/namespaces/ui/order/de"), R"(["menu%2Efile","a b"])");
    EXPECT_EQ(project.at("/localization/namespaces/ui/order/fr"), R"(["menu%2Eopen","a b"])");
}

TEST(ImportOrder, DefaultNamespaceWithoutTextsIsNotedWhereOthersHaveFiles) {
    TestProject alone{"{}"};
    import(alone, {{ "en.json", "{}" }});
    EXPECT_EQ(alone.at("/localization"), "nothing");
    const std::vector<std::pair<std::string, std::string>> files{
        {"en/translation.json", R"({"a":""})"}, {"en/menu.json", R"({"b":"B"})"}};
    for(const char* const json: {"{}", R"({"localization":{"namespaces":{"menu":{}}}})",
            R"({"x":"X","localization":{"terms":{"menu:b":{"sourceText":"x","translatable":true}}}})"}) {
        TestProject project{json};
        expectOneUndoStep(project, [&] { import(project, files); });
        EXPECT_EQ(project.at("/localization/namespaces/translation"), "{}") << json;
        TestFolder folder;
        exportTo(project, {"en"}, folder.path);
        EXPECT_EQ(folder.read("en/translation.json"), "{}\n");
    }
}

}
