#include "Fingerprint.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

// The values of the hash's published test vectors.
TEST(Fingerprint, IsFnv1aOf64BitsInLowerCaseDigits) {
    EXPECT_EQ(fingerprint(""), "cbf29ce484222325"_s);
    EXPECT_EQ(fingerprint("a"), "af63dc4c8601ec8c"_s);
    EXPECT_EQ(fingerprint("foobar"), "85944171f73967e8"_s);
}

TEST(Fingerprint, CountsBytesOfUtf8AndZeroBytes) {
    EXPECT_NE(fingerprint("ä"), fingerprint("a"));
    EXPECT_NE(fingerprint("a\0"_s), fingerprint("a"));
    EXPECT_EQ(fingerprint("a\0"_s).size(), 16u);
}

}
