#include "NameSearch.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

std::string nearest(const char* const name) {
    const Containers::StringView names[]{"--languages", "--default", "--dry-run", "--json", "--to", "--from"};
    const Containers::StringView found = nearestName(name, names);
    return {found.data(), found.size()};
}

TEST(NameSearch, FindsTheOnlyNameThatBeginsSo) {
    EXPECT_EQ(nearest("--lang"), "--languages");
    EXPECT_EQ(nearest("--dry"), "--dry-run");
    EXPECT_EQ(nearest("--d"), "");
}

TEST(NameSearch, FindsANameWithUpToTwoWrongLetters) {
    EXPECT_EQ(nearest("--langauges"), "--languages");
    EXPECT_EQ(nearest("--dryrun"), "--dry-run");
    EXPECT_EQ(nearest("--form"), "--from");
    EXPECT_EQ(nearest("--josn"), "--json");
    EXPECT_EQ(nearest("--jsonlines"), "");
}

TEST(NameSearch, FindsNothingForWhatIsFarFromAll) {
    EXPECT_EQ(nearest(""), "");
    EXPECT_EQ(nearest("-x"), "");
    EXPECT_EQ(nearest("--verbose"), "");
    EXPECT_EQ(nearest(std::string(100000, 'x').c_str()), "");
}

TEST(NameSearch, TakesTheNearestOfSeveral) {
    const Containers::StringView names[]{"export", "import", "report"};
    EXPECT_TRUE(nearestName("imporrt", names) == "import");
    EXPECT_TRUE(nearestName("exprot", names) == "export");
}

}
}
