#include "ArchiveReader.h"

#include <gtest/gtest.h>

#include "ArchiveWriter.h"
#include "TestArchive.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** The bytes of all entries with "|" between, or "entry: reason". */
std::string readAll(const std::string& archive) {
    ArchiveReader reader;
    ArchiveRefusal refusal;
    const auto refused = [&] { return copied(refusal.entry) + ": " + copied(refusal.reason); };
    if(!reader.open(viewed(archive), refusal)) return refused();
    std::string all;
    for(std::size_t i = 0; i != reader.entries().size(); ++i) {
        Containers::String bytes;
        if(!reader.read(i, bytes, refusal)) return refused();
        all += (i ? "|" : "") + copied(bytes);
    }
    return all;
}

std::string packed(const std::initializer_list<std::pair<const char*, std::string>> files) {
    Containers::Array<StagedFile> staged{Corrade::ValueInit, files.size()};
    std::size_t i = 0;
    for(const auto& [name, bytes]: files) staged[i++] = {name, Containers::String{viewed(bytes)}};
    Containers::String bytes, reason;
    EXPECT_TRUE(writeArchive(staged, bytes, reason)) << copied(reason);
    return copied(bytes);
}

/** Bytes that cannot be packed. */
std::string noise(const std::size_t size) {
    std::string bytes(size, '\0');
    std::uint64_t state = 1;
    for(char& c: bytes) c = char((state = state * 6364136223846793005u + 1442695040888963407u) >> 56);
    return bytes;
}

}

TEST(ArchiveReader, ReadsStoredAndPackedEntries) {
    EXPECT_EQ(readAll(TestArchive{{{"de.json", "{}"}, {"fr.json", ""}}}.make()), "{}|");
    EXPECT_EQ(
        readAll(packed({{"a.json", "aaaaaaaaaaaaaaaaaaaaaaaa"}, {"b/c.json", "b"}})), "aaaaaaaaaaaaaaaaaaaaaaaa|b");
}

TEST(ArchiveReader, WhatTheDirectoryRefusesIsRefused) {
    EXPECT_EQ(readAll("no archive"), ": is no ZIP archive, or is cut off");
    EXPECT_EQ(readAll(TestArchive{{{"../x", ""}}}.make()), "../x: leads out of its folder");
}

TEST(ArchiveReader, DamagedEntryIsRefused) {
    TestArchive archive{{{"de.json", "{\"a\": \"b\"}"}}};
    archive.entries[0].crcLie = 1;
    EXPECT_EQ(readAll(archive.make()), "de.json: is damaged: CRC error");

    std::string damaged = packed({{"de.json", noise(1000) + std::string(1000, 'a')}});
    damaged[500] = char(damaged[500] + 1);
    EXPECT_EQ(readAll(damaged).substr(0, 20), "de.json: is damaged:");
}

TEST(ArchiveReader, SizesThatAreLiesAreRefused) {
    for(const int lie: {-1, 1, 1 << 30}) {
        TestArchive archive{{{"de.json", "{\"a\": \"b\"}"}, {"fr.json", "{}"}}};
        archive.entries[0].sizeLie = lie;
        EXPECT_EQ(readAll(archive.make()).substr(0, 20), "de.json: is damaged:") << lie;
    }
}

TEST(ArchiveReader, OtherMethodsOfPackingAreRefused) {
    TestArchive archive{{{"de.json", "{}"}}};
    archive.entries[0].method = 1;
    EXPECT_EQ(readAll(archive.make()).substr(0, 20), "de.json: is damaged:");
}

TEST(ArchiveReader, BombIsRefusedFrom100KilobytesOn) {
    EXPECT_EQ(readAll(packed({{"de.json", std::string(100'000, ' ')}})), std::string(100'000, ' '));
    EXPECT_EQ(readAll(packed({{"de.json", std::string(200'000, ' ')}})),
        "de.json: is packed more than 100 times smaller than it is");
}

TEST(ArchiveReader, FileOfMoreThan64MebibytesIsRefused) {
    // Half noise, so that the ratio is none of the reasons.
    const std::string bytes = noise(2 << 20) + std::string((62 << 20) + 1, 'x');
    EXPECT_EQ(readAll(packed({{"de.json", bytes.substr(1)}})).size(), bytes.size() - 1);
    EXPECT_EQ(readAll(packed({{"de.json", bytes}})), "de.json: is larger than 64 MiB");
}

TEST(ArchiveReader, MoreThan512MebibytesInAllAreRefused) {
    const std::string archive = packed({{"de.json", noise(2 << 20) + std::string(62 << 20, 'x')}});
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(archive), refusal));
    Containers::String bytes;
    for(int i = 0; i != 8; ++i) ASSERT_TRUE(reader.read(0, bytes, refusal)) << i;
    EXPECT_FALSE(reader.read(0, bytes, refusal));
    EXPECT_EQ(refusal.reason, "makes more than 512 MiB with those before it");
}

TEST(ArchiveReader, AnyByteMayBeWrong) {
    const std::string whole = packed({{"de.json", "{\"a\": \"bbbbbbbbbbbbbbbbbbbbbbbbbb\"}"}, {"fr/x.json", "{}"}});
    for(std::size_t i = 0; i != whole.size(); ++i)
        for(const int delta: {1, 127, 128, 255}) {
            std::string changed = whole;
            changed[i] = char(changed[i] + delta);
            readAll(changed);
        }
}

}
