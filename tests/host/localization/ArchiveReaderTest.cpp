#include "ArchiveReader.h"

#include <atomic>
#include <thread>

#include <zip.h>

#include <gtest/gtest.h>

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

/** An archive whose entries are deflated, however well that goes. */
std::string packed(const std::initializer_list<std::pair<const char*, std::string>> files) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    EXPECT_NE(archive, nullptr);
    for(const auto& [name, bytes]: files) {
        const zip_int64_t index =
            zip_file_add(archive, name, zip_source_buffer(archive, bytes.data(), bytes.size(), 0), 0);
        EXPECT_EQ(zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, 6), 0);
    }
    EXPECT_EQ(zip_close(archive), 0);
    zip_stat_t status;
    EXPECT_EQ(zip_source_stat(target, &status), 0);
    std::string out(status.size, '\0');
    EXPECT_EQ(zip_source_open(target), 0);
    EXPECT_EQ(zip_source_read(target, out.data(), out.size()), zip_int64_t(out.size()));
    zip_source_close(target);
    zip_source_free(target);
    return out;
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
    for(const unsigned method: {1u, 9u, 12u, 14u, 93u, 95u, 99u}) {
        archive.entries[0].method = method;
        EXPECT_EQ(readAll(archive.make()), "de.json: is packed in another way than by deflate") << method;
    }
    archive.entries[0].method = ArchiveDirectory::Deflated;
    EXPECT_EQ(readAll(archive.make()).substr(0, 20), "de.json: is damaged:");
}

TEST(ArchiveReader, EntriesOfWritersThatStreamAndWithZip64SizesAreRead) {
    using Descriptor = TestArchive::Descriptor;
    for(const Descriptor descriptor: {Descriptor::None, Descriptor::Plain, Descriptor::Signed64})
        for(const bool is64: {false, true}) {
            TestArchive archive{{{"de.json", "{}"}, {"empty.json", ""}}};
            for(TestArchive::Entry& entry: archive.entries) {
                entry.descriptor = descriptor;
                entry.is64 = is64;
            }
            archive.is64 = archive.isFull = is64;
            EXPECT_EQ(readAll(archive.make()), "{}|") << int(descriptor) << is64;
        }
}

TEST(ArchiveReader, SizeOf64BitsThatIsALieIsRefused) {
    TestArchive archive{{{"de.json", "{}"}}};
    archive.entries[0].is64 = true;
    archive.entries[0].descriptor = TestArchive::Descriptor::Signed64;
    for(const std::uint64_t lie: {std::uint64_t{1}, std::uint64_t{1} << 32, std::uint64_t{1} << 63}) {
        archive.entries[0].size64Lie = lie;
        EXPECT_EQ(readAll(archive.make()), "de.json: is damaged: its sizes do not stand behind it as in the directory");
    }
}

TEST(ArchiveReader, BombIsRefusedFrom100KilobytesOn) {
    EXPECT_TRUE(readAll(packed({{"de.json", std::string(100'000, ' ')}})) == std::string(100'000, ' '));
    EXPECT_EQ(readAll(packed({{"de.json", std::string(100'001, ' ')}})).substr(0, 100),
        "de.json: is packed more than 100 times smaller than it is");
}

TEST(ArchiveReader, RatioOf100IsAsMuchAsMayBe) {
    const auto archive = [](const std::size_t blanks) {
        return packed({{"de.json", noise(1000) + std::string(blanks, ' ')}});
    };
    const auto isTooMuch = [&](const std::size_t blanks) {
        ArchiveReader reader;
        ArchiveRefusal refusal;
        const std::string bytes = archive(blanks);
        EXPECT_TRUE(reader.open(viewed(bytes), refusal));
        return 1000 + blanks > 100 * reader.entries()[0].packedSize;
    };
    std::size_t fits = 100'000, isOver = 200'000;
    ASSERT_FALSE(isTooMuch(fits));
    ASSERT_TRUE(isTooMuch(isOver));
    while(isOver - fits > 1) {
        const std::size_t middle = (fits + isOver) / 2;
        (isTooMuch(middle) ? isOver : fits) = middle;
    }
    EXPECT_EQ(readAll(archive(fits)).size(), 1000 + fits);
    EXPECT_EQ(readAll(archive(isOver)).substr(0, 100), "de.json: is packed more than 100 times smaller than it is");
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

TEST(ArchiveReader, ThreadsTogetherGetNoMoreThan512Mebibytes) {
    const std::string archive = packed({{"de.json", noise(2 << 20) + std::string(62 << 20, 'x')}});
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(archive), refusal));
    std::atomic<std::size_t> read{0}, refused{0};
    {
        std::vector<std::jthread> threads;
        for(std::size_t i = 0; i != 12; ++i)
            threads.emplace_back([&] {
                Containers::String bytes;
                ArchiveRefusal own;
                if(reader.read(0, bytes, own)) ++read;
                else if(own.reason == "makes more than 512 MiB with those before it") ++refused;
            });
    }
    EXPECT_LE(read, 8u);
    EXPECT_EQ(read + refused, 12u);
}

TEST(ArchiveReader, WhatIsRefusedTakesNothingOfTheLimit) {
    const std::string large = noise(2 << 20) + std::string(62 << 20, 'x');
    const std::string archive = packed({{"de.json", large}, {"fr.json", large + 'x'}});
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(archive), refusal));
    Containers::String bytes;
    for(int i = 0; i != 9; ++i) EXPECT_FALSE(reader.read(1, bytes, refusal));
    EXPECT_EQ(refusal.reason, "is larger than 64 MiB");
    for(int i = 0; i != 8; ++i) EXPECT_TRUE(reader.read(0, bytes, refusal)) << i;
}

TEST(ArchiveReader, CountsByTheSizesThatAreToldHowManyEntriesAreWithinTheLimit) {
    TestArchive archive{{{"a.json", "{}"}, {"b.json", "{}"}}};
    // Sizes beyond what any entry may have count as the most that one may have.
    archive.entries[0].sizeLie = (64 << 20) - 2;
    archive.entries[1].sizeLie = 1 << 30;
    const std::string bytes = archive.make();
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(bytes), refusal)) << copied(refusal.reason);
    const std::size_t entries[]{0, 1, 0, 1, 0, 1, 0, 1, 0};
    EXPECT_EQ(reader.countWithin(entries), 8u);
    EXPECT_EQ(reader.countWithin(Containers::arrayView(entries).prefix(8)), 8u);
    EXPECT_EQ(reader.countWithin({}), 0u);
}

TEST(ArchiveReader, SeveralThreadsReadAtOnce) {
    const std::string whole = packed({{"a.json", noise(3 << 20)}, {"b.json", std::string(90'000, 'b')}});
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(whole), refusal));
    bool isRead[4]{};
    {
        std::vector<std::jthread> threads;
        for(std::size_t i = 0; i != 4; ++i)
            threads.emplace_back([&, i] {
                Containers::String bytes;
                ArchiveRefusal own;
                isRead[i] = reader.read(i % 2, bytes, own) && bytes.size() == (i % 2 ? 90'000 : 3 << 20);
            });
    }
    for(const bool one: isRead) EXPECT_TRUE(one);
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
