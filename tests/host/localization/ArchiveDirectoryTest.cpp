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
        NameCase{std::string{"de.json\0.txt", 12}, "de.json\\x00.txt: has a zero byte in its name"},
        NameCase{"", ": has an entry without a name"}));

TEST(ArchiveDirectory, LinksAndDevicesAreRefused) {
    EXPECT_EQ(readOne({"de.json", "/etc/passwd", 0, 0, 0120777}), "de.json: is a link or a device");
    for(const unsigned type: {0010000u, 0020000u, 0060000u, 0140000u})
        EXPECT_EQ(readOne({"de.json", "", 0, 0, type | 0644}), "de.json: is a link or a device");
    EXPECT_EQ(readOne({"de.json", "{}", 0, 0, 0}), "de.json");
    // Whatever system an archive says it is of.
    for(const unsigned system: {0u, 10u, 19u}) {
        TestArchive::Entry entry{"de.json", "/etc/passwd", 0, 0, 0120777};
        entry.system = system;
        EXPECT_EQ(readOne(entry), "de.json: is a link or a device");
    }
    TestArchive::Entry reparsePoint{"de.json", "{}", 0, 0, 0};
    reparsePoint.system = 10;
    reparsePoint.attributes = 0x400;
    EXPECT_EQ(readOne(reparsePoint), "de.json: is a link or a device");
}

TEST(ArchiveDirectory, EncryptedEntriesAreRefused) {
    for(const unsigned flag: {1u, 1u << 6, 1u << 13}) {
        EXPECT_EQ(readOne({"de.json", "{}", flag}), "de.json: is encrypted") << flag;
        TestArchive::Entry entry{"de.json", "{}"};
        entry.localFlagsLie = flag;
        EXPECT_EQ(readOne(entry), "de.json: is encrypted") << flag;
    }
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
    EXPECT_EQ(read(TestArchive{{{"straße.json", ""}, {"STRASSE.json", ""}}}.make()),
        "STRASSE.json: has the name of another entry");
    EXPECT_EQ(read(TestArchive{{{"\u00e9.json", ""}, {"e\u0301.json", ""}}}.make()),
        "e\u0301.json: has the name of another entry");
}

TEST(ArchiveDirectory, ControlCharactersInNamesAreShownAsEscapes) {
    EXPECT_EQ(readOne({"../\x1b[2Jde\n.json", "{}"}), "../\\x1b[2Jde\\n.json: leads out of its folder");
}

TEST(ArchiveDirectory, NamesAreUtf8) {
    EXPECT_EQ(readOne({"M\x82nu/de.json", "{}"}), "Ménu/de.json");
    EXPECT_EQ(readOne({"M\x82nu/de.json", "{}", 1u << 11}), "M\\x82nu/de.json: has a name that is not valid UTF-8");
    EXPECT_EQ(readOne({"Ménu/de.json", "{}"}), "Ménu/de.json");
    EXPECT_EQ(readOne({"Ménu/de.json", "{}", 1u << 11}), "Ménu/de.json");
    EXPECT_EQ(read(TestArchive{{{"M\x82nu.json", ""}, {"Ménu.json", ""}}}.make()),
        "Ménu.json: has the name of another entry");
}

TEST(ArchiveDirectory, EntryWithTwoNamesIsRefused) {
    TestArchive::Entry entry{"de.json", "{}"};
    entry.hasLocalName = true;
    entry.localName = "../x.js";
    EXPECT_EQ(readOne(entry), "de.json: has two names");
}

TEST(ArchiveDirectory, HeadersThatContradictTheDirectoryAreRefused) {
    const auto with = [](const auto& lie) {
        TestArchive::Entry entry{"de.json", "{}"};
        lie(entry);
        return readOne(entry);
    };
    using Entry = TestArchive::Entry;
    EXPECT_EQ(with([](Entry& e) { e.localSizeLie = 1; }), "de.json: has two sizes");
    EXPECT_EQ(with([](Entry& e) { e.localSizeLie = -2; }), "de.json: has two sizes");
    EXPECT_EQ(with([](Entry& e) { e.localCrcLie = 1; }), "de.json: has two checksums");
    EXPECT_EQ(with([](Entry& e) { e.localMethodLie = 8; }), "de.json: is packed in two ways");
    EXPECT_EQ(with([](Entry& e) { e.localFlagsLie = 1; }), "de.json: is encrypted");
    // Zeros say that the truth stands behind the bytes, where it is not.
    EXPECT_EQ(with([](Entry& e) {
        e.localFlagsLie = 8;
        e.localSizeLie = -2;
    }),
        "de.json: is damaged: its sizes do not stand behind it as in the directory");
    // How hard the writer tried to pack is nobody's business.
    EXPECT_EQ(with([](Entry& e) { e.localFlagsLie = 2; }), "de.json");
}

