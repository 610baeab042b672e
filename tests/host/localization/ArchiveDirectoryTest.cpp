#include "ArchiveDirectory.h"

#include <gtest/gtest.h>

#include "TestArchive.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** The names with "|" between, or "entry: reason". */
std::string read(const std::string& bytes) {
    ArchiveDirectory directory;
    ArchiveRefusal refusal;
    if(!ArchiveDirectory::read(viewed(bytes), directory, refusal))
        return copied(refusal.entry) + ": " + copied(refusal.reason);
    std::string names;
    for(const ArchiveDirectory::Entry& entry: directory.entries)
        names += (&entry == directory.entries.begin() ? "" : "|") + copied(entry.name);
    return names;
}

std::string readOne(const TestArchive::Entry& entry) { return read(TestArchive{{entry}}.make()); }

}

TEST(ArchiveDirectory, NamesTheEntriesInTheirOrder) {
    EXPECT_EQ(
        read(TestArchive{{{"de/translation.json", "{}"}, {"a.json", "{}"}}}.make()), "de/translation.json|a.json");
    EXPECT_EQ(read(TestArchive{}.make()), "");
}

TEST(ArchiveDirectory, FoldersHaveNoName) {
    EXPECT_EQ(read(TestArchive{{{"de/", "", 0, 0, 040755}, {"de/a.json", "{}"}}}.make()), "|de/a.json");
}

TEST(ArchiveDirectory, EmptyPartsAndDotsAreLeftOutOfNames) { EXPECT_EQ(readOne({"./de//a.json", "{}"}), "de/a.json"); }

TEST(ArchiveDirectory, CommentMayFollow) {
    TestArchive archive{{{"a.json", "{}"}}};
    archive.comment = std::string(65535, 'c');
    EXPECT_EQ(read(archive.make()), "a.json");
}

struct NameCase {
    std::string name;
    const char* expected;
};

class ArchiveDirectoryNames: public testing::TestWithParam<NameCase> {};

