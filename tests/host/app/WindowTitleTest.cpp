#include "app/WindowTitle.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine::Test {
namespace {

TEST(WindowTitle, NamesTheProjectAndWhatIsToBeKnownOfIt) {
    WindowTitle title;
    EXPECT_EQ(title.text(), "Quorvane");
    EXPECT_FALSE(title.update("", false, false));
    EXPECT_TRUE(title.update("/games/lighthouse", false, false));
    EXPECT_EQ(title.text(), "lighthouse - Quorvane");
    EXPECT_FALSE(title.update("/games/lighthouse", false, false));
    EXPECT_TRUE(title.update("/games/lighthouse", true, false));
    EXPECT_EQ(title.text(), "* lighthouse - Quorvane");
    EXPECT_TRUE(title.update("/games/lighthouse", true, true));
    EXPECT_EQ(title.text(), "* lighthouse (read-only) - Quorvane");
    EXPECT_TRUE(title.update("/games/harbour", false, true));
    EXPECT_EQ(title.text(), "harbour (read-only) - Quorvane");
    EXPECT_TRUE(title.update("/games/harbour", false, false));
    EXPECT_FALSE(title.update("/backup/harbour", false, false)) << "it reads the same";
    EXPECT_TRUE(title.update("", false, false));
    EXPECT_EQ(title.text(), "Quorvane");
}

}
}
