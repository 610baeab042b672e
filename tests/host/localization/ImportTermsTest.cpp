#include "ImportTerms.h"

#include "Fingerprint.h"
#include "PluralSets.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

constexpr const char* Menu = R"({"a":"A","localization":{"terms":{"menu.file":{"sourceText":"a","translatable":true},
    "ui:one.two":{"translatable":true}},"namespaces":{"ui":{"flat":true}},"values":{"en":{"ui:n":1}}}})";

}

TEST(ImportTerms, KeysAreFoundInBothShapesThatTheLibraryKnows) {
    TestProject project{Menu};
    const ImportTerms terms{project.project().document(), FallbackLanguage};
    Int last = -1;
    EXPECT_EQ(terms.find(0, "menu.file", last), 0);
    EXPECT_EQ(terms.find(0, "menu%2Efile", last), 0);
    EXPECT_EQ(terms.find(0, "menu%2Eedit", last), -1);
    EXPECT_EQ(terms.find(0, "menu.file%2E", last), -1);
    EXPECT_EQ(terms.find(1, "one%2Etwo", last), 1);
    EXPECT_EQ(terms.find(1, "one.two", last), 1);
}

TEST(ImportTerms, ValueUnderAKeyCountsBeforeATermOfTheOtherShape) {
    TestProject project{Menu};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_TRUE(terms.addValue(0, "menu%2Efile", reason));
    Int last = -1;
    EXPECT_EQ(terms.find(0, "menu%2Efile", last), -1);
    EXPECT_EQ(terms.find(0, "menu.file", last), 0);
}

TEST(ImportTerms, KeysBesideAndBelowTermsHaveAPlaceOrNone) {
    TestProject project{Menu};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_TRUE(terms.addValue(0, "n", reason));
    EXPECT_TRUE(terms.hasPlace(0, "n"));
    EXPECT_FALSE(terms.hasPlace(0, "n.x"));
    EXPECT_TRUE(terms.hasPlace(0, "menu.edit"));
    EXPECT_TRUE(terms.hasPlace(0, "x"));
    EXPECT_FALSE(terms.hasPlace(0, "menu"));
    EXPECT_FALSE(terms.hasPlace(0, "menu.file.open"));
    EXPECT_FALSE(terms.hasPlace(0, "menu.[0]"));
}

TEST(ImportTerms, ConflictsNameBothKeys) {
    TestProject project{Menu};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_TRUE(terms.addTerm(0, "menu.edit", "Edit", reason));
    EXPECT_FALSE(terms.addTerm(0, "menu", "Menu", reason));
    EXPECT_EQ(copied(reason), "cannot stand beside menu.file: one is a text, and the other lies below it");
    EXPECT_FALSE(terms.addTerm(0, "menu.edit.copy", "Copy", reason));
    EXPECT_EQ(copied(reason), "cannot stand beside menu.edit: one is a text, and the other lies below it");
    EXPECT_FALSE(terms.addValue(0, "menu.[0]", reason));
    EXPECT_EQ(copied(reason), "cannot stand beside menu.file: one is an element, and the other has a name");
    EXPECT_FALSE(terms.addTerm(1, "a.b", "B", reason));
    EXPECT_EQ(copied(reason), "lies in an object, and the namespace is flat");
    EXPECT_EQ(terms.terms().terms().size(), 3u);
    EXPECT_EQ(terms.knownCount(), 2u);

    bool isConflict = true;
    EXPECT_EQ(copied(terms.reasonForNone(0, "x", isConflict)), "no term has this key");
    EXPECT_FALSE(isConflict);
    EXPECT_EQ(copied(terms.reasonForNone(0, "menu", isConflict)),
        "no term has this key, and it cannot stand beside menu.file: one is a text, and the other lies below it");
    EXPECT_TRUE(isConflict);
}

TEST(ImportTerms, ValuesOfTheDefaultLanguageAreKnown) {
    TestProject project{Menu};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_TRUE(terms.addValue(0, "m", reason));
    EXPECT_TRUE(terms.hasValue("ui:n"));
    EXPECT_TRUE(terms.hasValue("m"));
    EXPECT_FALSE(terms.hasValue("n"));
    EXPECT_EQ(copied(terms.key(1, "a%2Eb")), "ui:a.b");
}

TEST(ImportTerms, FingerprintsAndPluralsAreThoseAfterTheImport) {
    TestProject project{Menu};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_TRUE(terms.addTerm(0, "n_one", "one", reason));
    EXPECT_TRUE(terms.addTerm(0, "n_other", "many", reason));
    terms.setSource(0, "B");
    terms.finish();
    EXPECT_EQ(terms.fingerprint(0), fingerprint("B"));
    EXPECT_EQ(terms.fingerprint(1), "");
    EXPECT_EQ(terms.fingerprint(3), fingerprint("many"));
    EXPECT_EQ(terms.plurals(0).sets().size(), 1u);
    EXPECT_EQ(terms.plurals(1).sets().size(), 0u);
}

TEST(ImportTerms, WhatIsAddedGivesNoPlaceToValuesOfTheProject) {
    TestProject project{R"({"x":"X","localization":{"terms":{"a":{"sourceText":"x","translatable":true}},
        "values":{"en":{"a.b":1,"k.c":2,"n":3}}}})"};
    ImportTerms terms{project.project().document(), FallbackLanguage};
    Containers::String reason;
    EXPECT_FALSE(terms.givesPlace(0, "k.c"));
    EXPECT_FALSE(terms.hasNewPlaces());
    EXPECT_TRUE(terms.addTerm(0, "k", "K", reason));
    EXPECT_TRUE(terms.givesPlace(0, "k.c"));
    EXPECT_FALSE(terms.givesPlace(0, "n"));
    // The project has both already.
    EXPECT_FALSE(terms.givesPlace(0, "a.b"));
    EXPECT_FALSE(terms.isDropped("k.c"));
    terms.dropValue("k.c");
    EXPECT_TRUE(terms.isDropped("k.c"));
    EXPECT_TRUE(terms.hasNewPlaces());
    terms.finish();
    EXPECT_FALSE(terms.hasPlace(0, "n.m"));
    EXPECT_TRUE(terms.hasPlace(0, "m"));
    bool isConflict = false;
    EXPECT_EQ(copied(terms.reasonForNone(0, "n.m", isConflict)),
        "no term has this key, and it cannot stand beside n: one is a text, and the other lies below it");
    EXPECT_TRUE(isConflict);
}

}
