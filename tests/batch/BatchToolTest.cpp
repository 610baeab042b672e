#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <pty.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "TestFolder.h"
#include "end_to_end/Program.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

/** A project of two languages and few terms. */
constexpr const char* Small = R"({
  "languages": {"en": {"isDefault": true}, "de": {}},
  "localization": {"terms": {
    "door": {"sourceText": "/objects/door/text", "translatable": true},
    "key": {"sourceText": "/objects/key/text", "translatable": true},
    "brand": {"sourceText": "/objects/brand/text", "translatable": false}}},
  "objects": {"door": {"text": "Door"}, "key": {"text": "Key"}, "brand": {"text": "Quiet Harbour"}}
})";

/** The program, started as a pipeline would, in a folder of its own. */
class LocalizeProgram: public testing::Test {
protected:
    LocalizeProgram() {
        desk.write("small/project.json", Small);
        desk.write("small/localization/de.json", R"({"door": {"text": "T\u00fcr"}})");
    }

    /** Puts a copy of the sample project beside, in the folder "game". */
    void copySample() {
        fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", desk / "game", fs::copy_options::recursive);
        fs::remove_all(desk / "game/.editor");
    }

    ProgramResult run(
        std::vector<std::string> arguments, const std::vector<std::string>& environment = {"LC_ALL=C.UTF-8"}) const {
        arguments.insert(arguments.begin(), QUORVANE_LOCALIZE);
        return runProgram(arguments, desk.path, environment);
    }

    /** Output, error output and exit code, for a comparison at once. */
    std::string told(std::vector<std::string> arguments) const {
        const ProgramResult result = run(std::move(arguments));
        return result.out + "--\n" + result.error + "-- " + std::to_string(result.exitCode);
    }

    /** Standard output as JSON. */
    rapidjson::Document json(std::vector<std::string> arguments, const int exitCode) const {
        arguments.push_back("--json");
        const ProgramResult result = run(std::move(arguments));
        rapidjson::Document document;
        document.Parse(result.out.data(), result.out.size());
        EXPECT_FALSE(document.HasParseError()) << result.out;
        if(!document.IsObject()) document.SetObject();
        EXPECT_EQ(result.exitCode, exitCode) << result.error;
        EXPECT_TRUE(document.HasMember("exitCode") && document["exitCode"].GetInt() == exitCode) << result.out;
        return document;
    }

    TestFolder desk;
};

/** What a program shows on a terminal. */
std::string shown(const char* const program, const std::vector<std::string>& arguments, const std::string& folder,
    const unsigned short width) {
    winsize size{};
    size.ws_col = width;
    size.ws_row = 24;
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if(child == 0) {
        std::vector<char*> all{const_cast<char*>(program)};
        for(const std::string& argument: arguments) all.push_back(const_cast<char*>(argument.c_str()));
        all.push_back(nullptr);
        if(!chdir(folder.c_str())) execv(program, all.data());
        _exit(127);
    }
    std::string text;
    char buffer[4096];
    for(ssize_t count; (count = read(terminal, buffer, sizeof(buffer))) > 0;) text.append(buffer, std::size_t(count));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << text;
    return text;
}

// --- The program ----------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, LinksNeitherAWindowNorOpenGl) {
    const ProgramResult result = runProgram({"/usr/bin/ldd", QUORVANE_LOCALIZE}, desk.path);
    ASSERT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("libquorvane-project.so"), std::string::npos) << result.out;
    for(const char* const library: {"libGL", "libEGL", "libOpenGL", "libMagnumGL", "epoxy", "glfw", "libX", "libxcb",
            "wayland", "imgui", "quorvane-host", "compat-gl", "fontconfig", "freetype", "libpng"})
        EXPECT_EQ(result.out.find(library), std::string::npos) << library << '\n' << result.out;
}

TEST_F(LocalizeProgram, HelpGoesToTheOutputAndWrongUsageToTheErrors) {
    const ProgramResult help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.error, "");
    EXPECT_NE(help.out.find("Usage: quorvane-localize COMMAND"), std::string::npos);
    EXPECT_EQ(told({}),
        "--\nquorvane-localize: a command is missing; there are status, gather, check, export and import\n"
        "quorvane-localize --help tells how it is used\n-- 2");
    EXPECT_EQ(told({"export", "small"}),
        "--\nquorvane-localize export: where to write is missing: --to FOLDER, or --zip FILE for an archive\n"
        "quorvane-localize export --help tells how it is used\n-- 2");
}

