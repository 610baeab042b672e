#include "Export.h"

#include "ArchiveReader.h"
#include "Exchange.h"
#include "ExportedDoors.h"
#include "TestArchive.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

using Test::CapturedOutput;

TEST(ExportArchives, CompressedToAFolderWritesLocalizationZip) {
    TestProject project{Doors};
    TestFolder folder;
    exportCompressedTo(project, {"en"}, folder.path);
    exportCompressedTo(project, {"en"}, folder / "made/");
    exportCompressedTo(project, {"en"}, folder / "deep/er/x.zip");
    ASSERT_EQ(folder.files().count("localization.zip"), 1u);
    EXPECT_EQ(folder.read("made/localization.zip"), folder.read("localization.zip"));
    EXPECT_EQ(folder.read("deep/er/x.zip"), folder.read("localization.zip"));
    EXPECT_EQ(folder.read("localization.zip").substr(0, 4), "PK\3\4");
}

TEST(ExportArchives, WhatElseAnArchiveHoldsStaysInItAtItsPlace) {
    TestProject project{Doors};
    TestFolder folder;
    const std::string photo{"\x89PNG\r\n\x1a\n\0", 9};
    folder.write("x.zip",
        TestArchive{{{"read me.txt", "Hello"}, {"en/translation.json", English}, {"empty/", ""},
                        {"de/translation.json", "{\"door\": {\"hint\": \"alt\"}}"}, {"a/photo.png", photo}}}
            .make());
    const CapturedOutput output;
    exportCompressedTo(project, {"ja", "de"}, folder / "x.zip");
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTermsCompressed(): read me.txt: is not of this export, and stays in the archive (2 "
        "more files)\n");

    const std::string archive = folder.read("x.zip");
    ArchiveReader reader;
    ArchiveRefusal refusal;
    ASSERT_TRUE(reader.open(viewed(archive), refusal));
    std::vector<std::pair<std::string, std::string>> found;
    for(std::size_t i = 0; i != reader.entries().size(); ++i) {
        Containers::String bytes;
        ASSERT_TRUE(reader.read(i, bytes, refusal));
        found.emplace_back(copied(reader.entries()[i].name), copied(bytes));
    }
    EXPECT_EQ(found,
        (std::vector<std::pair<std::string, std::string>>{{"read me.txt", "Hello"}, {"en/translation.json", English},
            {"de/translation.json", German}, {"a/photo.png", photo}, {"ja/translation.json", "{}\n"}}));

    const Files before = folder.files();
    exportCompressedTo(project, {"en"}, folder / "x.zip");
    exportCompressedTo(project, {"de"}, folder / "x.zip");
    EXPECT_EQ(folder.files(), before);
}

TEST(ExportArchives, AnArchiveWithAnythingThatCannotBeReadIsNotReplaced) {
    TestProject project{Doors};
    TestFolder folder;
    TestArchive archive{{{"de/translation.json", "{}"}, {"photo.png", "x"}}};
    archive.entries[1].crcLie = 1;
    folder.write("x.zip", archive.make());
    const Files before = folder.files();
    const CapturedOutput output;
    exportCompressedTo(project, {"de"}, folder / "x.zip");
    EXPECT_EQ(output.warning(),
        "LocalizationTools::exportTermsCompressed(): " + folder / "x.zip" +
            ": photo.png: is damaged: CRC error, and the archive is not replaced\n");
    EXPECT_EQ(folder.files(), before);
}

TEST(ExportArchives, ArchiveWithTheSameFilesIsNotPackedAnew) {
    TestProject project{Doors};
    TestFolder folder;
    // Not deflated, and in another order, than ours would be.
    folder.write("x.zip", TestArchive{{{"de/translation.json", German}, {"en/translation.json", English}}}.make());
    const Files before = folder.files();
    exportCompressedTo(project, {"en", "de"}, folder / "x.zip");
    EXPECT_EQ(folder.files(), before);
}

}
