#include "LocalizeProgram.h"

#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "support/OrdinaryUser.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

TEST_F(LocalizeProgram, AnImportOfAnUnchangedExportChangesNothing) {
    copySample();
    ASSERT_EQ(run({"export", "game", "--to", "i18n"}).exitCode, 0);
    const auto before = desk.files();
    const auto time = fs::last_write_time(desk / "game/project.json");
    const ProgramResult result = run({"import", "game", "--from", "i18n"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(desk.files(), before);
    EXPECT_EQ(fs::last_write_time(desk / "game/project.json"), time);
}

TEST_F(LocalizeProgram, AnImportChangesTextsAndSaves) {
    desk.write("i18n/de/translation.json",
        R"({"door": "Pforte", "key": "Schl\u00fcssel", "brand": "x", "window": "Fenster"})");
    const char* const table = "Language  Added  Changed  Unchanged  Without text  Skipped\n"
                              "de            1        1          0             0        2\n";
    const char* const warnings =
        "de/translation.json: brand: is not translatable\nde/translation.json: window: no term has this key\n";
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--dry-run"}),
        std::string{"de/translation.json: door: changed\nde/translation.json: key: added\n"} + table + "--\n" +
            warnings + "-- 0");
    EXPECT_EQ(told({"import", "small", "--from", "i18n"}), std::string{table} + "--\n" + warnings + "-- 0");
    const std::string saved = desk.read("small/localization/de.json");
    EXPECT_NE(saved.find("\"key\": {\"text\": \"Schl\u00fcssel\", \"source\": \""), std::string::npos) << saved;
    EXPECT_EQ(run({"import", "small", "--from", "i18n"}).out,
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "de            0        0          2             0        2\n");
}

TEST_F(LocalizeProgram, AStaleTextThatComesBackIsConfirmedWhereThatIsSaid) {
    desk.write("i18n/de.json", R"({"door": "T\u00fcr"})");
    const auto stale = [this] {
        return json({"status", "small", "--languages", "de"}, 0)["languages"][0]["stale"].GetInt();
    };
    ASSERT_EQ(run({"import", "small", "--from", "i18n"}).error, "");
    EXPECT_EQ(stale(), 1);
    const std::string notice = "de.json: door: was stale, and is confirmed\n";
    EXPECT_EQ(run({"import", "small", "--from", "i18n", "--confirm", "--dry-run"}).error, notice);
    EXPECT_EQ(stale(), 1);
    EXPECT_EQ(run({"import", "small", "--from", "i18n", "--confirm"}).error, notice);
    EXPECT_EQ(stale(), 0);
    EXPECT_EQ(run({"import", "small", "--from", "i18n", "--confirm"}).error, "");
}

TEST_F(LocalizeProgram, MachinesGetTheTextsBeforeAndAfterAChange) {
    desk.write("i18n/de.json", R"({"door": "Pforte", "key": "Schl\u00fcssel"})");
    desk.write("i18n/en.json", R"({"door": "Gate", "key": "Key"})");
    const auto changes = [this](std::vector<std::string> arguments) {
        const rapidjson::Document document = json(std::move(arguments), 0);
        std::string lines;
        for(const rapidjson::Value& line: document["lines"].GetArray()) {
            const bool isChanged = std::string{line["outcome"].GetString()} == "changed";
            EXPECT_EQ(line.HasMember("before") && line.HasMember("after"), isChanged);
            if(isChanged)
                lines += std::string{line["language"].GetString()} + ' ' + line["term"].GetString() + ": " +
                    line["before"].GetString() + " > " + line["after"].GetString() + '\n';
        }
        return lines;
    };
    ASSERT_EQ(run({"export", "small", "--to", "out"}).exitCode, 0);
    const std::string expected = "en door: Door > Gate\nde door: T\u00fcr > Pforte\n";
    EXPECT_EQ(changes({"import", "small", "--from", "i18n", "--dry-run"}), expected);
    EXPECT_EQ(changes({"import", "small", "--from", "i18n"}), expected);
    EXPECT_EQ(changes({"export", "small", "--to", "out"}), expected);
}

TEST_F(LocalizeProgram, AProjectThatAnotherProgramWritesIsReadAndNotWritten) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    std::filesystem::create_directory(desk / "small/.editor");
    const auto before = desk.files();
    const int other = open((desk / "small/.editor").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    const char* const refusal = "--\nsmall: another program has the project open for writing\n-- 3";
    EXPECT_EQ(told({"import", "small", "--from", "i18n"}), refusal);
    EXPECT_EQ(told({"gather", "small"}), refusal);
    EXPECT_EQ(desk.files(), before);
    EXPECT_EQ(run({"import", "small", "--from", "i18n", "--dry-run"}).exitCode, 0);
    EXPECT_EQ(run({"status", "small"}).exitCode, 0);
    close(other);
    EXPECT_EQ(run({"import", "small", "--from", "i18n"}).exitCode, 0);
}

TEST_F(LocalizeProgram, ImportsAtOnceLoseNothing) {
    desk.write("de/de.json", R"({"door": "Pforte"})");
    desk.write("fr/fr.json", R"({"door": "Porte"})");
    for(int i = 0; i != 10; ++i) {
        desk.write("small/project.json", Small);
        fs::remove_all(desk / "small/localization");
        ProgramResult german{}, french{};
        {
            const std::jthread thread{[&] { german = run({"import", "small", "--from", "de"}); }};
            french = run({"import", "small", "--from", "fr"});
        }
        EXPECT_TRUE(german.exitCode == 0 || french.exitCode == 0) << german.error << french.error;
        for(const ProgramResult& result: {german, french}) {
            EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 3) << result.error;
            EXPECT_EQ(
                result.error.find("another program has the project open") != std::string::npos, result.exitCode == 3)
                << result.error;
        }
        EXPECT_EQ(desk.read("small/localization/de.json").find("Pforte") != std::string::npos, german.exitCode == 0);
        EXPECT_EQ(desk.read("small/localization/fr.json").find("Porte") != std::string::npos, french.exitCode == 0);
    }
}

