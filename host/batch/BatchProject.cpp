#include "batch/BatchProject.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <Corrade/Utility/Debug.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "batch/BatchOutput.h"
#include "batch/ProgressLine.h"
#include "localization/LanguageLookup.h"
#include "localization/LocalizationConditions.h"
#include "localization/Progress.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }
Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

std::string codeOf(const UnsignedInt language) { return string(AllLanguages[language].code); }

}

/** Calls what prints warnings, and prints them, as failures where it fails, less the function that they name first. */
template <class Call> bool BatchProject::run(const char* const what, Call call) {
    Containers::String warnings;
    bool result = false;
    {
        const Progress unknown;
        const ProgressLine line{_output, what, unknown};
        Corrade::Utility::Warning redirect{&warnings};
        result = call();
    }
    std::string_view left{warnings.data(), warnings.size()};
    while(!left.empty()) {
        const std::size_t end = std::min(left.find('\n'), left.size());
        std::string_view line = left.substr(0, end);
        constexpr std::string_view CallEnd{"(): "};
        if(const std::size_t function = line.find(CallEnd); function < line.find(' '))
            line.remove_prefix(function + CallEnd.size());
        if(result) _output.warn(line);
        else _output.fail(line);
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return result;
}

BatchResult BatchProject::open() {
    if(const BatchResult result = findFolder(); result != BatchResult::Done) return result;
    _output.showPathAs(absolutePath(name()), name());
    // What it reads is what it changes and saves: another program's changes in between would be lost.
    const bool isWriting =
        !_options.isDryRun && (_options.command == BatchCommand::Gather || _options.command == BatchCommand::Import);
    const bool isOpen = run("opening", [&] {
        const Containers::StringView folder = viewed(_options.project);
        return (!isWriting || _session.lock(folder)) && _session.open(folder);
    });
    if(!isOpen) return BatchResult::Inaccessible;
    const auto failures = checkLocalizationConditions(_session.project());
    for(const LocalizationCondition& failure: failures)
        _output.fail(name() + "/project.json: " + string(failure.reason));
    return failures.isEmpty() ? readLanguages() : BatchResult::Problems;
}

BatchResult BatchProject::save() {
    const bool isSaved = !_session.hasUnsavedChanges() || run("saving", [this] { return _session.save(); });
    return isSaved ? BatchResult::Done : BatchResult::Inaccessible;
}

std::vector<UnsignedInt> BatchProject::chosenLanguages() const {
    if(!_options.languages.empty()) return _options.languages;
    return _languages.empty() ? std::vector<UnsignedInt>{_defaultLanguage} : _languages;
}

/** Says more plainly than the system what is not there. */
BatchResult BatchProject::findFolder() {
    std::error_code error;
    const std::filesystem::file_status folder = std::filesystem::status(name(), error);
    const std::filesystem::file_status file = std::filesystem::status(name() + "/project.json", error);
    if(folder.type() == std::filesystem::file_type::not_found) _output.fail(name() + ": there is no such folder");
    else if(folder.type() == std::filesystem::file_type::regular)
        _output.fail(name() + ": is a file; a project is given by its folder");
    else if(file.type() == std::filesystem::file_type::not_found)
        _output.fail(name() + ": is not a project's folder, it has no project.json");
    else return BatchResult::Done;
    return BatchResult::Inaccessible;
}

BatchResult BatchProject::readLanguages() {
    const ValueAccess languages = _session.project().root().member("languages"_s);
    Int marked = -1;
    std::string codes;
    for(const Containers::StringView code: languages) {
        const Int language = findLanguage(code);
        if(language == -1) {
            // What is checked is told by the checks.
            if(_options.command == BatchCommand::Status || _options.command == BatchCommand::Export)
                _output.warn(name() + "/project.json: /languages: no language has the code " + string(code) +
                    ", so it is left out");
            continue;
        }
        _languages.push_back(UnsignedInt(language));
        codes += (codes.empty() ? "" : ", ") + string(code);
        if(marked == -1 && languages.member(code).member("isDefault"_s).asBool()) marked = language;
    }
    const Int wanted = _options.defaultLanguage;
    if(marked != -1 && wanted != -1 && marked != wanted) {
        _output.fail("--default " + codeOf(UnsignedInt(wanted)) + ": the default language of " + name() + " is " +
            codeOf(UnsignedInt(marked)));
        return BatchResult::Usage;
    }
    _defaultLanguage = UnsignedInt(marked != -1 ? marked : wanted != -1 ? wanted : Int(FallbackLanguage));
    // An import may bring languages that the project does not have yet.
    if(_options.command == BatchCommand::Import) return BatchResult::Done;
    for(const UnsignedInt language: _options.languages) {
        const std::vector<UnsignedInt> all =
            _languages.empty() ? std::vector<UnsignedInt>{_defaultLanguage} : _languages;
        if(std::find(all.begin(), all.end(), language) != all.end()) continue;
        _output.fail("--languages: " + name() + " has no language " + codeOf(language) + "; it has " +
            (codes.empty() ? codeOf(_defaultLanguage) : codes));
        return BatchResult::Usage;
    }
    return BatchResult::Done;
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

}
