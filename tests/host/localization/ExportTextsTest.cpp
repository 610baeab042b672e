#include "ExportTexts.h"

#include "Exchange.h"
#include "Fingerprint.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Project = R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true},
    "menu:b_one":{"sourceText":"x","translatable":true},"menu:b_other":{"sourceText":"x","translatable":true},
    "hidden:c":{"sourceText":"x","translatable":false}},"namespaces":{"empty":{}},
    "translations":{"pl":{"a":{"text":"A"},"menu:b_few":{"text":"few"},"menu:gone":{"text":"gone"},"menu:b_one":{"text":""}}},
    "values":{"en":{"menu:n":1,"a":5},"pl":{"menu:n":"jeden","menu:b_other":2,"a":3}}}})";

/** The files of a language: namespace, then texts and values by key. */
std::string files(const char* const code) {
    TestProject project{Project};
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "pl", "de"});
    const ExportTexts texts{project.project().document(), FallbackLanguage, languages};
    std::string all;
    for(const ExportTexts::File& file: texts.files(UnsignedInt(findLanguage(code)))) {
        all += copied(texts.terms().namespaces()[file.nameSpace].name) + ':';
        for(std::size_t i = 0; i != file.texts.size(); ++i) {
            const rapidjson::Value* const value = i < file.values.size() ? file.values[i] : nullptr;
            if(value) all += ' ' + copied(texts.layout(file.nameSpace).key(i)) + '=' + TestProject::printed(*value);
            else if(!file.texts[i].isEmpty())
                all += ' ' + copied(texts.layout(file.nameSpace).key(i)) + '=' + copied(file.texts[i]);
        }
        all += '\n';
    }
    return all;
}

}

TEST(ExportTexts, DefaultLanguageHasTheSources) {
    EXPECT_EQ(files("en"), "translation: a=X\nmenu: menu:b_one=X menu:b_other=X menu:n=1\nhidden:\nempty:\n");
}

TEST(ExportTexts, OthersHaveTranslationsFormsAndValuesWhereTheyHaveNoText) {
    EXPECT_EQ(files("pl"), "translation: a=A\nmenu: menu:b_few=few menu:b_other=2 menu:n=\"jeden\"\nhidden:\nempty:\n");
    EXPECT_EQ(files("de"), "translation:\nmenu:\nhidden:\nempty:\n");
}

TEST(ExportTexts, ThoseOfOtherSourceTextsAreCounted) {
    const std::string today = copied(fingerprint("X"));
    TestProject project{R"({"x":"X","empty":"","localization":{"terms":{"a":{"sourceText":"x","translatable":true},
        "b_one":{"sourceText":"x","translatable":true},"b_other":{"sourceText":"x","translatable":true},
        "c":{"sourceText":"x","translatable":true},"d":{"sourceText":"empty","translatable":true},
        "e":{"sourceText":"x","translatable":false}},"translations":{
        "pl":{"a":{"text":"A"},"b_few":{"text":"few","source":"0"},"b_many":{"text":"many","source":")" +
        today + R"("},"b_one":{"text":"one","source":")" + today + R"("},"c":{"text":"","source":"0"},"d":{"text":"D"},
        "e":{"text":"E"},"gone_few":{"text":"x"}},"de":{"a":{"source":")" +
        today + R"(","text":"A"}}}}})"};
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "pl", "de"});
    const ExportTexts texts{project.project().document(), FallbackLanguage, languages};
    EXPECT_EQ(texts.files(languages[0])[0].staleCount, 0u);
    EXPECT_EQ(texts.files(languages[1])[0].staleCount, 2u);
    EXPECT_EQ(texts.files(languages[2])[0].staleCount, 0u);
    const ExportTexts alone{project.project().document(), FallbackLanguage, languages.prefix(1)};
    EXPECT_EQ(alone.files(languages[0])[0].staleCount, 0u);
}

TEST(ExportTexts, NamespaceWithoutTranslatableTermsIsHidden) {
    const Containers::Array<UnsignedInt> languages = languagesOf({"en"});
    TestProject project{Project};
    const ExportTexts texts{project.project().document(), FallbackLanguage, languages};
    std::string hidden;
    for(const UnsignedInt i: texts.namespaces())
        if(texts.isHidden(i)) hidden += copied(texts.terms().namespaces()[i].name) + ' ';
    EXPECT_EQ(hidden, "hidden ");

    // Some file there must be.
    TestProject bare{R"({"localization":{"terms":{"hidden:c":{"sourceText":"x","translatable":false}}}})"};
    const ExportTexts none{bare.project().document(), FallbackLanguage, languages};
    ASSERT_EQ(none.namespaces().size(), 1u);
    EXPECT_FALSE(none.isHidden(none.namespaces()[0]));
}

TEST(ExportTexts, ProjectWithoutTermsHasTheDefaultNamespace) {
    TestProject project{"{}"};
    const Containers::Array<UnsignedInt> languages = languagesOf({"de"});
    const ExportTexts texts{project.project().document(), FallbackLanguage, languages};
    ASSERT_EQ(texts.namespaces().size(), 1u);
    EXPECT_EQ(texts.namespaces()[0], 0u);
    EXPECT_EQ(texts.files(languages[0])[0].texts.size(), 0u);
}

TEST(ExportTexts, WhatIsKeptWhereTheDefaultLanguageHasNothingHasNoPlace) {
    TestProject project{R"({"localization":{"terms":{"t":{"translatable":true}},
        "values":{"en":{"n":1},"de":{"m":"M","n":"N","t":2,"k":null,"o":[]}}}})"};
    const Containers::Array<UnsignedInt> languages = languagesOf({"en", "de"});
    const ExportTexts texts{project.project().document(), FallbackLanguage, languages};
    EXPECT_EQ(texts.keysWithoutPlace(languages[0]).size(), 0u);
    const auto keys = texts.keysWithoutPlace(languages[1]);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0], "m");
    EXPECT_EQ(keys[1], "o");
}

}
