#include "ArchiveWriter.h"

#include <zip.h>

#include <gtest/gtest.h>

#include "ArchiveReader.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string archive() {
    const StagedFile files[]{{"en/translation.json", "{\n  \"a\": \"A\"\n}\n"}, {"pt-BR/translation.json", "{}\n"}};
    Containers::String bytes, reason;
    EXPECT_TRUE(writeArchive(files, bytes, reason)) << copied(reason);
    return copied(bytes);
}

}

TEST(ArchiveWriter, EqualFilesGiveEqualBytes) { EXPECT_EQ(archive(), archive()); }

TEST(ArchiveWriter, EntriesHaveTheFirstDateUsualPermissionsAndDeflate) {
    const std::string bytes = archive();
    ASSERT_EQ(bytes.substr(0, 4), "PK\3\4");
    zip_error_t error;
    zip_error_init(&error);
    zip_t* const opened =
        zip_open_from_source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error), ZIP_RDONLY, &error);
    ASSERT_NE(opened, nullptr);
    ASSERT_EQ(zip_get_num_entries(opened, 0), 2);
    EXPECT_STREQ(zip_get_name(opened, 0, 0), "en/translation.json");
    EXPECT_STREQ(zip_get_name(opened, 1, 0), "pt-BR/translation.json");
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    EXPECT_EQ(zip_file_get_external_attributes(opened, 0, 0, &system, &attributes), 0);
    EXPECT_EQ(system, ZIP_OPSYS_UNIX);
    EXPECT_EQ(attributes >> 16, 0100644u);
    zip_discard(opened);
    // Time 00:00:00 and date 1980-01-01 of the first header.
    EXPECT_EQ(bytes.substr(10, 4), (std::string{"\0\0\x21\0", 4}));
}

TEST(ArchiveWriter, WhatIsPackedTooWellForTheReaderIsStored) {
    const std::string blanks(300'000, ' ');
    const StagedFile files[]{{"de.json", "{}"}, {"fr.json", Containers::String{viewed(blanks)}}};
    Containers::String bytes, reason;
    ASSERT_TRUE(writeArchive(files, bytes, reason)) << copied(reason);
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(bytes, refusal));
    Containers::String read;
    EXPECT_TRUE(reader.read(1, read, refusal)) << copied(refusal.reason);
    EXPECT_EQ(read, files[1].bytes);
    EXPECT_EQ(reader.entries()[1].method, ArchiveDirectory::Stored);
    EXPECT_EQ(reader.entries()[0].method, ArchiveDirectory::Deflated);
}

TEST(ArchiveWriter, NamesThatSomeSystemsTakeForOneAreAnError) {
    const StagedFile files[]{{"de/menu.json", "{}"}, {"de/Menu.json", "{}"}};
    Containers::String bytes, reason;
    EXPECT_FALSE(writeArchive(files, bytes, reason));
    EXPECT_EQ(reason, "de/Menu.json: has the name of another entry");
}

TEST(ArchiveWriter, NothingIsNoArchive) {
    Containers::String bytes, reason;
    EXPECT_FALSE(writeArchive({}, bytes, reason));
    EXPECT_EQ(reason, "there is nothing to put into the archive");
}

}