TEST_F(LocalizeProgram, OutputThatCannotBeWrittenEndsWithThree) {
    const ProgramResult result =
        runProgram({"/bin/sh", "-c", "\"$0\" status small >/dev/full", QUORVANE_LOCALIZE}, desk.path);
    EXPECT_EQ(result.error, "standard output: cannot be written: No space left on device\n");
    EXPECT_EQ(result.exitCode, 3);
}

TEST_F(LocalizeProgram, WhatIsDoneStaysDoneWhereOnlyTheOutputCannotBeWritten) {
    desk.write("i18n/de.json", R"({"door": "Pforte"})");
    const ProgramResult result =
        runProgram({"/bin/sh", "-c", "\"$0\" import small --from i18n >/dev/full", QUORVANE_LOCALIZE}, desk.path);
    EXPECT_EQ(result.error, "standard output: cannot be written: No space left on device\n");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(desk.read("small/localization/de.json").find("Pforte"), std::string::npos);
}

// --- The project ----------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, WithoutAProjectSaysSoAndEndsWithThree) {
    fs::create_directory(desk / "empty");
    EXPECT_EQ(told({"status", "nowhere"}), "--\nnowhere: there is no such folder\n-- 3");
    EXPECT_EQ(told({"status", "small/project.json"}),
        "--\nsmall/project.json: is a file; a project is given by its folder\n-- 3");
    EXPECT_EQ(told({"status", "empty"}), "--\nempty: is not a project's folder, it has no project.json\n-- 3");
    EXPECT_EQ(told({"status"}), "--\n.: is not a project's folder, it has no project.json\n-- 3");
    EXPECT_EQ(told({"gather", "nowhere"}), "--\nnowhere: there is no such folder\n-- 3");
    EXPECT_EQ(told({"check", "nowhere"}), "--\nnowhere: there is no such folder\n-- 3");
    EXPECT_EQ(told({"export", "nowhere", "--to", "i18n"}), "--\nnowhere: there is no such folder\n-- 3");
    EXPECT_EQ(told({"import", "nowhere", "--from", "small"}), "--\nnowhere: there is no such folder\n-- 3");
}

TEST_F(LocalizeProgram, AProjectThatCannotBeReadSaysWhereAndEndsWithThree) {
    desk.write("small/project.json", "{\n  \"languages\": ]\n}");
    EXPECT_EQ(told({"status", "small"}), "--\nsmall/project.json:2:16: this is no value\n-- 3");
    EXPECT_EQ(told({"status", "./small/"}), "--\n./small/project.json:2:16: this is no value\n-- 3");
    EXPECT_EQ(
        told({"status", desk / "small"}), "--\n" + desk.path + "/small/project.json:2:16: this is no value\n-- 3");
    desk.write("small/project.json", Small);
    desk.write("small/localization/de.json", "");
    EXPECT_EQ(told({"status", "small"}), "--\nsmall/localization/de.json:1:1: a value is missing\n-- 3");
}

TEST_F(LocalizeProgram, AFileOfTheDefaultLanguageInTheProjectIsToldAndPassedOver) {
    const std::string before = run({"status", "small"}).out;
    desk.write("small/localization/en.json", R"({"door": {"text": "Gate"}})");
    EXPECT_EQ(told({"status", "small"}),
        before +
            "--\nsmall/localization/en.json: is of the default language, whose texts are those of the terms in "
            "project.json: it is passed over\n-- 0");
    EXPECT_TRUE(json({"status", "small"}, 0)["failures"].Empty());
}

TEST_F(LocalizeProgram, AProjectOfTheWrongTypesSaysSoAndEndsWithOne) {
    desk.write("small/project.json", R"({"languages": {"en": {}}, "localization": {"terms": []}})");
    fs::remove_all(desk / "small/localization");
    const std::string message =
        "--\nsmall/project.json: /localization/terms is no object.\n"
        "small/project.json: /languages marks no language that the editor knows as default.\n-- 1";
    for(const std::vector<std::string>& arguments:
        std::vector<std::vector<std::string>>{{"status", "small"}, {"gather", "small"}, {"check", "small"},
            {"export", "small", "--to", "i18n"}, {"import", "small", "--from", "i18n"}})
        EXPECT_EQ(told(arguments), message);
    EXPECT_FALSE(fs::exists(desk / "i18n"));
}