TEST_F(LocalizeProgram, AnImportTakesOnlyTheLanguagesThatAreAskedFor) {
    desk.write("i18n/de.json", R"({"door": "Pforte"})");
    desk.write("i18n/fr.json", R"({"door": "Porte"})");
    const rapidjson::Document document = json({"import", "small", "--from", "i18n", "--languages", "fr"}, 0);
    ASSERT_EQ(document["languages"].Size(), 1u);
    EXPECT_STREQ(document["languages"][0]["language"].GetString(), "fr");
    EXPECT_NE(desk.read("small/project.json").find("\"fr\": {}"), std::string::npos);
    EXPECT_EQ(desk.read("small/localization/de.json"), R"({"door": {"text": "T\u00fcr"}})");
}

TEST_F(LocalizeProgram, FilesOfLanguagesThatNobodyAskedForRefuseNothing) {
    desk.write("i18n/de.json", R"({"door": "Pforte"})");
    desk.write("i18n/fr.json", "{");
    desk.write("i18n/ja.json", "{}");
    desk.write("i18n/ja/translation.json", "{}");
    fs::create_directories(desk / "i18n/ko/translation.json");
    const std::string table = "Language  Added  Changed  Unchanged  Without text  Skipped\n"
                              "de            0        1          0             0        0\n";
    EXPECT_EQ(run({"import", "small", "--from", "i18n"}).exitCode, 3);
    fs::remove_all(desk / "i18n/ko");
    EXPECT_EQ(run({"import", "small", "--from", "i18n"}).exitCode, 1);
    fs::create_directories(desk / "i18n/ko/translation.json");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "de", "--dry-run"}),
        "de.json: door: changed\n" + table + "--\n-- 0");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "de", "--check"}), table + "--\n-- 0");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "de,ja"}),
        "--\ni18n/ja.json: holds the same as i18n/ja/translation.json: one language, one namespace\n-- 1");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "it"}), "--\ni18n: has no file of it\n-- 1");
}