TEST(ArchiveDirectory, EntriesOfWritersThatStreamAreRead) {
    using Descriptor = TestArchive::Descriptor;
    for(const Descriptor descriptor: {Descriptor::Plain, Descriptor::Signed, Descriptor::Plain64, Descriptor::Signed64})
        for(const bool is64: {false, true}) {
            TestArchive archive{{{"de.json", "{\"a\": \"b\"}"}, {"empty.json", ""}}};
            for(TestArchive::Entry& entry: archive.entries) {
                entry.descriptor = descriptor;
                entry.is64 = is64;
            }
            EXPECT_EQ(read(archive.make()), "de.json|empty.json") << int(descriptor) << is64;
            archive.entries[0].localSizeLie = 3;
            archive.entries[0].is64 = false;
            EXPECT_EQ(read(archive.make()), "de.json: has two sizes") << int(descriptor);
            archive.entries[0].localSizeLie = 0;
            archive.entries[0].localCrcLie = 3;
            EXPECT_EQ(read(archive.make()), "de.json: has two checksums") << int(descriptor);
        }
    TestArchive::Entry entry{"de.json", "{}"};
    entry.descriptor = Descriptor::Missing;
    EXPECT_EQ(readOne(entry), "de.json: is damaged: its sizes do not stand behind it as in the directory");
    // Some set the flag and know all the same; of an empty entry, zeros are the truth.
    TestArchive::Entry known{"de.json", "{}"};
    known.flags = 8;
    EXPECT_EQ(readOne(known), "de.json");
    TestArchive::Entry empty{"de/", "", 0, 0, 040755};
    empty.descriptor = Descriptor::Missing;
    EXPECT_EQ(readOne(empty), "");
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

    // The first one's bytes reach over the second one's header, as in bombs that pack many entries into the same bytes.
    TestArchive quoted{{{"de.json", "{}"}, {"fr.json", "{}"}}};
    quoted.entries[0].packedSizeLie = quoted.entries[0].sizeLie = 10;
    EXPECT_EQ(read(quoted.make()), "fr.json: shares bytes with another entry");
}

TEST(ArchiveDirectory, EntriesThatShareBytesWithTheDirectoryAreRefused) {
    TestArchive archive{{{"de.json", "{}"}}};
    archive.entries[0].packedSizeLie = archive.entries[0].sizeLie = 1;
    EXPECT_EQ(read(archive.make()), "de.json: shares bytes with the archive's directory");
    archive.entries[0].localExtra = std::string(60000, '\0');
    archive.entries[0].packedSizeLie = archive.entries[0].sizeLie = 0;
    EXPECT_EQ(read(archive.make()), "de.json");
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
    TestArchive::Entry elsewhere{"de.json", "{}"};
    elsewhere.disk = 1;
    EXPECT_EQ(readOne(elsewhere), "de.json: lies in another file");

    TestArchive large{{{"de.json", "{}"}}};
    large.is64 = true;
    large.disk64 = 1;
    EXPECT_EQ(read(large.make()), ": is part of an archive in several files");
    large.disk64 = 0;
    large.diskCount64 = 2;
    EXPECT_EQ(read(large.make()), ": is part of an archive in several files");
}

TEST(ArchiveDirectory, Zip64NumbersOfSmallArchivesAreRead) {
    for(const bool isFull: {false, true})
        for(const bool areEntries64: {false, true}) {
            TestArchive archive{{{"de.json", "{}"}, {"fr.json", "{\"a\": \"b\"}"}, {"it/", ""}}};
            archive.is64 = true;
            archive.isFull = isFull;
            for(TestArchive::Entry& entry: archive.entries) entry.is64 = areEntries64;
            EXPECT_EQ(read(archive.make()), "de.json|fr.json|");
            // Behind the entries alone.
            archive.is64 = archive.isFull = false;
            EXPECT_EQ(read(archive.make()), "de.json|fr.json|");
        }
    // A field that nothing asks for is none of the archive's business.
    TestArchive::Entry needless{"de.json", "{}"};
    needless.extra = needless.localExtra = TestArchive::field(1, std::string(16, '\7'));
    EXPECT_EQ(readOne(needless), "de.json");
}