TEST_F(LocalizeProgram, ReadingCommandsAndDryRunsLeaveTheDiskAsItIs) {
    ASSERT_EQ(run({"export", "small", "--to", "i18n"}).exitCode, 0);
    desk.write("i18n/de/translation.json", R"({"door": "Pforte"})");
    const auto before = desk.files();
    for(const std::vector<std::string>& arguments:
        std::vector<std::vector<std::string>>{{"status", "small"}, {"gather", "small", "--dry-run"}, {"check", "small"},
            {"export", "small", "--to", "i18n", "--dry-run"}, {"export", "small", "--to", "new/i18n", "--dry-run"},
            {"export", "small", "--zip", "new/i18n.zip", "--dry-run"},
            {"import", "small", "--from", "i18n", "--dry-run"}}) {
        EXPECT_LE(run(arguments).exitCode, 1) << arguments[0];
        EXPECT_EQ(desk.files(), before) << arguments[0];
    }
}

TEST_F(LocalizeProgram, LanguagesThatTheProjectDoesNotHaveAreWrongUsage) {
    EXPECT_EQ(told({"status", "small", "--languages", "de,fr"}),
        "--\n--languages: small has no language fr; it has en, de\n-- 2");
    EXPECT_EQ(told({"export", "small", "--to", "i18n", "--languages", "it"}),
        "--\n--languages: small has no language it; it has en, de\n-- 2");
    EXPECT_EQ(
        told({"status", "small", "--default", "de"}), "--\n--default de: the default language of small is en\n-- 2");
    EXPECT_EQ(run({"status", "small", "--default", "en"}).exitCode, 0);
    desk.write("new/project.json", "{}");
    EXPECT_EQ(told({"status", "new", "--languages", "fr"}), "--\n--languages: new has no language fr; it has en\n-- 2");
}

TEST_F(LocalizeProgram, MachinesGetOneDocumentAlsoWhereSomethingFails) {
    const rapidjson::Document missing = json({"status", "nowhere"}, 3);
    EXPECT_STREQ(missing["command"].GetString(), "status");
    ASSERT_EQ(missing["failures"].Size(), 1u);
    EXPECT_STREQ(missing["failures"][0].GetString(), "nowhere: there is no such folder");
    for(const char* const command: {"status", "gather", "check"})
        EXPECT_TRUE(json({command, "small"}, 0)["failures"].Empty());
    EXPECT_TRUE(json({"export", "small", "--to", "i18n"}, 0)["failures"].Empty());
    EXPECT_TRUE(json({"import", "small", "--from", "i18n"}, 0)["failures"].Empty());
    desk.write("i18n/de.json", "{\"\xff\": 1}");
    EXPECT_EQ(json({"import", "small", "--from", "i18n"}, 1)["failures"].Size(), 1u);
}

TEST_F(LocalizeProgram, MachinesGetOneDocumentAlsoWhereTheCommandLineIsWrong) {
    const rapidjson::Document wrong = json({"export", "small"}, 2);
    ASSERT_EQ(wrong["failures"].Size(), 1u);
    EXPECT_STREQ(wrong["failures"][0].GetString(),
        "quorvane-localize export: where to write is missing: --to FOLDER, or --zip FILE for an archive");
    EXPECT_EQ(json({}, 2)["failures"].Size(), 1u);
    EXPECT_EQ(json({"exprot", "small"}, 2)["failures"].Size(), 1u);
    EXPECT_EQ(json({"status", "small", "--nothing"}, 2)["failures"].Size(), 1u);
    // Behind "--" there are no options.
    EXPECT_EQ(run({"status", "small", "--", "--json"}).out, "");
    EXPECT_EQ(run({"--help", "--json"}).out, run({"--help"}).out);
}