TEST_P(ArchiveDirectoryNames, AreRefused) { EXPECT_EQ(readOne({GetParam().name, "{}"}), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(LeadingOut, ArchiveDirectoryNames,
    testing::Values(NameCase{"/de.json", "/de.json: has an absolute path"},
        NameCase{"../de.json", "../de.json: leads out of its folder"},
        NameCase{"de/../../x.json", "de/../../x.json: leads out of its folder"},
        NameCase{"de/..", "de/..: leads out of its folder"},
        NameCase{"C:de.json", "C:de.json: begins with a drive letter"},
        NameCase{"c:/de.json", "c:/de.json: begins with a drive letter"},
        NameCase{"de\\x.json", "de\\x.json: has a backslash in its name"},
        NameCase{"..\\x.json", "..\\x.json: has a backslash in its name"},
        NameCase{std::string{"de.json\0.txt", 12}, "de.json?.txt: has a zero byte in its name"},
        NameCase{"", ": has an entry without a name"}));

TEST(ArchiveDirectory, LinksAndDevicesAreRefused) {
    EXPECT_EQ(readOne({"de.json", "/etc/passwd", 0, 0, 0120777}), "de.json: is a link or a device");
    EXPECT_EQ(readOne({"de.json", "", 0, 0, 0010644}), "de.json: is a link or a device");
    EXPECT_EQ(readOne({"de.json", "{}", 0, 0, 0}), "de.json");
}

TEST(ArchiveDirectory, EncryptedEntriesAreRefused) {
    for(const unsigned flag: {1u, 1u << 6, 1u << 13})
        EXPECT_EQ(readOne({"de.json", "{}", flag}), "de.json: is encrypted") << flag;
    EXPECT_EQ(readOne({"de.json", "{}", 1u << 11}), "de.json");
}

TEST(ArchiveDirectory, NamesThatAnotherEntryHasAreRefused) {
    EXPECT_EQ(
        read(TestArchive{{{"de.json", "{}"}, {"de.json", "{}"}}}.make()), "de.json: has the name of another entry");
    EXPECT_EQ(read(TestArchive{{{"de/a.json", "{}"}, {"DE/A.json", "{}"}}}.make()),
        "DE/A.json: has the name of another entry");
    EXPECT_EQ(read(TestArchive{{{"É.json", "{}"}, {"é.json", "{}"}}}.make()), "é.json: has the name of another entry");
    EXPECT_EQ(read(TestArchive{{{"de/a.json", "{}"}, {"./de//a.json", "{}"}}}.make()),
        "./de//a.json: has the name of another entry");
    EXPECT_EQ(read(TestArchive{{{"de", "{}"}, {"de/", ""}}}.make()), "de/: has the name of another entry");
}

TEST(ArchiveDirectory, NameInAnotherEncodingIsANameLikeAnyOther) {
    EXPECT_EQ(read(TestArchive{{{"\x81.txt", "{}"}, {"de.json", "{}"}}}.make()), "\x81.txt|de.json");
}

TEST(ArchiveDirectory, EntryWithTwoNamesIsRefused) {
    TestArchive::Entry entry{"de.json", "{}"};
    entry.hasLocalName = true;
    entry.localName = "../x.js";
    EXPECT_EQ(readOne(entry), "de.json: has two names");
}

TEST(ArchiveDirectory, EntriesThatShareBytesAreRefused) {
    TestArchive archive{{{"de.json", "{}"}, {"fr.json", "{}"}}};
    archive.entries[1].sharedWith = 0;
    EXPECT_EQ(read(archive.make()), "fr.json: has two names");
    archive.entries[1].name = "de.json";
    EXPECT_EQ(read(archive.make()), "de.json: has the name of another entry");

    // The second one's header lies inside of the first one's bytes.
    const std::string inner = TestArchive{{{"fr.json", "{}"}}}.make();
    TestArchive overlap{{{"de.json", inner}, {"fr.json", "{}"}}};
    overlap.entries[1].offsetLie = -int(inner.size());
    EXPECT_EQ(read(overlap.make()), "fr.json: shares bytes with another entry");
}

TEST(ArchiveDirectory, MoreThan10000EntriesAreRefused) {
    TestArchive archive;
    for(int i = 0; i != 10000; ++i) archive.entries.push_back({std::to_string(i), ""});
    EXPECT_EQ(read(archive.make()).substr(0, 4), "0|1|");
    archive.entries.push_back({"x", ""});
    EXPECT_EQ(read(archive.make()), ": has more than 10000 entries");
}

TEST(ArchiveDirectory, ArchiveInSeveralFilesIsRefused) {
    TestArchive archive{{{"de.json", "{}"}}};
    archive.disk = 1;
    EXPECT_EQ(read(archive.make()), ": is part of an archive in several files");
}

TEST(ArchiveDirectory, Zip64IsRefused) {
    TestArchive archive{{{"de.json", "{}"}}};
    archive.entries[0].offsetLie = -1;
    EXPECT_EQ(read(archive.make()), "de.json: needs ZIP64");
    TestArchive located{{{"de.json", "{}"}}};
    TestArchive::four(located.beforeEnd, 0x07064b50);
    located.beforeEnd += std::string(16, '\0');
    EXPECT_EQ(read(located.make()), ": is a ZIP64 archive");
    TestArchive counted{{{"de.json", "{}"}}};
    counted.countLie = 65534;
    EXPECT_EQ(read(counted.make()), ": is a ZIP64 archive");
}

TEST(ArchiveDirectory, FalseOffsetsAndSizesAreRefused) {
    const auto with = [](const auto& lie) {
        TestArchive archive{{{"de.json", "{}"}, {"fr.json", "{}"}}};
        lie(archive);
        return read(archive.make());
    };
    EXPECT_EQ(with([](TestArchive& a) { a.directoryOffsetLie = 1; }),
        ": is damaged: its directory is not where it should be");
    EXPECT_EQ(with([](TestArchive& a) { a.directoryOffsetLie = 1 << 30; }),
        ": is damaged: its directory is not where it should be");
    EXPECT_EQ(
        with([](TestArchive& a) { a.directorySizeLie = -1; }), ": is damaged: its directory is not where it should be");
    EXPECT_EQ(with([](TestArchive& a) { a.beforeEnd = "x"; }), ": is damaged: its directory is not where it should be");
    EXPECT_EQ(with([](TestArchive& a) { a.countLie = 1; }), ": is damaged: its directory is cut off");
    EXPECT_EQ(with([](TestArchive& a) { a.countLie = -1; }), ": is damaged: its directory is longer than its entries");
    EXPECT_EQ(with([](TestArchive& a) { a.entries[1].offsetLie = 1; }),
        "fr.json: is damaged: it is not where the directory says");
    EXPECT_EQ(with([](TestArchive& a) { a.entries[1].offsetLie = 1 << 30; }),
        "fr.json: is damaged: it is not where the directory says");
    EXPECT_EQ(with([](TestArchive& a) { a.entries[1].packedSizeLie = 1; }), "fr.json: is damaged: it is cut off");
    EXPECT_EQ(with([](TestArchive& a) { a.before = "#!/bin/sh\n"; }), "de.json|fr.json");
}

TEST(ArchiveDirectory, ArchiveCutAtAnyByteIsRefused) {
    TestArchive archive{{{"de.json", "{\"a\": \"b\"}"}, {"fr.json", "{}"}}};
    archive.comment = "comment";
    const std::string whole = archive.make();
    for(std::size_t size = 0; size != whole.size(); ++size)
        EXPECT_EQ(read(whole.substr(0, size)), ": is no ZIP archive, or is cut off") << size;
}

TEST(ArchiveDirectory, AnyBytesAreRead) {
    const std::string whole = TestArchive{{{"de.json", "{\"a\": \"b\"}"}, {"fr/x.json", "{}"}}}.make();
    for(std::size_t i = 0; i != whole.size(); ++i)
        for(const char value: {'\0', '\1', '\x7f', '\xff'}) {
            std::string changed = whole;
            changed[i] = value;
            read(changed);
        }
    EXPECT_EQ(read("PK\5\6"), ": is no ZIP archive, or is cut off");
    EXPECT_EQ(read(std::string(1 << 20, 'P')), ": is no ZIP archive, or is cut off");
}

}
