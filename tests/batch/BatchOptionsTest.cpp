#include "batch/BatchOptions.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "KeptOutput.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "batch/BatchHelp.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

struct Parsed {
    Containers::Optional<BatchOptions> options;
    BatchResult result = BatchResult::Inaccessible;
    std::string out;
    std::string error;
};

/** @param line     the arguments, with blanks between; '' is an empty one, and "_" a blank in one */
Parsed parse(const std::string& line) {
    std::vector<std::string> words{"quorvane-localize"};
    std::istringstream stream{line};
    for(std::string word; stream >> word;) {
        std::replace(word.begin(), word.end(), '_', ' ');
        words.push_back(word == "''" ? "" : word);
    }
    std::vector<const char*> arguments;
    for(const std::string& word: words) arguments.push_back(word.c_str());

    KeptOutput kept;
    Parsed parsed;
    parsed.options = parseBatchOptions(int(arguments.size()), arguments.data(), kept.output, parsed.result);
    parsed.out = kept.out();
    parsed.error = kept.error();
    return parsed;
}

std::vector<UnsignedInt> languages(const std::vector<const char*>& codes) {
    std::vector<UnsignedInt> found;
    for(const char* const code: codes) found.push_back(UnsignedInt(findLanguage(code)));
    return found;
}

TEST(BatchOptions, ACommandAloneWorksOnTheCurrentFolder) {
    const Parsed parsed = parse("status");
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, BatchCommand::Status);
    EXPECT_EQ(parsed.options->project, ".");
    EXPECT_TRUE(parsed.options->languages.empty());
    EXPECT_EQ(parsed.options->defaultLanguage, -1);
    EXPECT_FALSE(parsed.options->isJson);
    EXPECT_FALSE(parsed.options->isDryRun);
    EXPECT_EQ(parsed.out + parsed.error, "");
}

TEST(BatchOptions, EveryCommandIsReadByItsName) {
    for(const CommandText& command: BatchCommandTexts) {
        const Parsed parsed = parse(std::string{command.name} + " game --to i18n");
        if(command.command == BatchCommand::Export) {
            ASSERT_TRUE(parsed.options);
        }
        EXPECT_STREQ(nameOf(command.command), command.name);
    }
    ASSERT_TRUE(parse("gather game").options);
    EXPECT_EQ(parse("gather game").options->command, BatchCommand::Gather);
    EXPECT_EQ(parse("check game").options->command, BatchCommand::Check);
}

TEST(BatchOptions, AFolderMayBeCalledLikeACommand) {
    const Parsed parsed = parse("status check");
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, BatchCommand::Status);
    EXPECT_EQ(parsed.options->project, "check");
}

TEST(BatchOptions, EveryOptionOfAnExportIsRead) {
    const Parsed parsed = parse("export game --to i18n --languages de,pt-BR --default en --pseudo --dry-run --json");
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->project, "game");
    EXPECT_EQ(parsed.options->folder, "i18n");
    EXPECT_EQ(parsed.options->archive, "");
    EXPECT_EQ(parsed.options->languages, languages({"de", "pt-BR"}));
    EXPECT_EQ(parsed.options->defaultLanguage, findLanguage("en"));
    EXPECT_TRUE(parsed.options->isPseudo);
    EXPECT_TRUE(parsed.options->isDryRun);
    EXPECT_TRUE(parsed.options->isJson);
}

TEST(BatchOptions, EveryOptionOfAnImportIsRead) {
    const Parsed parsed =
        parse("import --from=i18n.zip --map enGB=en-GB,kz=kk --map ua=uk --languages de --languages fr,de game");
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->project, "game");
    EXPECT_EQ(parsed.options->source, "i18n.zip");
    ASSERT_EQ(parsed.options->map.size(), 3u);
    EXPECT_EQ(parsed.options->map[0].name, "enGB");
    EXPECT_EQ(parsed.options->map[0].language, UnsignedInt(findLanguage("en-GB")));
    EXPECT_EQ(parsed.options->map[1].name, "kz");
    EXPECT_EQ(parsed.options->map[2].language, UnsignedInt(findLanguage("uk")));
    EXPECT_EQ(parsed.options->languages, languages({"de", "fr"}));
}

