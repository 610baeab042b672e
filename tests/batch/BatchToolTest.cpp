#include "LocalizeProgram.h"

#include <cstdlib>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/OrdinaryUser.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

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
    // Fontconfig and FreeType tell which letters can be drawn, and need no display.
    for(const char* const library: {"libGL", "libEGL", "libOpenGL", "libMagnumGL", "epoxy", "glfw", "libX", "libxcb",
            "wayland", "imgui", "quorvane-host", "compat-gl"})
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

TEST_F(LocalizeProgram, StatusTellsWhatTheEditorCannotDraw) {
    desk.write("small/project.json",
        R"({"languages": {"en": {"isDefault": true}, "ar": {}, "de": {}}, "objects": {"door": {"text": "Door"}},
        "localization": {"terms": {"door": {"sourceText": "/objects/door/text", "translatable": true}}}})");
    desk.write("small/localization/ar.json", R"({"door": {"text": "\u0628\u0627\u0628"}})");
    // A letter that Unicode gives to nobody.
    desk.write("small/localization/de.json", R"({"door": {"text": "T\u00fcr \udbff\udffd"}})");
    const std::string out = run({"status", "small"}).out;
    EXPECT_TRUE(out.ends_with("Letters that no font of this machine has: de (1, such as U+10FFFD)\n"
                              "Drawn letter by letter in the editor, which does no shaping: ar\n"))
        << out;
    const rapidjson::Document document = json({"status", "small"}, 0);
    EXPECT_TRUE(document["hasFonts"].GetBool());
    for(const rapidjson::Value& language: document["languages"].GetArray()) {
        const std::string code = language["language"].GetString();
        EXPECT_EQ(language["undrawn"].GetInt(), code == "de" ? 1 : 0) << code;
        EXPECT_EQ(language["needsShaping"].GetBool(), code == "ar") << code;
    }
}

TEST_F(LocalizeProgram, StatusSaysSoWhereThereAreNoFonts) {
    desk.write("fonts.conf", "<?xml version=\"1.0\"?>\n<fontconfig></fontconfig>\n");
    const std::vector<std::string> noFonts{"LC_ALL=C", "FONTCONFIG_FILE=" + desk / "fonts.conf"};
    const ProgramResult result = run({"status", "small"}, noFonts);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error, "");
    const std::string end =
        "# done   + review or draft   ~ stale   . missing\n"
        "This machine has no fonts; which letters the editor can draw is known where it has some.\n";
    EXPECT_TRUE(result.out.ends_with(end)) << result.out;
    const ProgramResult json = run({"status", "small", "--json"}, noFonts);
    EXPECT_NE(json.out.find("\"undrawn\": null, \"needsShaping\": false}"), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"hasFonts\": false"), std::string::npos) << json.out;
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
        "localization/de.json: save: hint: is not marked as a translation of today's source text [stale]\n"
        "localization/de.json: logo: hint: is the same as the source: Quorvane [same-as-source]\n"
        "localization/de.json: logo: hint: is not marked as a translation of today's source text [stale]\n"
        "1 error, 0 warnings, 3 hints\n--\n-- 1");
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
        "localization/de.json: logo: hint: is not marked as a translation of today's source text [stale]\n"
        "0 errors, 0 warnings, 2 hints\n--\n-- 1");
}

TEST_F(LocalizeProgram, HintsAndSilencedFindingsDoNotFailACheck) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}, "de": {}}, "localization": {"terms": {
        "save": {"sourceText": "/a", "translatable": true, "silenced": {"placeholder-differs": "the name is not shown",
            "stale": "the name has no older one"}},
        "logo": {"sourceText": "/b", "translatable": true}}}, "a": "Save {{name}}", "b": "Quorvane"})");
    desk.write("small/localization/de.json", R"({"save": {"text": "Sichern"}, "logo": {"text": "Quorvane"}})");
    EXPECT_EQ(told({"check", "small"}),
        "localization/de.json: logo: hint: is the same as the source: Quorvane [same-as-source]\n"
        "localization/de.json: logo: hint: is not marked as a translation of today's source text [stale]\n"
        "0 errors, 0 warnings, 2 hints; 2 silenced\n--\n-- 0");
}

TEST_F(LocalizeProgram, ACodeThatNoLanguageHasIsToldByStatusAndExport) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}, "enGB": {}}})");
    const char* const warning = "small/project.json: /languages: no language has the code enGB, so it is left out\n";
    EXPECT_EQ(run({"status", "small"}).error, warning);
    EXPECT_EQ(run({"export", "small", "--to", "i18n"}).error, warning);
    EXPECT_EQ(run({"gather", "small"}).error, "");
    EXPECT_EQ(run({"status", "small"}).exitCode, 0);
}

TEST_F(LocalizeProgram, StatusEndsWithOneWhereValuesHaveWrongTypes) {
    desk.write("small/project.json", R"({"languages": {"en": {"isDefault": true}}, "localization": {"strings": []}})");
    const ProgramResult one = run({"status", "small"});
    EXPECT_EQ(one.error, "small/project.json: /localization/strings is an array, but must be an object\n");
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_NE(one.out.find("en  "), std::string::npos) << one.out;
    desk.write("small/project.json",
        R"({"languages": {"en": {"isDefault": true}}, "localization": {"strings": [], "namespaces": 1}})");
    const rapidjson::Document document = json({"status", "small"}, 1);
    ASSERT_EQ(document["failures"].Size(), 1u);
    const std::string failure = document["failures"][0].GetString();
    EXPECT_TRUE(
        failure.starts_with("small/project.json: /localization/") && failure.ends_with("; check tells of 1 more"))
        << failure;
    EXPECT_EQ(document["languages"].Size(), 1u);
}

}
}