TEST_F(LocalizeProgram, LanguagesThatAnImportLacksAreTold) {
    desk.write("i18n/de.json", R"({"door": "Pforte"})");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "de,fr", "--dry-run"}),
        "de.json: door: changed\n"
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "de            0        1          0             0        0\n--\n"
        "fr: has no file among these\n-- 0");
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--languages", "ja,fr"}),
        "--\ni18n: has no file of ja\ni18n: has no file of fr\n-- 1");
}

TEST_F(LocalizeProgram, AnImportIsTakenFromAnArchive) {
    ASSERT_EQ(run({"export", "small", "--zip", "i18n.zip"}).exitCode, 0);
    desk.write("small/localization/de.json", "{}");
    EXPECT_EQ(run({"import", "small", "--from", "i18n.zip"}).exitCode, 0);
    EXPECT_NE(desk.read("small/localization/de.json").find("\"door\": {\"text\": \"T\u00fcr\""), std::string::npos);
}

TEST_F(LocalizeProgram, AFolderOfAnotherNameIsToldAndTakenWhereItIsMapped) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    desk.write("i18n/enGB/translation.json", R"({"door": "Doorway"})");
    const std::string notice =
        "enGB/translation.json: no language has the code enGB; the nearest is en-GB: rename it, or map it with --map "
        "enGB=en-GB\n";
    const auto unmapped = run({"import", "small", "--from", "i18n"});
    EXPECT_EQ(unmapped.error, notice);
    EXPECT_EQ(unmapped.exitCode, 1);
    EXPECT_NE(desk.read("small/localization/de.json").find("Pforte"), std::string::npos);
    const auto chosen = run({"import", "small", "--from", "i18n", "--languages", "de"});
    EXPECT_EQ(chosen.error, notice);
    EXPECT_EQ(chosen.exitCode, 0);
    const auto mapped = run({"import", "small", "--from", "i18n", "--map", "enGB=en-GB"});
    EXPECT_EQ(mapped.error, "");
    EXPECT_EQ(mapped.exitCode, 0);
    EXPECT_NE(desk.read("small/localization/en-GB.json").find("Doorway"), std::string::npos);
}

TEST_F(LocalizeProgram, AMappingOfANameThatNothingHasIsToldAndEndsWithOne) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    const std::string notice = "--map engb=en-GB: nothing is called engb here\n";
    EXPECT_EQ(told({"import", "small", "--from", "i18n", "--map", "engb=en-GB"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "de            0        1          0             0        0\n--\n" +
            notice + "-- 1");
    fs::create_directory(desk / "empty");
    EXPECT_EQ(told({"import", "small", "--from", "empty", "--map", "engb=en-GB"}),
        "--\nempty: holds no terms; " + notice + "-- 1");
    desk.write("i18n/engb/translation.json", R"({"door": "Doorway"})");
    EXPECT_EQ(run({"import", "small", "--from", "i18n", "--map", "engb=en-GB", "--languages", "de"}).exitCode, 0);
}

TEST_F(LocalizeProgram, AnImportOfWhichNothingFitsEndsWithOne) {
    desk.write("theirs/de.json", R"({"unknown": "x", "brand": "y", "door": ""})");
    const char* const failure = "theirs: nothing is taken over: all texts were skipped";
    EXPECT_EQ(told({"import", "small", "--from", "theirs"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "de            0        0          0             1        2\n--\n"
        "de.json: unknown: no term has this key\nde.json: brand: is not translatable\n" +
            std::string{failure} + "\n-- 1");
    const rapidjson::Document document = json({"import", "small", "--from", "theirs"}, 1);
    ASSERT_EQ(document["failures"].Size(), 1u);
    EXPECT_STREQ(document["failures"][0].GetString(), failure);
    EXPECT_EQ(document["lines"].Size(), 2u);
    // Of a language that is not begun yet an export has nothing either.
    desk.write("theirs/de.json", "{}");
    EXPECT_EQ(run({"import", "small", "--from", "theirs"}).exitCode, 0);
    desk.write("theirs/de.json", R"({"unknown": "x", "door": "T\u00fcr"})");
    EXPECT_EQ(run({"import", "small", "--from", "theirs"}).exitCode, 0);
}

TEST_F(LocalizeProgram, ARefusedFileRefusesTheWholeImportAndEndsWithOne) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    desk.write("i18n/fr/translation.json", "{\"door\": \"Porte\"");
    const auto before = desk.files();
    EXPECT_EQ(told({"import", "small", "--from", "i18n"}),
        "--\ni18n/fr/translation.json:1:17: the text ends too early\n-- 1");
    EXPECT_EQ(desk.files(), before);
}

TEST_F(LocalizeProgram, AProjectThatCannotTakeAnImportIsLeftAndEndsWithOne) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}}, "localization": {"strings": []}})");
    desk.write("i18n/de.json", R"({"door": "Pforte"})");
    const auto before = desk.files();
    EXPECT_EQ(
        told({"import", "small", "--from", "i18n"}), "--\nproject.json: /localization/strings: is no object\n-- 1");
    EXPECT_EQ(desk.files(), before);
    EXPECT_EQ(json({"import", "small", "--from", "i18n"}, 1)["failures"].Size(), 1u);
}