TEST(BatchOptions, BlanksBesideTheCommasOfAListAreNothing) {
    const Parsed parsed = parse("import --from i18n --languages de,_fr --map _enGB=en-GB_,kz=kk");
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->languages, languages({"de", "fr"}));
    EXPECT_EQ(parsed.options->map[0].name, "enGB");
    EXPECT_EQ(parsed.options->map[0].language, UnsignedInt(findLanguage("en-GB")));
    EXPECT_EQ(parse("status --languages _").result, BatchResult::Usage);
}

TEST(BatchOptions, WhatFollowsTwoDashesIsAFolder) {
    for(const char* const line:
        {"status -- --game", "export --to i18n -- --game", "export --json --to=i18n -- --game"}) {
        const Parsed parsed = parse(line);
        ASSERT_TRUE(parsed.options) << parsed.error;
        EXPECT_EQ(parsed.options->project, "--game");
    }
}

TEST(BatchOptions, TheVersionIsPrinted) {
    const Parsed parsed = parse("--version");
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.result, BatchResult::Done);
    EXPECT_EQ(parsed.out.substr(0, 18), "quorvane-localize ");
    EXPECT_EQ(parsed.error, "");
}

/* What a help has: an example, the exit codes, and lines that fit into a terminal of the usual width. */
void expectTeaching(const Parsed& help) {
    EXPECT_FALSE(help.options);
    EXPECT_EQ(help.result, BatchResult::Done);
    EXPECT_EQ(help.error, "");
    for(const char* const text: {"Usage: quorvane-localize ", "Exit codes:\n  0  ", "\n  1  ", "\n  2  ", "\n  3  "})
        EXPECT_NE(help.out.find(text), std::string::npos) << text;
    std::istringstream lines{help.out};
    for(std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 84u) << line;
    EXPECT_EQ(help.out.back(), '\n');
}

TEST(BatchOptions, HelpTellsWhatThereIs) {
    for(const char* const flag: {"--help", "-h"}) {
        const Parsed help = parse(flag);
        expectTeaching(help);
        for(const CommandText& command: BatchCommandTexts) {
            EXPECT_NE(help.out.find(std::string{"\n  "} + command.name + ' '), std::string::npos) << command.name;
            EXPECT_NE(help.out.find(command.summary), std::string::npos);
        }
    }
}

TEST(BatchOptions, TheHelpOfACommandTellsWhatItDoesWithAnExampleAndItsOptions) {
    for(const CommandText& command: BatchCommandTexts) {
        SCOPED_TRACE(command.name);
        for(const char* const flag: {" --help", " game --json -h"}) {
            const Parsed help = parse(command.name + std::string{flag});
            expectTeaching(help);
            EXPECT_NE(help.out.find(command.description), std::string::npos);
            EXPECT_NE(help.out.find(std::string{"Examples:\n  quorvane-localize "} + command.name), std::string::npos);
            for(const OptionText& option: BatchOptionTexts)
                EXPECT_EQ(
                    help.out.find(std::string{"\n  "} + option.name) != std::string::npos, option.isOf(command.command))
                    << option.name;
        }
    }
}

TEST(BatchOptions, TheExamplesOfAllHelpsAreRightUsage) {
    std::string all = parse("--help").out;
    for(const CommandText& command: BatchCommandTexts) all += parse(command.name + std::string{" --help"}).out;
    std::istringstream lines{all};
    int count = 0;
    for(std::string line; std::getline(lines, line);) {
        const std::string begin = "  quorvane-localize ";
        if(line.compare(0, begin.size(), begin) != 0) continue;
        const Parsed parsed = parse(line.substr(begin.size()));
        EXPECT_TRUE(parsed.options) << line << '\n' << parsed.error;
        ++count;
    }
    EXPECT_EQ(count, 15);
}

TEST(BatchOptions, ACheckMayHaveASeverity) {
    EXPECT_FALSE(parse("check").options->severity);
    EXPECT_EQ(*parse("check --severity error").options->severity, FindingSeverity::Error);
    EXPECT_EQ(*parse("check --severity=warning").options->severity, FindingSeverity::Warning);
    EXPECT_EQ(*parse("check game --severity hint").options->severity, FindingSeverity::Hint);
}

struct Wrong {
    const char* line;
    const char* program;
    const char* message;
};

