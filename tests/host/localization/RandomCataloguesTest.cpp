#include "RandomCatalogues.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../document/MemoryFileSystem.h"
#include "Exchange.h"
#include "Export.h"
#include "Import.h"
#include "ImportModel.h"
#include "LocalizationReport.h"

namespace QuorvaneEngine {

namespace {

constexpr int ShardCount = 10;
constexpr int SetsInShard = 1000;
constexpr int LaterSetsInShard = 200;
constexpr int RefusedSetsInShard = 100;

using Files = std::map<std::string, std::string>;

struct ImportResult {
    Int group = -1;
    std::multiset<std::string> lines = {};
    bool hasConflicts = false;
    std::size_t empty = 0;
    std::set<std::string> languages = {};
    std::vector<std::string> refusals = {};
};

std::string lineOf(const LocalizationReport::Line& line) {
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
Files filesIn(const MemoryFileSystem& all, const std::string& folder) {
    Files found;
    for(const auto& [path, bytes]: all.files())
        if(path.starts_with(folder + '/')) found[path.substr(folder.size() + 1)] = bytes;
    return found;
}

void putAll(MemoryFileSystem& files, const std::string& folder, const CatalogueSet& set) {
    for(const CatalogueFile& file: set.files) files.put(folder + '/' + file.path, file.content.file(file.layout));
}

/** What a set that fits is, written as an export writes. */
Files written(const CatalogueSet& set) {
    Files files;
    for(const CatalogueFile& file: set.files) {
        JsonModel content = file.content;
        if(!content.leaveOut()) content = {};
        files[file.code + '/' + file.nameSpace + ".json"] = content.file();
    }
    return files;
}

std::string listed(const std::multiset<std::string>& lines) {
    std::string all;
    for(const std::string& line: lines) all += line + '\n';
    return all;
}

std::string listed(const Files& files) {
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

bool hasLine(const std::multiset<std::string>& lines, const std::string& beginning) {
    const auto found = lines.lower_bound(beginning);
    return found != lines.end() && found->starts_with(beginning);
}

/** Brings a set through a folder and an archive.
    @param isRepeated   whether the export is made once more, over itself */
void expectRoundTrip(
    const CatalogueSet& set, const ImportModel& expected, MemoryFileSystem& files, const bool isRepeated) {
    putAll(files, "/in", set);
    Exchanging first{files, set.defaultCode};
    const std::string before = first.text();
    const ImportResult result = first.import("/in");
    EXPECT_EQ(result.refusals, std::vector<std::string>{});
    EXPECT_EQ(listed(result.lines), listed(expected.lines));
    EXPECT_EQ(result.hasConflicts, expected.hasConflicts);
    EXPECT_EQ(result.empty, expected.empty);
    EXPECT_EQ(result.languages, expected.languages);

    const std::string after = first.text();
    EXPECT_EQ(first.import("/in").group, -1);
    EXPECT_EQ(first.text(), after);
    first.project().session.undo();
    EXPECT_EQ(first.text(), before);
    first.project().session.redo();
    EXPECT_EQ(first.text(), after);

    // What has no place was said when it came.
    EXPECT_EQ(listed(first.exportTo("/out")), "");
    EXPECT_EQ(listed(filesIn(files, "/out")), listed(expected.files));
    if(isRepeated) {
        const std::size_t changes = files.changes;
        EXPECT_EQ(listed(first.exportTo("/out")), "");
        EXPECT_EQ(files.changes, changes);
    }
    EXPECT_EQ(listed(first.exportTo("/zip/all.zip", true)), "");
    Exchanging second{files, set.defaultCode};
    EXPECT_EQ(second.import("/zip/all.zip").refusals, std::vector<std::string>{});
    // Of the same document the same files are made. Without texts that are empty a file may have another shape.
    if(second.text() == after) return;
    second.exportTo("/again");
    EXPECT_EQ(listed(filesIn(files, "/again")), listed(expected.files));
}

}

class RandomCatalogueSets: public testing::TestWithParam<int> {
protected:
    /** @param check    called for a seed, and the files that it puts the set into, in "/in" */
    template <class Check> void forEach(const int count, Check&& check) {
        for(int i = 0; i != count; ++i) {
            const std::uint64_t seed = std::uint64_t(GetParam() * count + i);
            SCOPED_TRACE("seed " + std::to_string(seed));
            MemoryFileSystem files;
            check(seed, files);
            if(!HasFailure()) continue;
            for(const auto& [path, bytes]: files.files())
                if(path.starts_with("/in")) ADD_FAILURE() << path << ":\n" << bytes;
            return;
        }
    }
};

TEST_P(RandomCatalogueSets, ComeBackTheSameAndConflictsAreReported) {
    forEach(SetsInShard, [](const std::uint64_t seed, MemoryFileSystem& files) {
        RandomCatalogues random{seed};
        const bool isFitting = seed % 2;
        const CatalogueSet set = isFitting ? random.fitting(seed % 4 == 1) : random.contradictory();
        const ImportModel expected{set};
        expectRoundTrip(set, expected, files, seed % 8 < 2);
        if(!isFitting) return;
        Files all = written(set);
        for(const auto& [path, bytes]: expected.files) all.try_emplace(path, "{}\n");
        EXPECT_EQ(listed(expected.files), listed(all));
    });
}

TEST_P(RandomCatalogueSets, ThatContradictWhatIsThereTakeNothingAwayUnsaid) {
    forEach(LaterSetsInShard, [](const std::uint64_t seed, MemoryFileSystem& files) {
        RandomCatalogues random{seed};
        const CatalogueSet set = random.fitting(random.one(2));
        CatalogueSet later = set;
        for(CatalogueFile& file: later.files)
            if(random.one(2)) random.contradict(file.content);
        putAll(files, "/in", set);
        putAll(files, "/in later", later);

        Exchanging exchanging{files, set.defaultCode};
        exchanging.import("/in");
        exchanging.exportTo("/out");
        const std::string before = exchanging.text();
        std::multiset<std::string> lines = exchanging.import("/in later").lines;
        const std::string after = exchanging.text();
        EXPECT_EQ(exchanging.import("/in later").group, -1);
        if(after != before) {
            exchanging.project().session.undo();
            EXPECT_EQ(exchanging.text(), before);
            exchanging.project().session.redo();
        }
        EXPECT_EQ(exchanging.text(), after);
        lines.merge(exchanging.exportTo("/out"));

        for(const auto& [file, content]: ImportModel{set}.contents) {
            const auto& [code, nameSpace] = file;
            const auto namespaceOf = [&, name = nameSpace](const CatalogueSet& in) {
                return NamespaceModel{name, set.defaultCode, in.find(set.defaultCode, name)};
            };
            const NamespaceModel first = namespaceOf(set);
            const NamespaceModel in = first.taken.empty() ? namespaceOf(later) : first;
            const Exported out{files, "/out/" + code + '/' + nameSpace + ".json"};
            const auto isSaid = [&, name = code](const JsonPlace& place) {
                const std::string said = " skipped: " + in.key(place) + ": ";
                return !place.empty() && (hasLine(lines, name + said) || hasLine(lines, "all" + said));
            };
            const std::string gone = ": was no text, and gives its place to what the file has there now";
            for(const JsonLeaf& leaf: leavesOf(content))
                EXPECT_TRUE(leaf.value->isMissing() || out.find(leaf.place) || isSaid(leaf.place) ||
                    hasLine(lines, set.defaultCode + " notice: " + in.key(leaf.place) + gone))
                    << code << ' ' << in.key(leaf.place) << '\n'
                    << listed(lines) << out.bytes;
            const CatalogueFile* const changed = later.find(code, nameSpace);
            for(const JsonLeaf& leaf: changed ? leavesOf(changed->content) : std::vector<JsonLeaf>{}) {
                const JsonPlace other = in.otherShape(leaf.place);
                EXPECT_TRUE(leaf.value->isMissing() || out.has(leaf) || out.has({other, leaf.value}) ||
                    isSaid(leaf.place) || isSaid(other))
                    << code << ' ' << in.key(leaf.place) << '\n'
                    << listed(lines) << out.bytes;
            }
        }
    });
}

TEST_P(RandomCatalogueSets, WithANameThatStandsTwiceChangeNothing) {
    forEach(RefusedSetsInShard, [](const std::uint64_t seed, MemoryFileSystem& files) {
        RandomCatalogues random{seed};
        CatalogueSet set = random.fitting(true);
        CatalogueFile& file = set.files[random.below(set.files.size())];
        const std::vector<std::string> repeated = random.appendMember(file.content, "repeated");
        if(repeated.empty()) return;
        file.layout = {};
        putAll(files, "/in", set);
        std::string bytes = file.content.file();
        const std::size_t place = bytes.find("\"repeated\"");
        const auto line = 1 + std::count(bytes.begin(), bytes.begin() + std::ptrdiff_t(place), '\n');
        const std::size_t column = place - bytes.rfind('\n', place);
        files.put("/in/" + file.path, bytes.replace(place, 10, quoted(repeated[0])));

        Exchanging exchanging{files, set.defaultCode};
        const ImportResult result = exchanging.import("/in");
        EXPECT_EQ(result.refusals,
            std::vector<std::string>{"/in/" + file.path + ':' + std::to_string(line) + ':' + std::to_string(column) +
                ": the name \"" + repeated[0] + "\" stands twice in one object"});
        EXPECT_EQ(result.languages, std::set<std::string>{set.defaultCode});
        EXPECT_EQ(exchanging.text(), "{}");
    });
}

INSTANTIATE_TEST_SUITE_P(Shard, RandomCatalogueSets, testing::Range(0, ShardCount));

}