TEST_F(LocalizeProgram, AnImportChecksWhatItHasBrought) {
    desk.write("theirs/de.json", R"({"key": " Schlüssel"})");
    const std::string before = desk.read("small/localization/de.json");
    const std::string finding =
        "localization/de.json: key: warning: begins with \" \" where the source has no blank [outer-blanks]\n";
    const std::string table = "Language  Added  Changed  Unchanged  Without text  Skipped\n"
                              "de            1        0          0             0        0\n";
    EXPECT_EQ(told({"import", "small", "--from", "theirs", "--dry-run", "--check"}),
        "de.json: key: added\n" + table + "--\n" + finding + "-- 1");
    EXPECT_EQ(desk.read("small/localization/de.json"), before);
    EXPECT_EQ(told({"import", "small", "--from", "theirs", "--check"}), table + "--\n" + finding + "-- 1");
    EXPECT_NE(desk.read("small/localization/de.json"), before);
    EXPECT_EQ(run({"import", "small", "--from", "theirs"}).exitCode, 0);
    EXPECT_EQ(json({"import", "small", "--from", "theirs", "--check"}, 1)["lines"].Size(), 1u);
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

// --- status ---------------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, StatusShowsEveryLanguage) {
    EXPECT_EQ(run({"status", "small"}, {"LC_ALL=C"}).out,
        "Language           Translated                                    Done  Review  Draft  Stale  Missing\n"
        "en        English  #####################################  100 %     2       0      0      0        0\n"
        "de        German   ~~~~~~~~~~~~~~~~~~~..................    0 %     0       0      0      1        1\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST_F(LocalizeProgram, StatusShowsTheLanguagesThatAreAskedFor) {
    const rapidjson::Document document = json({"status", "small", "--languages", "de"}, 0);
    EXPECT_STREQ(document["defaultLanguage"].GetString(), "en");
    ASSERT_EQ(document["languages"].Size(), 1u);
    EXPECT_STREQ(document["languages"][0]["language"].GetString(), "de");
    EXPECT_EQ(document["languages"][0]["total"].GetInt(), 2);
}

TEST_F(LocalizeProgram, StatusFollowsTheTerminalAndItsColours) {
    setenv("LC_ALL", "C", 1);
    setenv("TERM", "xterm", 1);
    unsetenv("NO_COLOR");
    const std::string colored = shown(QUORVANE_LOCALIZE, {"status", "small"}, desk.path, 70);
    EXPECT_NE(colored.find("\x1b[32m#"), std::string::npos) << colored;
    setenv("NO_COLOR", "1", 1);
    const std::string plain = shown(QUORVANE_LOCALIZE, {"status", "small"}, desk.path, 70);
    EXPECT_EQ(plain,
        "Language  Translated               Done  Review  Draft  Stale  Missing\r\n"
        "en        ################  100 %     2       0      0      0        0\r\n"
        "de        ~~~~~~~~........    0 %     0       0      0      1        1\r\n"
        "# done   + review or draft   ~ stale   . missing\r\n");
}

// --- gather ---------------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, GatherMakesTermsOnceAndSavesThem) {
    desk.write("small/project.json", R"({"objects": {"lamp": {"text": "Lamp", "hint": "Light\nit"}}})");
    const auto before = desk.files();
    EXPECT_EQ(told({"gather", "small", "--dry-run"}),
        "added lamp_text: Lamp\nadded lamp_hint: Light\\nit\n2 terms would be added\n--\n-- 0");
    EXPECT_EQ(desk.files(), before);
    EXPECT_EQ(told({"gather", "small"}), "added lamp_text: Lamp\nadded lamp_hint: Light\\nit\n2 terms added\n--\n-- 0");
    const std::string saved = desk.read("small/project.json");
    EXPECT_NE(saved.find("\"lamp_hint\": {\"sourceText\": \"/objects/lamp/hint\", \"translatable\": true}"),
        std::string::npos)
        << saved;
    EXPECT_EQ(told({"gather", "small"}), "0 terms added\n--\n-- 0");
    EXPECT_EQ(desk.read("small/project.json"), saved);
}

TEST_F(LocalizeProgram, GatherTellsMachinesWhatItMade) {
    desk.write("small/project.json", R"({"objects": {"lamp": {"text": "Lamp"}}})");
    const rapidjson::Document document = json({"gather", "small"}, 0);
    EXPECT_FALSE(document["dryRun"].GetBool());
    ASSERT_EQ(document["added"].Size(), 1u);
    EXPECT_STREQ(document["added"][0]["term"].GetString(), "lamp_text");
    EXPECT_STREQ(document["added"][0]["source"].GetString(), "/objects/lamp/text");
    EXPECT_STREQ(document["added"][0]["text"].GetString(), "Lamp");
}