TEST(BatchOptions, WhatIsWrongIsSaidInTwoLinesAndEndsWithTwo) {
    const Wrong cases[]{
        {"", "", "a command is missing; there are status, gather, check, export and import"},
        {"''", "", "a command is missing; there are status, gather, check, export and import"},
        {"exprot game", "", "there is no command exprot; did you mean export?"},
        {"stat", "", "there is no command stat; did you mean status?"},
        {"translate game", "", "there is no command translate; there are status, gather, check, export and import"},
        {"--json status", "",
            "the command comes first, then the options; there are status, gather, check, export and import"},
        {"status --lang de", " status", "there is no option --lang; did you mean --languages?"},
        {"status --langauges=de", " status", "there is no option --langauges; did you mean --languages?"},
        {"status --verbose", " status", "there is no option --verbose"},
        {"status -x", " status", "there is no option -x"},
        {"status --to x", " status", "--to is an option of export, not of status"},
        {"check --dry-run", " check", "--dry-run is an option of gather, export and import, not of check"},
        {"status a b", " status", "one project at a time, and \"b\" is one more"},
        {"status -- a b", " status", "one project at a time, and \"b\" is one more"},
        {"import --from x --languages enGB", " import",
            "--languages: no language has the code enGB; did you mean en-GB?"},
        {"import --from x --map a=esMX", " import", "--map: no language has the code esMX; did you mean es-MX?"},
        {"import --from x --map a=qqq", " import", "--map: no language has the code qqq"},
        {"export --to x --default English", " export", "--default: no language has the code English; did you mean en?"},
        {"status ''", " status", "the project's folder has an empty name"},
        {"export game i18n", " export",
            "one project at a time, and \"i18n\" is one more; where to write is said as --to i18n"},
        {"export game i18n --to x", " export", "one project at a time, and \"i18n\" is one more"},
        {"export game", " export", "where to write is missing: --to FOLDER, or --zip FILE for an archive"},
        {"export game --to", " export", "--to needs a FOLDER, as in --to i18n"},
        {"export game --to ''", " export", "--to needs a FOLDER, as in --to i18n"},
        {"export game --to --zip x.zip", " export", "--to needs a FOLDER, as in --to i18n"},
        {"export game --zip", " export", "--zip needs a FILE, as in --zip i18n.zip"},
        {"export game --to a --to b", " export", "--to is given twice"},
        {"export game --to a --zip b", " export", "there can be --to or --zip, not both"},
        {"export game --to a --json=yes", " export", "--json takes no value"},
        {"import game", " import", "what to read is missing: --from FOLDER, or --from FILE for an archive"},
        {"import game i18n", " import",
            "one project at a time, and \"i18n\" is one more; what to read is said as --from i18n"},
        {"import game --from", " import", "--from needs a PATH, as in --from i18n"},
        {"import game --to x", " import", "--to is an option of export, not of import"},
        {"import --from x --languages de,,fr", " import",
            "--languages takes codes with commas between, as in --languages de,fr"},
        {"import --from x --languages de,", " import",
            "--languages takes codes with commas between, as in --languages de,fr"},
        {"import --from x --map enGB", " import",
            "--map takes a name and a code, as in --map enGB=en-GB, and not \"enGB\""},
        {"import --from x --map =en-GB", " import",
            "--map takes a name and a code, as in --map enGB=en-GB, and not \"=en-GB\""},
        {"import --from x --map enGB=", " import",
            "--map takes a name and a code, as in --map enGB=en-GB, and not \"enGB=\""},
        {"check --severity", " check", "--severity needs a LEVEL, as in --severity error"},
        {"check --severity errors", " check", "--severity takes error, warning or hint, and not \"errors\""},
        {"status --severity error", " status", "--severity is an option of check, not of status"},
        {"import --from x --map enGB=en-GB,enGB=en", " import", "--map says twice what enGB is"},
    };
    for(const Wrong& wrong: cases) {
        const Parsed parsed = parse(wrong.line);
        EXPECT_FALSE(parsed.options) << wrong.line;
        EXPECT_EQ(parsed.result, BatchResult::Usage) << wrong.line;
        EXPECT_EQ(parsed.out, "") << wrong.line;
        const std::string program = std::string{"quorvane-localize"} + wrong.program;
        EXPECT_EQ(parsed.error, program + ": " + wrong.message + '\n' + program + " --help tells how it is used\n")
            << wrong.line;
    }
}

}
}
