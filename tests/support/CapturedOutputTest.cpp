#include "support/CapturedOutput.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine::Test {
namespace {

using namespace Corrade::Utility;

TEST(CapturedOutput, EachStreamIsCaughtApart) {
    const CapturedOutput output;
    Debug{} << "one" << 1;
    Warning{} << "two" << 2;
    Error{} << "three" << 3;
    EXPECT_EQ(output.debug(), "one 1\n");
    EXPECT_EQ(output.warning(), "two 2\n");
    EXPECT_EQ(output.error(), "three 3\n");
}

TEST(CapturedOutput, TheInnermostCatches) {
    const CapturedOutput outer;
    {
        const CapturedOutput inner;
        Debug{} << "in";
        EXPECT_EQ(inner.debug(), "in\n");
    }
    Debug{} << "out";
    EXPECT_EQ(outer.debug(), "out\n");
}

}
}
