#include "ArchiveBytes.h"

#include <gtest/gtest.h>

#include "TestArchive.h"
#include "TestProject.h"

namespace QuorvaneEngine {

TEST(ArchiveBytes, NumbersAreLittleEndian) {
    const ArchiveBytes bytes{"\x01\x82\x03\x84\x05\x86\x07\x88"};
    EXPECT_EQ(bytes.byte(1), 0x82u);
    EXPECT_EQ(bytes.two(0), 0x8201u);
    EXPECT_EQ(bytes.four(0), 0x84038201u);
    EXPECT_EQ(bytes.eight(0), 0x8807860584038201u);
    EXPECT_EQ(bytes.text(1, 2), "\x82\x03");
}

TEST(ArchiveBytes, HasWhatLiesInside) {
    const ArchiveBytes bytes{"abcd"};
    EXPECT_TRUE(bytes.has(0, 4));
    EXPECT_TRUE(bytes.has(4, 0));
    EXPECT_FALSE(bytes.has(1, 4));
    EXPECT_FALSE(bytes.has(5, 0));
    EXPECT_FALSE(bytes.has(2, ~std::uint64_t{}));
    EXPECT_FALSE(bytes.has(~std::uint64_t{}, 2));
}

TEST(ArchiveBytes, ExtraFieldsAreFoundByTheirId) {
    const std::string fields =
        TestArchive::field(7, "seven") + TestArchive::field(9, "") + TestArchive::field(1, "one");
    EXPECT_EQ(ArchiveBytes::extraField(viewed(fields), 7), "seven");
    EXPECT_EQ(ArchiveBytes::extraField(viewed(fields), 1), "one");
    EXPECT_EQ(ArchiveBytes::extraField(viewed(fields), 9), "");
    EXPECT_EQ(ArchiveBytes::extraField(viewed(fields), 8), "");
    // The last one is cut off, and does not count.
    for(std::size_t cut = 1; cut != 7; ++cut)
        EXPECT_EQ(ArchiveBytes::extraField(viewed(fields.substr(0, fields.size() - cut)), 1), "") << cut;
    EXPECT_EQ(ArchiveBytes::extraField(viewed(fields + std::string(3, '\0')), 1), "one");
}

TEST(ArchiveBytes, ChecksumIsThatOfTheFormat) {
    EXPECT_EQ(ArchiveBytes::checksum(""), 0u);
    EXPECT_EQ(ArchiveBytes::checksum("123456789"), 0xcbf43926u);
}

}
