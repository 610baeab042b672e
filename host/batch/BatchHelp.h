#pragma once

#include <string>

#include "batch/BatchOptions.h"

namespace QuorvaneEngine {

/** The options that take part in one command or several. */
enum class BatchOption { To, Zip, From, Languages, Map, Default, Severity, Pseudo, Check, Confirm, DryRun, Json };

struct CommandText {
    BatchCommand command;
    const char* name;
    /** For the list of commands. */
    const char* summary;
    /** Above and below the options in the command's own help. */
    const char* description;
    const char* footer;
};

struct OptionText {
    BatchOption option;
    const char* name;
    /** What its value is; null for one without. */
    const char* value;
    const char* example;
    const char* help;
    /** A bit for each command that has it, counted from the first. */
    unsigned commands;
    /** Whether it may be given several times. */
    bool isList;

    constexpr bool isOf(const BatchCommand command) const { return commands >> unsigned(command) & 1; }
};

extern const CommandText BatchCommandTexts[5];
extern const OptionText BatchOptionTexts[12];
extern const char* const ProjectHelp;

/** What the tool says about itself as a whole. */
std::string batchHelp();

}
