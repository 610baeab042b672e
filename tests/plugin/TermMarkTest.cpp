#include "TermMark.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(TermMark, MarksNothingBeforeATermIsFound) {
    TermMark mark;
    EXPECT_FALSE(mark.isWanted());
    EXPECT_EQ(mark.strength("", 0.0), 0.0f);
    mark.want("door");
    EXPECT_TRUE(mark.isWanted());
    EXPECT_EQ(mark.token(), "door");
    EXPECT_EQ(mark.strength("door", 0.0), 0.0f);
    mark.settle(false, 0.0);
    EXPECT_FALSE(mark.isWanted());
    EXPECT_EQ(mark.strength("door", 0.0), 0.0f);
}

TEST(TermMark, FadesAndEnds) {
    TermMark mark;
    mark.want("door");
    mark.settle(true, 10.0);
    EXPECT_FALSE(mark.isWanted());
    EXPECT_EQ(mark.strength("door", 10.0), 1.0f);
    EXPECT_EQ(mark.strength("window", 10.0), 0.0f);
    EXPECT_EQ(mark.strength("door", 10.0 + TermMark::Duration - TermMark::FadeDuration), 1.0f);
    EXPECT_FLOAT_EQ(mark.strength("door", 10.0 + TermMark::Duration - TermMark::FadeDuration / 4.0), 0.25f);
    EXPECT_EQ(mark.strength("door", 10.0 + TermMark::Duration), 0.0f);
}

TEST(TermMark, AnotherTermTakesThePlaceOfTheOneBefore) {
    TermMark mark;
    mark.want("door");
    mark.settle(true, 0.0);
    mark.want("");
    EXPECT_EQ(mark.strength("door", 0.0), 0.0f);
    mark.settle(true, 1.0);
    EXPECT_EQ(mark.strength("", 1.0), 1.0f);
    EXPECT_EQ(mark.strength("door", 1.0), 0.0f);
}

}
}