TEST(ArchiveDirectory, FalseZip64NumbersAreRefused) {
    const auto with = [](const auto& lie) {
        TestArchive archive{{{"de.json", "{}"}, {"fr.json", "{}"}}};
        archive.is64 = archive.isFull = archive.entries[0].is64 = true;
        lie(archive);
        return read(archive.make());
    };
    EXPECT_EQ(with([](TestArchive&) {}), "de.json|fr.json");
    for(const std::uint64_t lie: {std::uint64_t{1}, ~std::uint64_t{}, std::uint64_t{1} << 32, std::uint64_t{1} << 63}) {
        EXPECT_EQ(with([&](TestArchive& a) { a.end64OffsetLie = lie; }),
            ": is damaged: its ZIP64 end is not where it should be");
        EXPECT_EQ(with([&](TestArchive& a) { a.directoryOffset64Lie = lie; }),
            ": is damaged: its directory is not where it should be");
        EXPECT_EQ(with([&](TestArchive& a) { a.directorySize64Lie = lie; }),
            ": is damaged: its directory is not where it should be");
        EXPECT_EQ(with([&](TestArchive& a) { a.entries[0].offset64Lie = lie; }),
            "de.json: is damaged: it is not where the directory says");
        EXPECT_EQ(with([&](TestArchive& a) { a.entries[0].size64Lie = lie; }), "de.json: has two sizes");
        // One end says one thing, the other another.
        EXPECT_EQ(with([&](TestArchive& a) {
            a.directoryOffset64Lie = lie;
            a.isFull = false;
        }),
            ": is damaged: its two ends contradict each other");
        EXPECT_EQ(with([&](TestArchive& a) {
            a.count64Lie = lie;
            a.isFull = false;
        }),
            ": is damaged: its two ends contradict each other");
    }
    EXPECT_EQ(with([](TestArchive& a) { a.count64Lie = 1; }), ": is damaged: its directory is cut off");
    EXPECT_EQ(with([](TestArchive& a) { a.count64Lie = std::uint64_t{1} << 62; }), ": has more than 10000 entries");
}

TEST(ArchiveDirectory, Zip64NumbersThatAreMissingAreRefused) {
    TestArchive::Entry entry{"de.json", "{}"};
    entry.packedSizeLie = -3;
    EXPECT_EQ(readOne(entry), "de.json: is damaged: its ZIP64 sizes are missing");
    TestArchive archive{{{"de.json", "{}"}}};
    archive.isFull = true;
    EXPECT_EQ(read(archive.make()), ": has more than 10000 entries");
    TestArchive located{{{"de.json", "{}"}}};
    TestArchive::four(located.beforeEnd, 0x07064b50);
    located.beforeEnd += std::string(16, '\0');
    EXPECT_EQ(read(located.make()), ": is damaged: its ZIP64 end is not where it should be");
}

TEST(ArchiveDirectory, UnknownAndDamagedExtraFieldsArePassedOver) {
    for(const std::string& extra:
        {TestArchive::field(0x7855, "unix"), TestArchive::field(0x9999, std::string(500, 'x')), std::string(3, '\0'),
            std::string{"\x55\x54\xff\xff", 4}, std::string{"\1"}}) {
        TestArchive::Entry entry{"de.json", "{}"};
        entry.extra = entry.localExtra = extra;
        EXPECT_EQ(readOne(entry), "de.json");
    }
}

TEST(ArchiveDirectory, WhatFollowsTheEndIsRefused) {
    const std::string whole = TestArchive{{{"de.json", "{}"}}}.make();
    EXPECT_EQ(read(whole + "\n"), ": is damaged: something follows its end");
    EXPECT_EQ(read(whole + std::string(60000, 'x')), ": is damaged: something follows its end");
    // Writers of whole blocks fill the last one with zeros.
    EXPECT_EQ(read(whole + std::string(9000, '\0')), "de.json");
    EXPECT_EQ(read(whole + std::string(9000, '\0') + "x"), ": is damaged: something follows its end");
    TestArchive commented{{{"de.json", "{}"}}};
    commented.comment = std::string{"a\0\0", 3};
    EXPECT_EQ(read(commented.make()), "de.json");
    EXPECT_EQ(read(commented.make() + std::string(9000, '\0')), "de.json");
    EXPECT_EQ(read(whole + std::string(100, '\0') + whole), ": is damaged: its directory is not where it should be");
}

TEST(ArchiveDirectory, ArchiveWithTwoEndsIsRefused) {
    // Some take the last end, some the first one whose comment fits: to each of them this would be another archive.
    TestArchive archive{{{"de.json", "{}"}}};
    archive.comment = TestArchive{{{"fr.json", "{}"}}}.make();
    EXPECT_EQ(read(archive.make()), ": is ambiguous: it has two ends");
    archive.comment += "x";
    EXPECT_EQ(read(archive.make()), ": is ambiguous: it has two ends");
    archive.comment = "PK\5\6" + std::string(30, 'x');
    EXPECT_EQ(read(archive.make()), ": is ambiguous: it has two ends");
    // An archive in an archive is nothing but bytes.
    EXPECT_EQ(readOne({"a.zip", TestArchive{{{"de.json", "{}"}}}.make()}), "a.zip");
}

TEST(ArchiveDirectory, WhatStandsBeforeTheArchiveIsPassedOverWhereOffsetsCountIt) {
    TestArchive archive{{{"de.json", "{}"}, {"fr.json", "{}"}}};
    archive.before = "#!/bin/sh\nexit\n";
    EXPECT_EQ(read(archive.make()), "de.json|fr.json");
    archive.before.clear();
    EXPECT_EQ(read("#!/bin/sh\n" + archive.make()), ": is damaged: its directory is not where it should be");
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
