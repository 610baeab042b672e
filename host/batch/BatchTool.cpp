#include "batch/BatchTool.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "batch/BatchOptions.h"
#include "batch/BatchOutput.h"
#include "batch/BatchProject.h"
#include "batch/BatchReport.h"
#include "batch/ProgressLine.h"
#include "batch/StatusTable.h"
#include "document/FileSystem.h"
#include "document/JsonWriter.h"
#include "fonts/FontCoverage.h"
#include "fonts/FontFinder.h"
#include "localization/Export.h"
#include "localization/Gathering.h"
#include "localization/Import.h"
#include "localization/JsonPath.h"
#include "localization/LanguageMapping.h"
#include "localization/LastRun.h"
#include "localization/LocalizationChecks.h"
#include "localization/LocalizationFindings.h"
#include "localization/LocalizationReport.h"
#include "localization/LocalizationStatus.h"
#include "localization/Progress.h"
#include "localization/ProjectTerms.h"
#include "localization/ProjectTypes.h"

namespace QuorvaneEngine {

namespace {

/** A command at work. What it has to tell goes to the output, or into a document where machines are to read it. */
struct Run {
    const BatchOptions& options;
    BatchOutput& output;
    BatchProject project;
    /** An object. */
    rapidjson::Document document;

    Run(const BatchOptions& options, BatchOutput& output)
        : options{options}, output{output}, project{options, output}, document{rapidjson::kObjectType} {}

    void add(const char* const name, rapidjson::Value value) {
        document.AddMember(rapidjson::StringRef(name), std::move(value), document.GetAllocator());
    }