TEST_F(LocalizeProgram, AFileThatTheSystemDoesNotLetReadEndsWithThree) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    fs::create_directories(desk / "i18n/fr/translation.json");
    const auto before = desk.files();
    EXPECT_EQ(told({"import", "small", "--from", "i18n"}),
        "--\ni18n/fr/translation.json: cannot be read: Is a directory\n-- 3");
    EXPECT_EQ(desk.files(), before);
}

TEST_F(LocalizeProgram, WhereThereIsNothingToImportSaysSo) {
    fs::create_directory(desk / "empty");
    desk.write("file", "text");
    EXPECT_EQ(told({"import", "small", "--from", "nowhere"}), "--\nnowhere: there is no such folder or archive\n-- 3");
    EXPECT_EQ(told({"import", "small", "--from", "empty"}),
        "--\nempty: holds no terms: there is no <language code>/translation.json and no <language code>.json\n-- 1");
    desk.write("i18n/de/translation.json", "{}");
    EXPECT_EQ(told({"import", "small", "--from", "i18n/de/translation.json"}),
        "--\ni18n/de/translation.json: is a single file; give the folder around the languages with --from\n-- 2");
    EXPECT_EQ(told({"import", "small", "--from", "file"}), "--\nfile: is no ZIP archive, or is cut off\n-- 1");
}

TEST_F(LocalizeProgram, ANewProjectTakesEnglishAsItsDefaultLanguageWhereItIsThere) {
    desk.write("new/project.json", "{}");
    desk.write("i18n/de.json", R"({"door": "T\u00fcr"})");
    desk.write("i18n/fr.json", R"({"door": "Porte"})");
    const auto before = desk.files();
    EXPECT_EQ(told({"import", "new", "--from", "i18n"}),
        "--\nnew: has no languages yet; say with --default which one the source texts are in, as there is no en but "
        "fr, de\n-- 2");
    EXPECT_EQ(desk.files(), before);
    ASSERT_EQ(run({"import", "new", "--from", "i18n", "--default", "de"}).exitCode, 0);
    EXPECT_NE(desk.read("new/project.json").find("\"de\": {\n      \"isDefault\": true"), std::string::npos);

    desk.write("other/project.json", "{}");
    desk.write("i18n/en.json", R"({"door": "Door"})");
    ASSERT_EQ(run({"import", "other", "--from", "i18n"}).exitCode, 0);
    EXPECT_NE(desk.read("other/project.json").find("\"en\": {\n      \"isDefault\": true"), std::string::npos);
}

