#include "batch/BatchHelp.h"

namespace QuorvaneEngine {

namespace {

constexpr unsigned bit(const BatchCommand command) { return 1u << unsigned(command); }

constexpr unsigned Status = bit(BatchCommand::Status);
constexpr unsigned Gather = bit(BatchCommand::Gather);
constexpr unsigned Check = bit(BatchCommand::Check);
constexpr unsigned Export = bit(BatchCommand::Export);
constexpr unsigned Import = bit(BatchCommand::Import);

}

const CommandText BatchCommandTexts[]{
    {BatchCommand::Status, "status", "shows how much is translated",
        R"(Shows for each language how many terms are translated, in numbers and as a bar.
Terms that are not to be translated, and those whose source is gone, do not count.

  done      translated from today's source text
  review    the same, but somebody is to look at it
  draft     the same, but only a first version
  stale     translated from an older source text
  missing   not translated
)",
        R"(Examples:
  quorvane-localize status game
  quorvane-localize status game --languages de,fr --json

Exit codes:
  0  shown, however little is translated
  1  the project's languages or terms are not what they should be
  2  wrong usage
  3  the project cannot be read)"},
    {BatchCommand::Gather, "gather", "makes terms for the texts of the game's objects",
        R"(Makes a term for every text of the game's objects that has none yet, and saves
the project. Texts are the members called text, title, label, description or
hint, and those whose name ends in Text. Terms that exist stay as they are.
)",
        R"(Examples:
  quorvane-localize gather game --dry-run
  quorvane-localize gather game

Exit codes:
  0  done, also where there was nothing to do
  1  the project's languages or terms are not what they should be
  2  wrong usage
  3  the project cannot be read or not be saved
With any but 0 the project is as it was, unless only the output cannot be written.)"},
    {BatchCommand::Check, "check", "looks for mistakes in terms and translations",
        R"(Looks for mistakes in terms and translations, and prints a line for each:
  <file>: <term>: <severity>: <what is wrong> [<name of the check>]
Errors and warnings fail the check, hints do not; with --severity all that is
printed does. A finding can be silenced in the project, with a reason.
)",
        R"(Examples:
  quorvane-localize check game
  quorvane-localize check game --languages de --json
  quorvane-localize check game --severity error

Exit codes:
  0  no error and no warning that is not silenced; none of the --severity
  1  an error or a warning; one of the --severity or above
  2  wrong usage
  3  the project cannot be read)"},
    {BatchCommand::Export, "export", "writes a file for each language",
        R"(Writes <language>/<namespace>.json (i18next JSON v4) for each language, into a
folder or a ZIP archive. Terms that are not to be translated and those without
text are left out. Files keep the order of their keys, and one that would not
change is not written. All are put in place together, or none is.
)",
        R"(Examples:
  quorvane-localize export game --to i18n
  quorvane-localize export game --zip i18n.zip --languages de,fr

Exit codes:
  0  done, also where there was nothing to do
  1  done, but terms were left out that have no place in the files; each is told
  2  wrong usage
  3  the project cannot be read, or the files not be written
With 2 and 3 all files are as they were, unless only the output cannot be written.)"},
    {BatchCommand::Import, "import", "takes translated files over into the project",
        R"(Takes over the texts of <language>/<namespace>.json or <language>.json in a folder
or a ZIP archive, and saves the project. The default language's files make terms
and change source texts, the others change translations. Nothing is deleted: a
term that no file has keeps its texts, and an empty text changes nothing.
)",
        R"(Examples:
  quorvane-localize import game --from i18n --dry-run --check
  quorvane-localize import game --from i18n.zip --map enGB=en-GB

Exit codes:
  0  done, also where texts were skipped; each is told with the reason
  1  done, but texts were left out whose keys have no place beside others, or all
     texts, or a file of an unknown language; or nothing has a name of --map. Each
     is told. Or --check found an error or a warning. Or a file is refused, or the
     project cannot take it: then nothing is done
  2  wrong usage
  3  something cannot be read, or the project not be saved
With 2 and 3, and where something is refused, the project is as it was, unless
only the output cannot be written.)"},
};

const OptionText BatchOptionTexts[]{
    {BatchOption::To, "--to", "FOLDER", "i18n", "Write into this folder, made where it is missing", Export, false},
    {BatchOption::Zip, "--zip", "FILE", "i18n.zip", "Write into this archive; localization.zip where it is a folder",
        Export, false},
    {BatchOption::From, "--from", "PATH", "i18n", "Folder or ZIP archive to read", Import, false},
    {BatchOption::Languages, "--languages", "CODES", "de,fr", "Only these, with commas between: de,pt-BR",
        Status | Check | Export | Import, true},
    {BatchOption::Map, "--map", "NAME=CODE", "enGB=en-GB", "What a folder's or file's name stands for: enGB=en-GB",
        Import, true},
    {BatchOption::Default, "--default", "CODE", "en", "Language of the source texts, where the project has none yet",
        Status | Check | Export | Import, false},
    {BatchOption::Severity, "--severity", "LEVEL", "error",
        "Only findings of this level and above: error, warning, hint", Check, false},
    {BatchOption::Pseudo, "--pseudo", nullptr, nullptr, "Also a made-up language, en-XA: accents, longer, in brackets",
        Export, false},
    {BatchOption::Check, "--check", nullptr, nullptr, "Also check the languages that were read, as \"check\" does",
        Import, false},
    {BatchOption::Confirm, "--confirm", nullptr, nullptr, "Stale texts that come back as they were are no longer stale",
        Import, false},
    {BatchOption::DryRun, "--dry-run", nullptr, nullptr, "Only tell what would be done", Gather | Export | Import,
        false},
    {BatchOption::Json, "--json", nullptr, nullptr, "Print one JSON document, for machines",
        Status | Gather | Check | Export | Import, false},
};

const char* const ProjectHelp = "Folder of project.json, the current one without it";

std::string batchHelp() {
    std::string help{R"(Brings the texts of a game to its translators and back, without a window.

Usage: quorvane-localize COMMAND [PROJECT] [OPTIONS]

PROJECT is the folder that holds project.json, the current folder without it.

Commands:
)"};
    for(const CommandText& command: BatchCommandTexts) {
        const std::string name{command.name};
        help += "  " + name + std::string(10 - name.size(), ' ') + command.summary + '\n';
    }
    return help + R"(
A round trip:
  quorvane-localize gather game
  quorvane-localize export game --to i18n
  quorvane-localize import game --from i18n
  quorvane-localize check game

Exit codes:
  0  done
  1  there are problems in the data
  2  wrong usage
  3  something cannot be read or written

"quorvane-localize COMMAND --help" tells more about each command.
)";
}

}