    rapidjson::Value text(const Containers::StringView text) {
        return rapidjson::Value{text.data(), rapidjson::SizeType(text.size()), document.GetAllocator()};
    }
};

std::string string(const Containers::StringView text) { return {text.data(), text.size()}; }
Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

BatchResult refuse(Run& run, const Containers::ArrayView<const Containers::String> refusals) {
    for(const Containers::String& refusal: refusals) run.output.fail(string(refusal));
    return BatchResult::Problems;
}

void tell(Run& run, const LocalizationReport& report) {
    run.add("dryRun", rapidjson::Value{run.options.isDryRun});
    if(run.options.isJson) addReport(report, run.document);
    else printReport(report, run.options.isDryRun, run.output);
}

/** Tells of values whose type is wrong: they count as missing, and so may what depends on them. */
bool isWellTyped(Run& run) {
    std::string first;
    std::size_t count = 0;
    ProjectTypes::checkLocalization(run.project.session().project().document(),
        [&](const std::vector<Containers::StringView>& names, const char* const is, const char* const mustBe) {
            if(count++ == 0)
                first = string(
                    ProjectTypes::wrongType(jsonPath(Containers::arrayView(names.data(), names.size())), is, mustBe));
        });
    if(count == 0) return true;
    run.output.fail(run.project.name() + "/project.json: " + first +
        (count == 1 ? "" : "; check tells of " + std::to_string(count - 1) + " more"));
    return false;
}

BatchResult status(Run& run) {
    const std::vector<UnsignedInt> languages = run.project.chosenLanguages();
    const Containers::ArrayView<const UnsignedInt> chosen{languages.data(), languages.size()};
    const rapidjson::Value& root = run.project.session().project().document();
    const Containers::Array<LanguageStatus> statuses = localizationStatus(root, chosen, run.project.defaultLanguage());
    LetterSet drawn;
    const bool hasFonts = !findTextFonts(&drawn).isEmpty();
    const Containers::Array<LanguageLetters> letters = lettersOf(root, chosen, run.project.defaultLanguage(), drawn);
    run.add("defaultLanguage", run.text(AllLanguages[run.project.defaultLanguage()].code));
    if(run.options.isJson) addStatus(statuses, letters, hasFonts, run.document);
    else run.output.printText(statusTable(statuses, run.output.terminal()) + letterLines(letters, hasFonts));
    return isWellTyped(run) ? BatchResult::Done : BatchResult::Problems;
}

BatchResult gather(Run& run) {
    EditorSession& session = run.project.session();
    const std::size_t before = ProjectTerms{session.project()}.terms().size();
    LocalizationRun gathering{LocalizationRun::Kind::Gathering, {}, {}, {}};
    gatherTerms(session.editor(), gathering);
    if(!gathering.refusals.isEmpty()) return refuse(run, gathering.refusals);
    if(!run.options.isDryRun)
        if(const BatchResult result = run.project.save(); result != BatchResult::Done) return result;

    // What is gathered comes behind the terms that there are.
    const ProjectTerms terms{session.project()};
    const auto added = terms.terms().exceptPrefix(before);
    rapidjson::Value list{rapidjson::kArrayType};
    for(const ProjectTerm& term: added) {
        if(!run.options.isJson) run.output.print("added " + string(term.key) + ": " + string(term.source));
        rapidjson::Value entry{rapidjson::kObjectType};
        entry.AddMember("term", run.text(term.key), run.document.GetAllocator());
        entry.AddMember("source", run.text(term.sourceText), run.document.GetAllocator());
        entry.AddMember("text", run.text(term.source), run.document.GetAllocator());
        list.PushBack(entry, run.document.GetAllocator());
    }
    run.add("dryRun", rapidjson::Value{run.options.isDryRun});
    run.add("added", std::move(list));
    const std::string count = std::to_string(added.size()) + (added.size() == 1 ? " term" : " terms");
    if(!run.options.isJson) run.output.print(count + (run.options.isDryRun ? " would be added" : " added"));
    return BatchResult::Done;
}

LocalizationFindings findingsOf(Run& run, const Containers::ArrayView<const UnsignedInt> languages) {
    Progress progress;
    const LocalizationCheckOptions options{run.project.defaultLanguage(), languages, &progress};
    const ProgressLine line{run.output, "checking", progress};
    return checkLocalization(run.project.session().project().document(), options);
}

BatchResult check(Run& run) {
    LocalizationFindings findings =
        findingsOf(run, Containers::arrayView(run.options.languages.data(), run.options.languages.size()));
    const Containers::Optional<FindingSeverity>& least = run.options.severity;
    if(least) findings.leaveOutBelow(*least);
    if(run.options.isJson) addFindings(findings, run.document);
    else printFindings(findings, run.output, least ? *least : FindingSeverity::Hint);
    return findings.hasProblems(least ? *least : FindingSeverity::Warning) ? BatchResult::Problems : BatchResult::Done;
}

/** The folder that a file is in, "." where its path names none. */
std::string parentOf(const std::string& path) {
    const std::string parent = std::filesystem::path{path}.parent_path().string();
    return parent.empty() ? "." : parent;
}

BatchResult exportTerms(Run& run) {
    const std::vector<UnsignedInt> languages = run.project.chosenLanguages();
    const bool isFolder = !run.options.folder.empty();
    const std::string& typed = isFolder ? run.options.folder : run.options.archive;
    const std::string path = absolutePath(typed);
    run.output.showPathAs(path, typed);
    if(!isFolder) run.output.showPathAs(parentOf(path), parentOf(typed));

    Progress progress;
    LocalizationReport report;
    report.keepTexts(run.options.isJson);
    FileError error;
    const Export request{run.project.session().project(), FileSystem::disk(),
        Containers::arrayView(languages.data(), languages.size()), run.project.defaultLanguage(),
        ExportOptions{run.options.isDryRun, run.options.isPseudo}, &progress};
    const bool isDone = [&] {
        const ProgressLine line{run.output, "exporting", progress};
        return isFolder ? request.toFolder(viewed(path), report, error)
                        : request.toArchive(viewed(path), report, error);
    }();
    if(!isDone) {
        run.output.fail(string(error.path) + ": " + string(error.reason));
        return BatchResult::Inaccessible;
    }
    tell(run, report);
    return report.hasConflicts() ? BatchResult::Problems : BatchResult::Done;
}

/** Where the project does not say which language its source texts are in, and the user neither, it is English if that is there. */
bool isDefaultKnown(Run& run, const Containers::ArrayView<const UnsignedInt> languages) {
    if(!run.project.languages().empty() || run.options.defaultLanguage != -1) return true;
    std::string codes;
    for(const UnsignedInt language: languages) {
        if(language == FallbackLanguage) return true;
        codes += (codes.empty() ? "" : ", ") + string(AllLanguages[language].code);
    }
    run.output.fail(run.project.name() +
        ": has no languages yet; say with --default which one the source texts are in, as there is no en but " + codes);
    return false;
}

/** The languages that were asked for and not read. */
std::vector<UnsignedInt> missingLanguages(const Run& run, const Containers::ArrayView<const UnsignedInt> languages) {
    std::vector<UnsignedInt> missing;
    for(const UnsignedInt wanted: run.options.languages)
        if(std::find(languages.begin(), languages.end(), wanted) == languages.end()) missing.push_back(wanted);
    return missing;
}

BatchResult importTerms(Run& run) {
    const std::string path = absolutePath(run.options.source);
    run.output.showPathAs(path, run.options.source);
    std::error_code error;
    if(std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) {
        run.output.fail(run.options.source + ": there is no such folder or archive");
        return BatchResult::Inaccessible;
    }
    if(std::filesystem::is_regular_file(path, error) && path.ends_with(".json")) {
        run.output.fail(run.options.source + ": is a single file; give the folder around the languages with --from");
        return BatchResult::Usage;
    }

    std::vector<LanguageMapping> map;
    for(const BatchOptions::Mapping& mapping: run.options.map) map.push_back({viewed(mapping.name), mapping.language});
    const ImportOptions options{Containers::arrayView(map.data(), map.size()),
        Containers::arrayView(run.options.languages.data(), run.options.languages.size()), {},
        run.options.isConfirming};
    Progress progress;
    Import import{run.project.session().editor(), run.project.defaultLanguage(), options, &progress};
    LocalizationReport report;
    report.keepTexts(run.options.isJson);
    bool isTaken = [&] {
        const ProgressLine line{run.output, "reading", progress};
        return import.read(FileSystem::disk(), viewed(path));
    }();
    const std::vector<UnsignedInt> missing = missingLanguages(run, import.languages());
    if(isTaken && import.languages().isEmpty()) {
        for(const UnsignedInt language: missing)
            run.output.fail(run.options.source + ": has no file of " + string(AllLanguages[language].code));
        return BatchResult::Problems;
    }
    if(isTaken && !isDefaultKnown(run, import.languages())) return BatchResult::Usage;
    if(isTaken) {
        const ProgressLine line{run.output, "comparing", progress};
        isTaken = import.compare(report);
    }
    if(!isTaken) {
        const BatchResult result = refuse(run, import.refusals());
        return import.isInaccessible() ? BatchResult::Inaccessible : result;
    }

    for(const UnsignedInt language: missing) report.add(language, TermOutcome::Notice, {}, "has no file among these");
    const bool hasSkippedAll = report.hasSkippedAll();
    bool hasProblems = report.hasConflicts() || hasSkippedAll || import.lacksLanguages() || import.hasUnusedMappings();
    // What is not saved is gone with the process, and can be checked before.
    if(!run.options.isDryRun || run.options.isChecked) {
        Containers::Array<UnsignedInt> languages;
        import.apply(languages);
    }
    if(run.options.isChecked) {
        const LocalizationFindings findings = findingsOf(run, import.languages());
        if(run.options.isJson) {
            findings.countStale(report);
            addFindings(findings, run.document);
        } else findings.addTo(report);
        hasProblems = hasProblems || findings.hasProblems();
    }
    if(!run.options.isDryRun)
        if(const BatchResult result = run.project.save(); result != BatchResult::Done) return result;
    tell(run, report);
    if(hasSkippedAll) run.output.fail(run.options.source + ": nothing is taken over: all texts were skipped");
    return hasProblems ? BatchResult::Problems : BatchResult::Done;
}

BatchResult runCommand(Run& run) {
    if(const BatchResult result = run.project.open(); result != BatchResult::Done) return result;
    switch(run.options.command) {
    case BatchCommand::Status: return status(run);
    case BatchCommand::Gather: return gather(run);
    case BatchCommand::Check: return check(run);
    case BatchCommand::Export: return exportTerms(run);
    case BatchCommand::Import: return importTerms(run);
    }
    return BatchResult::Done;
}

/** The document around what a command found.
    @param command  null where the command line is wrong */
void printDocument(
    const char* const command, rapidjson::Document& found, const BatchResult result, BatchOutput& output) {
    rapidjson::Document document{rapidjson::kObjectType, &found.GetAllocator()};
    auto& allocator = document.GetAllocator();
    if(command) document.AddMember("command", rapidjson::StringRef(command), allocator);
    document.AddMember("exitCode", int(result), allocator);
    for(auto& member: found.GetObject()) document.AddMember(member.name, member.value, allocator);
    rapidjson::Value failures{rapidjson::kArrayType};
    for(const std::string& failure: output.failures())
        failures.PushBack(rapidjson::Value{failure.data(), rapidjson::SizeType(failure.size()), allocator}, allocator);
    document.AddMember("failures", failures, allocator);

    Containers::String text;
    Containers::String reason;
    if(JsonWriter::write(document, {2}, text, reason)) output.printText({text.data(), text.size()});
    else output.warn("--json: " + string(reason));
}

}

int runBatchTool(const int argc, const char* const* const argv, BatchOutput& output) {
    BatchResult result = BatchResult::Done;
    if(const Containers::Optional<BatchOptions> options = parseBatchOptions(argc, argv, output, result)) {
        Run run{*options, output};
        result = runCommand(run);
        if(options->isJson) printDocument(nameOf(options->command), run.document, result, output);
    } else if(result != BatchResult::Done && asksForJson(argc, argv)) {
        rapidjson::Document nothing{rapidjson::kObjectType};
        printDocument(nullptr, nothing, result, output);
    }
    if(const int failure = output.finish()) {
        output.warn("standard output: cannot be written: " + std::string{std::strerror(failure)});
        return int(BatchResult::Inaccessible);
    }
    return int(result);
}

}