TEST_F(LocalizeProgram, AProjectThatCannotBeSavedEndsWithThreeAndStaysAsItWas) {
    desk.write("small/project.json", R"({"objects": {"lamp": {"text": "Lamp"}}})");
    const OrdinaryUser user{desk.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    fs::permissions(desk / "small", fs::perms::owner_read | fs::perms::owner_exec);
    const auto before = desk.files();
    EXPECT_EQ(told({"gather", "small"}), "--\nsmall/.editor: cannot be made: Permission denied\n-- 3");
    EXPECT_EQ(desk.files(), before);
}

// --- check ----------------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, CheckPrintsEveryFindingAndEndsWithOneWhereThereAreErrors) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}, "de": {}}, "localization": {"terms": {
        "save": {"sourceText": "/a", "translatable": true}, "logo": {"sourceText": "/b", "translatable": true}}},
        "a": "Save {{name}}", "b": "Quorvane"})");
    desk.write("small/localization/de.json", R"({"save": {"text": "{{nam}} sichern"}, "logo": {"text": "Quorvane"}})");
    EXPECT_EQ(told({"check", "small"}),
        "localization/de.json: save: error: lacks {{name}} of the source, and has {{nam}}, which the source does not "
        "have "
        "[placeholder-differs]\n"
        "localization/de.json: logo: hint: is the same as the source: Quorvane [same-as-source]\n"
        "1 error, 0 warnings, 1 hint\n--\n-- 1");
    EXPECT_EQ(told({"check", "small", "--languages", "en"}), "0 errors, 0 warnings, 0 hints\n--\n-- 0");
    const rapidjson::Document document = json({"check", "small"}, 1);
    EXPECT_EQ(document["errors"].GetInt(), 1);
    EXPECT_STREQ(document["findings"][0]["check"].GetString(), "placeholder-differs");
}

TEST_F(LocalizeProgram, ACheckTellsAndCountsFromASeverityUpwards) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}, "de": {}}, "localization": {"terms": {
        "save": {"sourceText": "/a", "translatable": true}, "logo": {"sourceText": "/b", "translatable": true}}},
        "a": "Save ", "b": "Quorvane"})");
    desk.write("small/localization/de.json", R"({"save": {"text": "Sichern"}, "logo": {"text": "Quorvane"}})");
    const std::string warning =
        "localization/de.json: save: warning: ends with no blank where the source has \" \" [outer-blanks]\n";
    EXPECT_EQ(told({"check", "small", "--severity", "error"}), "0 errors\n--\n-- 0");
    EXPECT_EQ(told({"check", "small", "--severity", "warning"}), warning + "0 errors, 1 warning\n--\n-- 1");
    const rapidjson::Document document = json({"check", "small", "--severity", "error"}, 0);
    EXPECT_EQ(document["warnings"].GetInt(), 0);
    EXPECT_EQ(document["findings"].Size(), 0u);

    desk.write("small/localization/de.json", R"({"logo": {"text": "Quorvane"}})");
    EXPECT_EQ(told({"check", "small", "--severity", "hint"}),
        "localization/de.json: logo: hint: is the same as the source: Quorvane [same-as-source]\n"
        "0 errors, 0 warnings, 1 hint\n--\n-- 1");
}

TEST_F(LocalizeProgram, HintsAndSilencedFindingsDoNotFailACheck) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}, "de": {}}, "localization": {"terms": {
        "save": {"sourceText": "/a", "translatable": true, "silenced": {"placeholder-differs": "the name is not shown"}},
        "logo": {"sourceText": "/b", "translatable": true}}}, "a": "Save {{name}}", "b": "Quorvane"})");
    desk.write("small/localization/de.json", R"({"save": {"text": "Sichern"}, "logo": {"text": "Quorvane"}})");
    EXPECT_EQ(told({"check", "small"}),
        "localization/de.json: logo: hint: is the same as the source: Quorvane [same-as-source]\n"
        "0 errors, 0 warnings, 1 hint; 1 silenced\n--\n-- 0");
}

// --- export ---------------------------------------------------------------------------------------------------------

TEST_F(LocalizeProgram, ExportWritesAFileForEachLanguage) {
    EXPECT_EQ(told({"export", "small", "--to", "out/i18n"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            2        0          0             0        0\n"
        "de            1        0          0             0        0\n--\n-- 0");
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
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            0        0          2             0        0\n"
        "de            0        1          0             0        0\n--\n-- 0");
}

TEST_F(LocalizeProgram, AMadeUpLanguageIsWrittenBesideTheOthers) {
    EXPECT_EQ(told({"export", "small", "--to", "i18n", "--pseudo"}),
        "Language  Added  Changed  Unchanged  Without text  Skipped\n"
        "en            2        0          0             0        0\n"
        "de            1        0          0             0        0\n--\n"
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
    const char* const table = "Language  Added  Changed  Unchanged  Without text  Skipped\n"
                              "en            2        0          0             0        0\n"
                              "de            1        0          0             0        0\n--\n";
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

// --- import ---------------------------------------------------------------------------------------------------------

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
    const auto before = desk.files();
    const int other = open((desk / "small").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
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

}
}
