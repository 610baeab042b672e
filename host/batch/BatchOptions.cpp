#include "batch/BatchOptions.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <CLI/CLI.hpp>
#include <Corrade/Containers/StringView.h>

#include "batch/BatchHelp.h"
#include "batch/BatchOutput.h"
#include "localization/LanguageLookup.h"
#include "localization/NameSearch.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view Program{"quorvane-localize"};

Containers::StringView viewed(const std::string_view text) { return {text.data(), text.size()}; }
std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }

std::string trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/** The names as "a, b and c". */
std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for(std::size_t i = 0; i != names.size(); ++i) {
        if(i) text += i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

/** The command line of one command, taken apart by the tables of BatchHelp.h. */
class Parsing {
public:
    explicit Parsing(const CommandText& command)
        : _command{command}, _app{command.description, std::string{Program} + ' ' + command.name} {
        _app.allow_extras();
        _app.footer(command.footer);
        _project = _app.add_option("PROJECT", ProjectHelp)->type_name("");
        for(const OptionText& option: BatchOptionTexts) {
            if(!option.isOf(command.command)) continue;
            _options[indexOf(option.option)] = option.value
                // Without a value, or given twice, it is for us to say what is wrong.
                ? _app.add_option(option.name, option.help)->type_name(option.value)->expected(0, 1)->take_all()
                : _app.add_flag(option.name, option.help);
        }
        _app.set_help_flag("-h,--help", "Print this and end");
        constexpr std::size_t NameWidth = 20;
        _app.get_formatter()->column_width(NameWidth);
    }

    /** @return what is wrong with the line, empty where nothing is */
    std::string parse(std::vector<std::string> arguments, bool& isHelp) {
        // What follows "--" is no option, which the library gets wrong behind an option whose value may be missing.
        const auto end = std::find(arguments.begin(), arguments.end(), "--");
        const std::vector<std::string> last(end == arguments.end() ? end : end + 1, arguments.end());
        arguments.erase(end, arguments.end());
        // It takes them from the end.
        std::reverse(arguments.begin(), arguments.end());
        try {
            _app.parse(arguments);
        } catch(const CLI::CallForHelp&) {
            isHelp = true;
            return {};
        } catch(const CLI::ParseError& error) {
            return error.what();
        }
        if(_project->count()) _folders = _project->results();
        for(const std::string& argument: _app.remaining()) {
            if(argument.size() > 1 && argument.front() == '-')
                return unknownOption(argument.substr(0, argument.find('=')));
            _folders.push_back(argument);
        }
        _folders.insert(_folders.end(), last.begin(), last.end());
        if(_folders.size() > 1) return tooMany(_folders[1]);
        for(const OptionText& option: BatchOptionTexts)
            if(std::string wrong = check(option); !wrong.empty()) return wrong;
        return {};
    }

    std::string help() const { return _app.help(); }

    std::string project() const { return _folders.empty() ? "." : _folders.front(); }
    bool has(const BatchOption option) const { return at(option) && at(option)->count(); }
    std::string text(const BatchOption option) const {
        return has(option) ? at(option)->results().front() : std::string{};
    }

    /** What was given with commas between, and maybe several times. */
    std::vector<std::string> list(const BatchOption option) const {
        std::vector<std::string> all;
        for(const std::string& result: has(option) ? at(option)->results() : std::vector<std::string>{}) {
            std::size_t begin = 0;
            for(std::size_t end; (end = result.find(',', begin)) != std::string::npos; begin = end + 1)
                all.push_back(trimmed(result.substr(begin, end - begin)));
            all.push_back(trimmed(result.substr(begin)));
        }
        return all;
    }

private:
    static std::size_t indexOf(const BatchOption option) { return std::size_t(option); }
    const CLI::Option* at(const BatchOption option) const { return _options[indexOf(option)]; }

    std::string tooMany(const std::string& folder) const {
        std::string wrong = "one project at a time, and \"" + folder + "\" is one more";
        if(_command.command == BatchCommand::Export && !has(BatchOption::To) && !has(BatchOption::Zip))
            wrong += "; where to write is said as --to " + folder;
        if(_command.command == BatchCommand::Import && !has(BatchOption::From))
            wrong += "; what to read is said as --from " + folder;
        return wrong;
    }

    std::string unknownOption(const std::string& name) const {
        std::vector<Containers::StringView> names;
        for(const OptionText& option: BatchOptionTexts) {
            if(option.isOf(_command.command)) names.emplace_back(option.name);
            else if(name == option.name) return otherCommandsOption(option);
        }
        const Containers::StringView nearest =
            nearestName(viewed(name), Containers::arrayView(names.data(), names.size()));
        return "there is no option " + name + (nearest.isEmpty() ? "" : "; did you mean " + string(nearest) + '?');
    }

    std::string otherCommandsOption(const OptionText& option) const {
        std::vector<std::string> commands;
        for(const CommandText& command: BatchCommandTexts)
            if(option.isOf(command.command)) commands.emplace_back(command.name);
        return std::string{option.name} + " is an option of " + listed(commands) + ", not of " + _command.name;
    }

    std::string check(const OptionText& option) const {
        const CLI::Option* const given = at(option.option);
        if(!given || !given->count()) return {};
        const std::string name{option.name};
        if(!option.value) return given->results().front() == "true" ? std::string{} : name + " takes no value";
        const std::vector<std::string>& results = given->results();
        if(std::find(results.begin(), results.end(), "") != results.end())
            return name + " needs a " + option.value + ", as in " + name + ' ' + option.example;
        if(results.size() > 1 && !option.isList) return name + " is given twice";
        return {};
    }

    const CommandText& _command;
    CLI::App _app;
    CLI::Option* _project = nullptr;
    std::vector<std::string> _folders;
    std::array<CLI::Option*, std::size(BatchOptionTexts)> _options{};
};

/** The language with a code. */
std::string readLanguage(const char* const option, const std::string& code, UnsignedInt& language) {
    const Int found = findLanguage(viewed(code));
    if(found != -1) {
        language = UnsignedInt(found);
        return {};
    }
    const Int nearest = nearestLanguage(viewed(code));
    std::string wrong = std::string{option} + ": no language has the code " + code;
    if(nearest != -1) wrong += "; did you mean " + string(AllLanguages[nearest].code) + '?';
    return wrong;
}

std::string readLanguages(const Parsing& parsing, BatchOptions& options) {
    for(const std::string& code: parsing.list(BatchOption::Languages)) {
        if(code.empty()) return "--languages takes codes with commas between, as in --languages de,fr";
        UnsignedInt language = 0;
        if(std::string wrong = readLanguage("--languages", code, language); !wrong.empty()) return wrong;
        if(std::find(options.languages.begin(), options.languages.end(), language) == options.languages.end())
            options.languages.push_back(language);
    }
    return {};
}

std::string readMap(const Parsing& parsing, BatchOptions& options) {
    for(const std::string& pair: parsing.list(BatchOption::Map)) {
        const std::size_t equals = pair.find('=');
        if(equals == std::string::npos || equals == 0 || equals + 1 == pair.size())
            return "--map takes a name and a code, as in --map enGB=en-GB, and not \"" + pair + '"';
        BatchOptions::Mapping mapping{pair.substr(0, equals), 0};
        if(std::string wrong = readLanguage("--map", pair.substr(equals + 1), mapping.language); !wrong.empty())
            return wrong;
        for(const BatchOptions::Mapping& other: options.map)
            if(other.name == mapping.name) return "--map says twice what " + mapping.name + " is";
        options.map.push_back(std::move(mapping));
    }
    return {};
}

std::string readPlaces(const Parsing& parsing, BatchOptions& options) {
    options.folder = parsing.text(BatchOption::To);
    options.archive = parsing.text(BatchOption::Zip);
    options.source = parsing.text(BatchOption::From);
    if(options.command == BatchCommand::Export) {
        if(options.folder.empty() && options.archive.empty())
            return "where to write is missing: --to FOLDER, or --zip FILE for an archive";
        if(!options.folder.empty() && !options.archive.empty()) return "there can be --to or --zip, not both";
    }
    if(options.command == BatchCommand::Import && options.source.empty())
        return "what to read is missing: --from FOLDER, or --from FILE for an archive";
    return {};
}

std::string readSeverity(const Parsing& parsing, BatchOptions& options) {
    if(!parsing.has(BatchOption::Severity)) return {};
    const std::string name = parsing.text(BatchOption::Severity);
    for(const FindingSeverity severity: {FindingSeverity::Error, FindingSeverity::Warning, FindingSeverity::Hint}) {
        if(findingSeverityName(severity) != viewed(name)) continue;
        options.severity = severity;
        return {};
    }
    return "--severity takes error, warning or hint, and not \"" + name + '"';
}

std::string readOptions(const Parsing& parsing, BatchOptions& options) {
    options.project = parsing.project();
    if(options.project.empty()) return "the project's folder has an empty name";
    options.isPseudo = parsing.has(BatchOption::Pseudo);
    options.isChecked = parsing.has(BatchOption::Check);
    options.isConfirming = parsing.has(BatchOption::Confirm);
    options.isDryRun = parsing.has(BatchOption::DryRun);
    options.isJson = parsing.has(BatchOption::Json);
    for(const auto read: {readPlaces, readLanguages, readMap, readSeverity})
        if(std::string wrong = read(parsing, options); !wrong.empty()) return wrong;
    if(!parsing.has(BatchOption::Default)) return {};
    UnsignedInt language = 0;
    std::string wrong = readLanguage("--default", parsing.text(BatchOption::Default), language);
    options.defaultLanguage = Int(language);
    return wrong;
}

BatchResult wrongUsage(BatchOutput& output, const std::string& command, const std::string& wrong) {
    output.fail(command + ": " + wrong);
    output.warn(command + " --help tells how it is used");
    return BatchResult::Usage;
}

std::string unknownCommand(const std::string& name) {
    std::vector<Containers::StringView> names;
    std::vector<std::string> texts;
    for(const CommandText& command: BatchCommandTexts) {
        names.emplace_back(command.name);
        texts.emplace_back(command.name);
    }
    const std::string all = listed(texts);
    if(name.empty()) return "a command is missing; there are " + all;
    if(name.front() == '-') return "the command comes first, then the options; there are " + all;
    const Containers::StringView nearest = nearestName(viewed(name), Containers::arrayView(names.data(), names.size()));
    if(nearest.isEmpty()) return "there is no command " + name + "; there are " + all;
    return "there is no command " + name + "; did you mean " + string(nearest) + '?';
}

}

