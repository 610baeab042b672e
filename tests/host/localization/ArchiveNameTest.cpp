#include "ArchiveName.h"

#include <gtest/gtest.h>

#include "TestArchive.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string decoded(const std::string& bytes, const bool isUtf8 = false, const std::string& extra = {}) {
    Containers::String name;
    return ArchiveName::decode(viewed(bytes), isUtf8, viewed(extra), name) ? copied(name) : "(none)";
}

std::string unicodePath(const std::string& bytes, const std::string& name, const char version = 1) {
    std::string field{version};
    TestArchive::four(field, TestArchive::crc(bytes));
    return TestArchive::field(0x7075, field + name);
}

std::string plain(const std::string& name) { return copied(ArchiveName::plain(viewed(name))); }

std::string folded(const std::string& name) { return ArchiveName::folded(viewed(name)); }

}

TEST(ArchiveName, NamesAreUtf8WhateverTheArchiveSays) {
    EXPECT_EQ(decoded("de/menu.json"), "de/menu.json");
    EXPECT_EQ(decoded("日本/ja.json", true), "日本/ja.json");
    EXPECT_EQ(decoded("日本/ja.json"), "日本/ja.json");
    EXPECT_EQ(decoded("\x9a"
                      "bung.txt"),
        "Übung.txt");
    EXPECT_EQ(decoded("\x9a"
                      "bung.txt",
                  true),
        "(none)");
}

TEST(ArchiveName, ExtraFieldHasTheNameWhereItIsOfTheseBytes) {
    const std::string bytes = "\x93\xfa\x96\x7b.txt";
    EXPECT_EQ(decoded(bytes, false, unicodePath(bytes, "日本.txt")), "日本.txt");
    EXPECT_EQ(decoded(bytes, false, unicodePath("other", "日本.txt")), decoded(bytes));
    EXPECT_EQ(decoded(bytes, false, unicodePath(bytes, "日本.txt", 2)), decoded(bytes));
    EXPECT_EQ(decoded(bytes, false, unicodePath(bytes, "\xff")), decoded(bytes));
    EXPECT_EQ(decoded(bytes, false, TestArchive::field(0x7075, "\1")), decoded(bytes));
    // A name that is readable as it stands needs no other one.
    EXPECT_EQ(decoded("de.json", false, unicodePath("de.json", "../x")), "de.json");
}

TEST(ArchiveName, FaultsAreSaid) {
    EXPECT_EQ(ArchiveName::fault("de/menu.json"), "");
    EXPECT_EQ(ArchiveName::fault("de/..menu...json"), "");
    EXPECT_EQ(ArchiveName::fault(""), "has an entry without a name");
    EXPECT_EQ(ArchiveName::fault(Containers::StringView{"a\0b", 3}), "has a zero byte in its name");
    EXPECT_EQ(ArchiveName::fault("de\\x"), "has a backslash in its name");
    EXPECT_EQ(ArchiveName::fault("//server/share"), "has an absolute path");
    EXPECT_EQ(ArchiveName::fault("C:/x"), "begins with a drive letter");
    EXPECT_EQ(ArchiveName::fault("de/../x"), "leads out of its folder");
}

TEST(ArchiveName, PlainNamesHaveNoNeedlessParts) {
    EXPECT_EQ(plain("./de//./a.json"), "de/a.json");
    EXPECT_EQ(plain("de/"), "de");
    EXPECT_EQ(plain("./"), "");
}

TEST(ArchiveName, FoldedNamesAreEqualWhereSystemsTakeThemForOne) {
    for(const auto& [one, other]:
        {std::pair{"DE/Menu.JSON", "de/menu.json"}, {"É", "e\u0301"}, {"ß", "SS"}, {"ẞ", "ss"}, {"ΟΔΟΣ", "οδος"},
            {"\u212a", "k"}, {"\u212b", "å"}, {"ﬃ", "ffi"}, {"\u1e9b\u0323", "\u1e9b\u0323"}})
        EXPECT_EQ(folded(one), folded(other)) << one;
    for(const auto& [one, other]: {std::pair{"a", "b"}, {"e", "é"}, {"ı", "i"}, {"İ", "i"}})
        EXPECT_NE(folded(one), folded(other)) << one;
}

}