TEST_F(LocalizeProgram, AnImportThatCannotBeSavedTellsNoCounts) {
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    const OrdinaryUser user{desk.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    fs::permissions(desk / "small", fs::perms::owner_read | fs::perms::owner_exec);
    const auto before = desk.files();
    EXPECT_EQ(
        told({"import", "small", "--from", "i18n"}), "--\nsmall/.editor: cannot be made: Permission denied\n-- 3");
    EXPECT_EQ(desk.files(), before);
    const rapidjson::Document document = json({"import", "small", "--from", "i18n"}, 3);
    EXPECT_EQ(document["failures"].Size(), 1u);
    EXPECT_FALSE(document.HasMember("languages"));
}

TEST_F(LocalizeProgram, AnImportChecksWhatItHasBrought) {
    desk.write("theirs/de.json", R"({"key": " Schlüssel"})");
    const std::string before = desk.read("small/localization/de.json");
    const std::string finding =
        "localization/de.json: door: hint: is not marked as a translation of today's source text [stale]\n"
        "localization/de.json: key: warning: begins with \" \" where the source has no blank [outer-blanks]\n";
    const std::string table = "Language  Added  Changed  Unchanged  Without text  Skipped  Notices  Stale\n"
                              "de            1        0          0             0        0        2      1\n";
    EXPECT_EQ(told({"import", "small", "--from", "theirs", "--dry-run", "--check"}),
        "de.json: key: added\n" + table + "--\n" + finding + "-- 1");
    EXPECT_EQ(desk.read("small/localization/de.json"), before);
    EXPECT_EQ(told({"import", "small", "--from", "theirs", "--check"}), table + "--\n" + finding + "-- 1");
    EXPECT_NE(desk.read("small/localization/de.json"), before);
    EXPECT_EQ(run({"import", "small", "--from", "theirs"}).exitCode, 0);
    const rapidjson::Document document = json({"import", "small", "--from", "theirs", "--check"}, 1);
    EXPECT_EQ(document["lines"].Size(), 0u);
    EXPECT_EQ(document["languages"][0]["notices"].GetInt(), 0);
    EXPECT_EQ(document["languages"][0]["stale"].GetInt(), 1);
    EXPECT_EQ(document["warnings"].GetInt(), 1);
    EXPECT_EQ(document["hints"].GetInt(), 1);
    ASSERT_EQ(document["findings"].Size(), 2u);
    const rapidjson::Value& found = document["findings"][1];
    EXPECT_STREQ(found["check"].GetString(), "outer-blanks");
    EXPECT_STREQ(found["severity"].GetString(), "warning");
    EXPECT_STREQ(found["file"].GetString(), "localization/de.json");
    EXPECT_STREQ(found["path"].GetString(), "/key");
    desk.write("theirs/de.json", R"({"key": "Schlüssel"})");
    EXPECT_EQ(run({"import", "small", "--from", "theirs", "--check"}).exitCode, 0);
}

TEST_F(LocalizeProgram, AnImportWhoseKeysHaveNoPlaceIsDoneAndEndsWithOne) {
    desk.write("theirs/de.json", R"({"door": {"handle": "Klinke"}, "key": "Schlüssel"})");
    EXPECT_EQ(told({"import", "small", "--from", "theirs"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "de            1        0          0             0        1\n"
        "--\nde.json: door.handle: no term has this key, and it cannot stand beside door: one is a text, and "
        "the "
        "other lies below it\n-- 1");
    EXPECT_NE(desk.read("small/localization/de.json").find("Schlüssel"), std::string::npos);
    EXPECT_TRUE(json({"import", "small", "--from", "theirs"}, 1)["failures"].Empty());
    desk.write("theirs/de.json", R"({"unknown": "x", "key": "Schlüssel"})");
    EXPECT_EQ(run({"import", "small", "--from", "theirs"}).exitCode, 0);
}

}
}