const char* nameOf(const BatchCommand command) {
    for(const CommandText& text: BatchCommandTexts)
        if(text.command == command) return text.name;
    return "";
}

bool asksForJson(const int argc, const char* const* const argv) {
    const auto end = std::find(argv, argv + argc, std::string_view{"--"});
    return std::find(argv, end, std::string_view{"--json"}) != end;
}

Containers::Optional<BatchOptions> parseBatchOptions(
    const int argc, const char* const* const argv, BatchOutput& output, BatchResult& result) {
    std::vector<std::string> arguments;
    for(int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
    const std::string name = arguments.empty() ? std::string{} : arguments.front();

    result = BatchResult::Done;
    if(name == "--help" || name == "-h") {
        output.printText(batchHelp());
        return {};
    }
    if(name == "--version") {
        output.print(std::string{Program} + " " QUORVANE_VERSION);
        return {};
    }
    const CommandText* const command = std::find_if(std::begin(BatchCommandTexts), std::end(BatchCommandTexts),
        [&name](const CommandText& text) { return name == text.name; });
    if(command == std::end(BatchCommandTexts)) {
        result = wrongUsage(output, std::string{Program}, unknownCommand(name));
        return {};
    }

    Parsing parsing{*command};
    arguments.erase(arguments.begin());
    bool isHelp = false;
    BatchOptions options;
    options.command = command->command;
    std::string wrong = parsing.parse(std::move(arguments), isHelp);
    if(isHelp) {
        output.printText(parsing.help());
        return {};
    }
    if(wrong.empty()) wrong = readOptions(parsing, options);
    if(wrong.empty()) return options;
    result = wrongUsage(output, std::string{Program} + ' ' + command->name, wrong);
    return {};
}

}
