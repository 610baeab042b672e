#include "app/ChangeName.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "Change.h"

namespace QuorvaneEngine {
namespace {

enum class Kind { Change, Creation, Removal };

Change make(const char* path, Kind kind = Kind::Change) {
    Change change;
    change.path = path;
    if(kind != Kind::Creation) change.oldValue.emplace(1);
    if(kind != Kind::Removal) change.newValue.emplace(2);
    return change;
}

std::string name(const char* path, Kind kind = Kind::Change) { return changeName(make(path, kind)).data(); }

std::string names(std::vector<const char*> paths) {
    std::vector<Change> changes;
    for(const char* const path: paths) changes.push_back(make(path));
    return changeName(Containers::ArrayView<const Change>{changes.data(), changes.size()}).data();
}

TEST(ChangeName, TellsWhetherAValueComesGoesOrChanges) {
    EXPECT_EQ(name("/counted"), "change of counted");
    EXPECT_EQ(name("/counted", Kind::Creation), "creation of counted");
    EXPECT_EQ(name("/counted", Kind::Removal), "removal of counted");
}

TEST(ChangeName, NamesEntriesByWhatTheyAre) {
    const std::pair<const char*, const char*> cases[]{
        {"/localization/terms/menu.start", "term menu.start"},
        {"/localization/terms/menu.start/sourceText", "sourceText of menu.start"},
        {"/localization/strings/menu.start", "source text of menu.start"},
        {"/localization/translations/de", "translations (de)"},
        {"/localization/translations/de/menu.start", "translation of menu.start (de)"},
        {"/localization/translations/de/menu.start/text", "translation of menu.start (de)"},
        {"/localization/translations/de/menu.start/state", "state of translation of menu.start (de)"},
        {"/localization/terms", "terms"},
        {"/localization", "localization"},
        {"/languages/de", "language de"},
        {"/languages/de/isDefault", "isDefault of language de"},
        {"/objects/door", "door in objects"},
        {"/objects/door/text", "text of door"},
        {"/objects/door/transform/rotation/0", "transform/rotation/0 of door"},
    };
    for(const auto& [path, expected]: cases) EXPECT_EQ(name(path), std::string{"change of "} + expected) << path;
}

TEST(ChangeName, KeysAreShownUnescapedOnOneLineAndNotForEver) {
    EXPECT_EQ(name("/objects/a~1b~0c/text"), "change of text of a/b~c");
    EXPECT_EQ(name("/objects/two\nlines/text"), "change of text of two lines");
    EXPECT_EQ(name("/objects//text"), "change of text of ");
    EXPECT_EQ(name(("/" + std::string(40, 'x')).c_str()), "change of " + std::string(40, 'x'));
    EXPECT_EQ(name(("/" + std::string(41, 'x')).c_str()), "change of " + std::string(40, 'x') + "...");
    EXPECT_EQ(name(("/" + std::string(39, 'x') + "\u00e4y").c_str()), "change of " + std::string(39, 'x') + "...");
}

TEST(ChangeName, SeveralChangesAreNamedByWhatTheyHaveInCommon) {
    EXPECT_EQ(names({"/objects/door/text"}), "change of text of door");
    EXPECT_EQ(names({"/objects/door/text", "/objects/door/title"}), "2 changes of door");
    EXPECT_EQ(names({"/objects/door/text", "/objects/doors/text"}), "2 changes in objects");
    EXPECT_EQ(names({"/objects/door/text", "/meshes/door/name"}), "2 changes");
    EXPECT_EQ(names({"/localization/terms/a/note", "/localization/terms/a"}), "2 changes of term a");
    EXPECT_EQ(names({"/localization/terms/a", "/localization/terms/b"}), "2 changes in terms");
    EXPECT_EQ(names({"/localization/translations/de/a/text", "/localization/translations/de/a/source"}),
        "2 changes of translation of a (de)");
    EXPECT_EQ(names({"/localization/translations/de/a/text", "/localization/translations/de/b"}),
        "2 changes in translations (de)");
    EXPECT_EQ(names({"/localization/translations/de/a", "/localization/translations/fr/a"}), "2 changes");
    EXPECT_EQ(names({"/counted", "/counted"}), "2 changes in counted");
    EXPECT_EQ(names({"/counted", "/other"}), "2 changes");
}

TEST(ChangeName, OfVeryManyChangesOnlyTheNumberIsTold) {
    EXPECT_EQ(names(std::vector<const char*>(1000, "/objects/door/text")), "1000 changes of door");
    EXPECT_EQ(names(std::vector<const char*>(1001, "/objects/door/text")), "1001 changes");
}

}
}
