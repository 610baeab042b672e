#include "TermFiles.h"

#include <cerrno>
#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "ArchiveDirectory.h"
#include "ArchiveWriter.h"
#include "FileSystem.h"
#include "TestArchive.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

/** Every file has the same many bytes, which nobody has to store. */
class LargeFiles: public MemoryFileSystem {
public:
    explicit LargeFiles(const std::size_t size): _bytes(size, ' ') {}

    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        if(const int error = MemoryFileSystem::readFile(path, bytes, maxSize)) return error;
        if(_bytes.size() > maxSize) return EFBIG;
        bytes = Containers::String{_bytes.data(), _bytes.size(), [](char*, std::size_t) {}};
        return 0;
    }

private:
    std::string _bytes;
};

TEST(TermFilesLimits, FilesAreNoLargerThanTheLimit) {
    const auto refusal = [](const std::size_t size) {
        LargeFiles files{size};
        files.put("/in/de.json", "");
        TermFiles found;
        return readTermFiles(files, "/in", {}, found) ? std::string{} : copied(found.refusals[0]);
    };
    EXPECT_EQ(refusal(64u << 20), "");
    EXPECT_EQ(refusal((64u << 20) + 1), "/in/de.json: is larger than 64 MiB");
}

/** Where every file is larger than it may be. */
class TooLargeFiles: public MemoryFileSystem {
public:
    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        const int error = MemoryFileSystem::readFile(path, bytes, maxSize);
        return error ? error : EFBIG;
    }
};

TEST(TermFilesLimits, WhatIsTooLargeIsRefusedAndNotUnreadable) {
    TooLargeFiles files;
    files.put("/in.zip", "");
    files.put("/in/de.json", "");
    for(const auto& [path, refusal]: {std::pair{"/in.zip", "/in.zip: is larger than 1 GiB"},
            std::pair{"/in", "/in/de.json: is larger than 64 MiB"}}) {
        TermFiles found;
        EXPECT_FALSE(readTermFiles(files, path, {}, found));
        ASSERT_EQ(found.refusals.size(), 1u);
        EXPECT_EQ(copied(found.refusals[0]), refusal);
        EXPECT_FALSE(found.isInaccessible);
    }
}

TEST(TermFilesLimits, AllFilesTogetherAreNoLargerThanTheLimit) {
    LargeFiles files{64u << 20};
    for(const char* const code: {"cs", "de", "es", "fr", "it", "ja", "ko", "pl"})
        files.put("/in/" + std::string{code} + ".json", "");
    TermFiles fitting;
    EXPECT_TRUE(readTermFiles(files, "/in", {}, fitting));
    files.put("/in/ru.json", "");
    TermFiles found;
    EXPECT_FALSE(readTermFiles(files, "/in", {}, found));
    ASSERT_EQ(found.refusals.size(), 1u);
    EXPECT_EQ(found.refusals[0], "/in/ru.json: makes more than 512 MiB with those before it");
}

TEST(TermFilesLimits, AllFilesOfAnArchiveAreNoLargerThanTheLimitInWhateverOrderTheyAreRead) {
    // With noise, so that the ratio is no reason to refuse it.
    std::string large(64u << 20, ' ');
    std::uint64_t state = 1;
    for(std::size_t i = 0; i != 2u << 20; ++i)
        large[i] = char((state = state * 6364136223846793005u + 1442695040888963407u) >> 56);
    const StagedFile one{"x.json", viewed(large)};
    Containers::String packed, reason;
    ASSERT_TRUE(writeArchive(Containers::arrayView(&one, 1), packed, reason)) << copied(reason);
    ArchiveDirectory directory;
    ArchiveRefusal refusal;
    ASSERT_TRUE(ArchiveDirectory::read(packed, directory, refusal));
    const ArchiveDirectory::Entry& entry = directory.entries[0];
    const std::string bytes = copied(packed.slice(entry.offset, entry.offset + entry.packedSize));

    TestArchive archive;
    for(const char* const code: {"cs", "de", "es", "fr", "it", "ja", "ko", "pl"}) {
        TestArchive::Entry file{code + std::string{".json"}, bytes};
        file.method = ArchiveDirectory::Deflated;
        file.sizeLie = int(large.size() - bytes.size());
        file.crcLie = entry.checksum - TestArchive::crc(bytes);
        archive.entries.push_back(file);
    }
    // Read while the one before it is, it comes first.
    archive.entries.push_back({"ru.json", "{}"});
    MemoryFileSystem files;
    files.put("/in.zip", archive.make());
    for(int run = 0; run != 3; ++run) {
        TermFiles found;
        EXPECT_FALSE(readTermFiles(files, "/in.zip", {}, found));
        ASSERT_EQ(found.refusals.size(), 1u);
        EXPECT_EQ(found.refusals[0], "/in.zip/ru.json: makes more than 512 MiB with those before it");
    }
}

TEST(TermFilesLimits, FilesAreNoMoreThanTheLimit) {
    MemoryFileSystem files;
    for(int i = 0; i != 10000; ++i) files.put("/in/de/" + std::to_string(i) + ".json", "");
    TermFiles fitting;
    EXPECT_TRUE(readTermFiles(files, "/in", {}, fitting));
    EXPECT_EQ(fitting.files.size(), 10000u);
    for(const char* const code: {"fr", "ja"}) files.put("/in/" + std::string{code} + ".json", "");
    TermFiles found;
    EXPECT_FALSE(readTermFiles(files, "/in", {}, found));
    ASSERT_EQ(found.refusals.size(), 1u);
    EXPECT_EQ(found.refusals[0], "/in: holds more than 10,000 files of terms");
}

}
