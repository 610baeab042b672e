#pragma once

#include <string>
#include <vector>

#include <Corrade/Containers/Optional.h>

#include "QuorvaneEditor/Host.h"
#include "localization/LocalizationFindings.h"

namespace QuorvaneEngine {

class BatchOutput;

enum class BatchCommand { Status, Gather, Check, Export, Import };

/** How the tool ends. Where several apply, the last one does. */
enum class BatchResult : int {
    /** The command did what it is for. */
    Done = 0,
    /** Something in the project or in the files to import has to be mended first. */
    Problems = 1,
    /** The command line is wrong. */
    Usage = 2,
    /** Something cannot be read or written. */
    Inaccessible = 3
};

/** What the user asked for on the command line of the batch tool. */
struct BatchOptions {
    struct Mapping {
        std::string name;
        UnsignedInt language;
    };

    BatchCommand command;

    /** The project's folder. */
    std::string project;

    /** Where files are written to or read from, as it was typed; one of the first two for an export, the third for an import. */
    std::string folder, archive, source;

    /** Indices into @ref AllLanguages , each once; none for all. */
    std::vector<UnsignedInt> languages;

    /** What names of folders and files mean that are no codes of languages. */
    std::vector<Mapping> map;

    /** Index into @ref AllLanguages ; -1 where none was given. */
    Int defaultLanguage = -1;

    /** Findings below it are left out. */
    Containers::Optional<FindingSeverity> severity;

    bool isPseudo = false;
    bool isChecked = false;
    bool isConfirming = false;
    bool isDryRun = false;
    bool isJson = false;
};

/** The name of a command on the command line. */
const char* nameOf(BatchCommand command);

/** Whether a command line, maybe a wrong one, asks for a document that machines read. */
bool asksForJson(int argc, const char* const* argv);

/** Reads a command line. Help goes to the output, what is wrong with the line to the error output, in two lines, of which the first
    is a failure.
    @param result   how to end when there is no answer: done after help
    @return nothing when the program should end */
Containers::Optional<BatchOptions> parseBatchOptions(
    int argc, const char* const* argv, BatchOutput& output, BatchResult& result);

}
