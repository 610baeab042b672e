#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "Exchange.h"
#include "Export.h"
#include "Import.h"
#include "LocalizationReport.h"
#include "NamespaceModel.h"

namespace QuorvaneEngine {

using Files = std::map<std::string, std::string>;

struct ImportResult {
    Int group = -1;
    std::multiset<std::string> lines = {};
    bool hasConflicts = false;
    std::size_t empty = 0;
    std::set<std::string> languages = {};
    std::vector<std::string> refusals = {};
};

inline std::string lineOf(const LocalizationReport::Line& line) {
    const char* const outcomes[]{"added", "changed", "unchanged", "empty", "skipped", "notice"};
    const std::string code =
        line.language == LocalizationReport::NoLanguage ? "all" : copied(AllLanguages[line.language].code);
    return code + ' ' + outcomes[int(line.outcome)] + ": " + copied(line.term) + ": " + copied(line.reason) + " (" +
        copied(line.file) + ')';
}

/** A project that files are brought into, and out of. */
class Exchanging {
public:
    /** @param files    must outlive this object */
    explicit Exchanging(MemoryFileSystem& files, const std::string& defaultCode)
        : _files{files},
          _default{UnsignedInt(findLanguage(viewed(defaultCode)))},
          _languages{languagesOf({defaultCode.data()})} {}

    ImportResult import(const std::string& path) {
        ImportResult result;
        Import import{_project.editor(), _default};
        LocalizationReport report;
        if(import.read(_files, viewed(path)) && import.compare(report)) {
            const bool isEmpty = import.isEmpty();
            result.group = import.apply(_languages);
            EXPECT_EQ(isEmpty, result.group == -1);
        }
        for(const LocalizationReport::Line& line: report.lines()) result.lines.insert(lineOf(line));
        result.hasConflicts = report.hasConflicts();
        for(const UnsignedInt language: report.languages()) result.empty += report.counts(language).empty;
        for(const UnsignedInt language: _languages) result.languages.insert(copied(AllLanguages[language].code));
        for(const Containers::String& refusal: import.refusals()) result.refusals.push_back(copied(refusal));
        return result;
    }

    /** What an export reports. */
    std::multiset<std::string> exportTo(const std::string& path, const bool isArchive = false) {
        LocalizationReport report;
        FileError error;
        const Export request{_project.project(), _files, _languages, _default};
        EXPECT_TRUE(
            isArchive ? request.toArchive(viewed(path), report, error) : request.toFolder(viewed(path), report, error))
            << copied(error.path) << ": " << copied(error.reason);
        std::multiset<std::string> lines;
        for(const LocalizationReport::Line& line: report.lines())
            if(line.outcome == TermOutcome::Skipped || line.outcome == TermOutcome::Notice) lines.insert(lineOf(line));
        return lines;
    }

    std::string text() { return _project.text(); }
    TestProject& project() { return _project; }

private:
    MemoryFileSystem& _files;
    UnsignedInt _default;
    Containers::Array<UnsignedInt> _languages;
    TestProject _project{"{}"};
};

/** The files in a folder by their paths in it. */
inline Files filesIn(const MemoryFileSystem& all, const std::string& folder) {
    Files found;
    for(const auto& [path, bytes]: all.files())
        if(path.starts_with(folder + '/')) found[path.substr(folder.size() + 1)] = bytes;
    return found;
}

inline void putAll(MemoryFileSystem& files, const std::string& folder, const CatalogueSet& set) {
    for(const CatalogueFile& file: set.files) files.put(folder + '/' + file.path, file.content.file(file.layout));
}

inline std::string listed(const std::multiset<std::string>& lines) {
    std::string all;
    for(const std::string& line: lines) all += line + '\n';
    return all;
}

inline std::string listed(const Files& files) {
    std::string all;
    for(const auto& [path, bytes]: files) all += path + ":\n" + bytes;
    return all;
}

/** A file that was exported. */
struct Exported {
    explicit Exported(const MemoryFileSystem& files, const std::string& path): bytes{files.files()[path]} {
        content.Parse(bytes.data(), bytes.size());
    }

    /** What is at a place, null for nothing. */
    const rapidjson::Value* find(const JsonPlace& place) const {
        const rapidjson::Value* at = place.empty() ? nullptr : &content;
        for(const JsonStep& step: place) {
            if(step.element < 0 ? !at->IsObject() : !at->IsArray() || at->Size() <= unsigned(step.element))
                return nullptr;
            if(step.element < 0) {
                const auto found = at->FindMember(rapidjson::Value{step.name.data(), unsigned(step.name.size())});
                if(found == at->MemberEnd()) return nullptr;
                at = &found->value;
            } else at = &(*at)[unsigned(step.element)];
        }
        return at && !at->IsNull() ? at : nullptr;
    }

    bool has(const JsonLeaf& leaf) const {
        const rapidjson::Value* const found = find(leaf.place);
        rapidjson::Document expected;
        expected.Parse(leaf.value->printed().data());
        return found && TestProject::printed(*found) == TestProject::printed(expected);
    }

    std::string bytes;
    rapidjson::Document content;
};

/** Whether a line for many texts of a file tells that one is skipped: all of them, or plural forms of version 3 of the format. */
inline bool isSaidOfMany(const std::multiset<std::string>& lines, const CatalogueFile& file, const JsonPlace& place) {
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        if(!line.starts_with(file.code + " skipped: ") || !line.ends_with(" (" + file.path + ')')) return false;
        return line.find(": the project has nothing of the default language's ") != std::string::npos ||
            (place.back().name.ends_with("_plural") &&
                line.find(" more plural forms of version 3 ") != std::string::npos);
    });
}

inline bool hasLine(const std::multiset<std::string>& lines, const std::string& beginning) {
    const auto found = lines.lower_bound(beginning);
    return found != lines.end() && found->starts_with(beginning);
}

}
