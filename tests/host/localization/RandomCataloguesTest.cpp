#include "RandomCatalogues.h"

#include "Exchanging.h"
#include "ImportModel.h"

namespace QuorvaneEngine {

namespace {

constexpr int ShardCount = 10;
constexpr int SetsInShard = 1000;
constexpr int LaterSetsInShard = 200;
constexpr int RefusedSetsInShard = 100;

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
                if(isSaidOfMany(lines, *changed, leaf.place)) continue;
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
