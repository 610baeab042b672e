#include "LocalizeProgram.h"

#include <map>

#include "support/OrdinaryUser.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

TEST_F(LocalizeProgram, ExportWritesAFileForEachLanguage) {
    EXPECT_EQ(told({"export", "small", "--to", "out/i18n"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped  Stale\n"
        "en            2        0          0             0        0      0\n"
        "de            1        0          0             0        0      1\n--\n-- 0");
    EXPECT_EQ(desk.read("out/i18n/en/translation.json"), "{\n  \"door\": \"Door\",\n  \"key\": \"Key\"\n}\n");
    EXPECT_EQ(desk.read("out/i18n/de/translation.json"), "{\n  \"door\": \"T\u00fcr\"\n}\n");
}

TEST_F(LocalizeProgram, ExportWritesOnlyTheLanguagesThatAreAskedFor) {
    ASSERT_EQ(run({"export", "small", "--to", "i18n", "--languages", "de"}).exitCode, 0);
    EXPECT_TRUE(fs::exists(desk / "i18n/de/translation.json"));
    EXPECT_FALSE(fs::exists(desk / "i18n/en"));
}

TEST_F(LocalizeProgram, ASecondExportWritesNothing) {
    copySample();
    for(const char* const option: {"--to", "--zip"}) {
        ASSERT_EQ(run({"export", "game", option, "i18n"}).exitCode, 0);
        const auto files = desk.files();
        std::map<std::string, fs::file_time_type> times;
        for(const auto& [name, bytes]: files) times[name] = fs::last_write_time(desk / name);
        ASSERT_EQ(run({"export", "game", option, "i18n"}).exitCode, 0);
        EXPECT_EQ(desk.files(), files);
        for(const auto& [name, time]: times) EXPECT_EQ(fs::last_write_time(desk / name), time) << name;
    }
}

TEST_F(LocalizeProgram, ADryExportTellsWhatWouldBeWritten) {
    ASSERT_EQ(run({"export", "small", "--to", "i18n"}).exitCode, 0);
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    EXPECT_EQ(told({"export", "small", "--to", "i18n", "--dry-run"}),
        "de/translation.json: door: changed\n"
        "Language  Added  Changed  Unchanged  Without text  Skipped  Stale\n"
        "en            0        0          2             0        0      0\n"
        "de            0        1          0             0        0      1\n--\n-- 0");
}

TEST_F(LocalizeProgram, AMadeUpLanguageIsWrittenBesideTheOthers) {
    EXPECT_EQ(told({"export", "small", "--to", "i18n", "--pseudo"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped  Stale\n"
        "en            2        0          0             0        0      0\n"
        "de            1        0          0             0        0      1\n--\n"
        "en-XA/translation.json: has 2 texts in a made-up language\n-- 0");
    EXPECT_EQ(desk.read("i18n/en-XA/translation.json"),
        "{\n  \"door\": \"[\u010e\u00f6\u00f6\u0155 ~]\",\n  \"key\": \"[\u0136\u00e9\u00fd ~]\"\n}\n");
    EXPECT_TRUE(fs::exists(desk / "i18n/de/translation.json"));
    EXPECT_EQ(run({"import", "small", "--from", "i18n"}).error,
        "en-XA/translation.json: made-up texts of an export are not read\n");
}

TEST_F(LocalizeProgram, AnArchiveThatIsAFolderGetsIntoIt) {
    fs::create_directory(desk / "out");
    ASSERT_EQ(run({"export", "small", "--zip", "out"}).exitCode, 0);
    EXPECT_EQ(desk.read("out/localization.zip").substr(0, 2), "PK");
    ASSERT_EQ(run({"export", "small", "--zip", "new/i18n.zip"}).exitCode, 0);
    EXPECT_EQ(desk.read("new/i18n.zip"), desk.read("out/localization.zip"));
}

TEST_F(LocalizeProgram, AnExportThatCannotBeWrittenEndsWithThreeAndLeavesAllAsItWas) {
    desk.write("file", "text");
    fs::create_directories(desk / "i18n/de/translation.json");
    fs::create_directory(desk / "locked");
    const OrdinaryUser user{desk.path};
    fs::permissions(desk / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    const auto before = desk.files();
    EXPECT_EQ(told({"export", "small", "--to", "file"}), "--\nfile: is a file where a folder is needed\n-- 3");
    EXPECT_EQ(told({"export", "small", "--zip", "file"}),
        "--\nfile: is a file, but no ZIP archive that could be replaced\n-- 3");
    EXPECT_EQ(told({"export", "small", "--to", "i18n"}),
        "--\ni18n/de/translation.json: is a folder where a file is needed\n-- 3");
    if(user.isOrdinary) {
        EXPECT_EQ(told({"export", "small", "--to", "locked/i18n"}),
            "--\nlocked/i18n: cannot be made: Permission denied\n-- 3");
        EXPECT_EQ(told({"export", "small", "--zip", "locked/i18n.zip"}),
            "--\nlocked/.localization-export: cannot be made: Permission denied\n-- 3");
    }
    EXPECT_EQ(desk.files(), before);
}

TEST_F(LocalizeProgram, FilesThatAnExportLeavesAsTheyAreAreTold) {
    desk.write("i18n/it/translation.json", "{}");
    desk.write("i18n/de/old.json", "{}");
    const char* const table = "Language  Added  Changed  Unchanged  Without text  Skipped  Notices  Stale\n"
                              "en            2        0          0             0        0        0      0\n"
                              "de            1        0          0             0        0        1      1\n--\n";
    const char* const notices =
        "de/old.json: the project has no texts for the namespace old; this file stays as it is\n"
        "it/translation.json: the project does not have the language it; this file stays as it is\n-- 0";
    EXPECT_EQ(told({"export", "small", "--to", "i18n", "--dry-run"}),
        "en/translation.json: door: added\nen/translation.json: key: added\nde/translation.json: door: added\n" +
            std::string{table} + notices);
    EXPECT_EQ(told({"export", "small", "--to", "i18n"}), std::string{table} + notices);
    ASSERT_EQ(run({"export", "small", "--zip", "i18n.zip", "--languages", "de"}).error, "");
    EXPECT_EQ(run({"export", "small", "--zip", "i18n.zip", "--languages", "en"}).error,
        "de/translation.json: is not of this export, and stays in the archive\n");
}

TEST_F(LocalizeProgram, TermsThatHaveNoPlaceInTheFilesAreToldAndEndWithOne) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {
        "menu": {"sourceText": "/a", "translatable": true}, "menu.file": {"sourceText": "/b", "translatable": true}}},
        "a": "Menu", "b": "File"})");
    fs::remove_all(desk / "small/localization");
    EXPECT_EQ(told({"export", "small", "--to", "i18n"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            1        0          0             0        0\n--\n"
        "menu.file: cannot stand beside menu: one is a text, and the other lies below it\n-- 1");
    EXPECT_EQ(json({"export", "small", "--to", "i18n"}, 1)["lines"].Size(), 1u);
}

}
}
