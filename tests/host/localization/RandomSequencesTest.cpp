#include <random>

#include "Exchanging.h"
#include "Findings.h"

namespace QuorvaneEngine {

namespace {

constexpr int ShardCount = 10;
constexpr int SequencesInShard = 40;
constexpr int Steps = 5;

const std::string Codes[]{"en", "de", "pl"};

/** Files of so few names that each one meets the others, in which what was a text becomes a number, an object, an array and nothing. */
class RandomSteps {
public:
    explicit RandomSteps(const std::uint64_t seed): _random{seed} {}

    CatalogueSet next() {
        CatalogueSet set{"en"};
        for(const std::string& code: Codes) {
            if(_isBegun && one(3)) continue;
            JsonModel file = object(0);
            // Without an object the namespace might be flat, where nothing has another shape.
            if(!_isBegun) file.children.push_back({"nested", {JsonModel::Kind::Object, {}, {{"text", text()}}}});
            set.files.push_back({code, "translation", code + "/translation.json", std::move(file)});
        }
        _isBegun = true;
        return set;
    }

    unsigned below(const unsigned limit) { return unsigned(_random() % limit); }
    bool one(const unsigned ofMany) { return below(ofMany) == 0; }

private:
    static constexpr unsigned Many = 40;

    JsonModel text() { return JsonModel::scalar('"' + std::to_string(below(4)) + ". text\""); }
    JsonModel number() { return JsonModel::scalar(std::to_string(below(3))); }

    JsonModel value(const unsigned depth) {
        const unsigned kind = below(depth < 2 ? 12 : 7);
        if(kind < 3) return text();
        if(kind < 4) return number();
        if(kind < 5) return JsonModel::scalar(one(2) ? "1.50" : "true");
        if(kind < 6) return JsonModel::scalar(one(2) ? "null" : "\"\"");
        if(kind < 7) return {one(2) ? JsonModel::Kind::Object : JsonModel::Kind::Array, {}, {}};
        if(kind < 11) return object(depth + 1);
        JsonModel array{JsonModel::Kind::Array, {}, {}};
        for(unsigned count = 1 + below(2); count; --count) array.children.push_back({"", value(depth + 1)});
        return array;
    }

    JsonModel object(const unsigned depth) {
        static const char* const names[]{"a", "b", "a_one", "a_few", "a_many", "a_other", "b_zero", "b_other"};
        JsonModel made;
        for(const char* const name: names)
            if(one(2)) made.children.push_back({name, value(depth)});
        if(depth == 0 && one(6)) made.children.push_back({one(2) ? "a.b" : "a.b.a", value(2)});
        // So many that they are set as one change.
        if(depth == 0 && !one(3)) {
            const unsigned kind = below(4);
            for(unsigned i = 0; i != Many; ++i)
                if(!one(20))
                    made.children.push_back({"k" + std::to_string(i),
                        kind == 0       ? number()
                            : kind == 1 ? text()
                            : kind == 2 ? JsonModel{JsonModel::Kind::Object, {}, {{"b", one(2) ? number() : text()}}}
                                        : value(2)});
        }
        return made;
    }

    std::mt19937_64 _random;
    bool _isBegun = false;
};

/** What a check finds beside mistakes in the texts themselves. */
std::string faultsOf(const std::string& project, const std::string& check) {
    const LocalizationFindings findings = findingsOf(project);
    std::string lines;
    for(const LocalizationFinding& finding: findings.findings())
        if(finding.check == viewed(check)) lines += lineOf(finding) + '\n';
    return lines;
}

/** Whether a report has a line for a place, or for the one of the same key that lies otherwise. */
bool isSaid(const std::multiset<std::string>& lines, const NamespaceModel& in, const std::string& code,
    const JsonPlace& place) {
    if(place.empty()) return false;
    for(const char* const outcome: {" skipped: ", " notice: "})
        for(const std::string& language: {code, std::string{"all"}})
            if(hasLine(lines, language + outcome + in.key(place) + ": ")) return true;
    return false;
}

/** A project that one set after the other is brought into. */
class Sequence {
public:
    void step(const CatalogueSet& set, const std::string& folder) {
        putAll(files, folder, set);
        std::map<std::string, std::string> exported;
        for(const std::string& code: Codes) exported[code] = Exported{files, pathOf(code)}.bytes;

        const std::string before = _exchanging.text();
        ImportResult result = _exchanging.import(folder);
        const std::string after = _exchanging.text();
        EXPECT_EQ(_exchanging.import(folder).group, -1);
        if(result.group != -1) {
            _exchanging.project().session.undo();
            EXPECT_EQ(_exchanging.text(), before);
            _exchanging.project().session.redo();
        }
        ASSERT_EQ(_exchanging.text(), after);
        rapidjson::Document saved;
        JsonError error;
        ASSERT_TRUE(JsonReader::read(viewed(after), saved, error)) << copied(error.reason);
        EXPECT_EQ(faultsOf(after, "wrong-type"), "");

        const std::multiset<std::string> imported = result.lines;
        const std::multiset<std::string> written = _exchanging.exportTo("/out");
        EXPECT_EQ(_exchanging.import("/out").group, -1) << _exchanging.text() << '\n' << listed(written);
        EXPECT_EQ(_exchanging.text(), after);
        EXPECT_EQ(faultsOf(after, "leaf-and-branch").empty(), std::none_of(written.begin(), written.end(), isConflict))
            << faultsOf(after, "leaf-and-branch") << listed(written);

        std::multiset<std::string> lines = imported;
        lines.insert(written.begin(), written.end());
        for(const std::string& code: Codes) {
            const Exported out{files, pathOf(code)};
            const CatalogueFile* const file = set.find(code, "translation");
            for(const JsonLeaf& leaf: file ? leavesOf(file->content) : std::vector<JsonLeaf>{}) {
                if(isSaidOfMany(lines, *file, leaf.place)) continue;
                const JsonPlace other = _in.otherShape(leaf.place);
                EXPECT_TRUE(leaf.value->isMissing() || out.has(leaf) || out.has({other, leaf.value}) ||
                    isSaid(lines, _in, code, leaf.place) || isSaid(lines, _in, code, other))
                    << code << ' ' << _in.key(leaf.place) << " is lost\n"
                    << listed(lines) << out.bytes;
            }
            for(const JsonPlace& place: placesIn(exported[code]))
                EXPECT_TRUE(out.find(place) || isSaid(lines, _in, code, place))
                    << code << ' ' << _in.key(place) << " is gone\n"
                    << listed(lines) << out.bytes;
        }
    }

    MemoryFileSystem files;

private:
    static std::string pathOf(const std::string& code) { return "/out/" + code + "/translation.json"; }

    static bool isConflict(const std::string& line) { return line.find("cannot stand beside") != std::string::npos; }

    /** Places of all that a file holds, but in empty containers. */
    static std::vector<JsonPlace> placesIn(const std::string& bytes) {
        std::vector<JsonPlace> places;
        if(bytes.empty()) return places;
        rapidjson::Document content;
        content.Parse(bytes.data(), bytes.size());
        JsonPlace place;
        collect(content, place, places);
        return places;
    }

    static void collect(const rapidjson::Value& value, JsonPlace& place, std::vector<JsonPlace>& places) {
        const auto visit = [&](const rapidjson::Value& child, JsonStep&& step) {
            place.push_back(std::move(step));
            collect(child, place, places);
            place.pop_back();
        };
        if(value.IsObject() && !value.ObjectEmpty())
            for(const auto& member: value.GetObject())
                visit(member.value, {{member.name.GetString(), member.name.GetStringLength()}, -1});
        else if(value.IsArray() && !value.Empty())
            for(unsigned i = 0; i != value.Size(); ++i) visit(value[i], {"", int(i)});
        else if(!value.IsNull() && !place.empty()) places.push_back(place);
    }

    Exchanging _exchanging{files, "en"};
    NamespaceModel _in{"translation", "en", nullptr};
};

}

class RandomSequences: public testing::TestWithParam<int> {};

TEST_P(RandomSequences, OfImportsLoseNothingUnsaid) {
    for(int i = 0; i != SequencesInShard && !HasFailure(); ++i) {
        const std::uint64_t seed = std::uint64_t(GetParam() * SequencesInShard + i);
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomSteps random{seed};
        Sequence sequence;
        for(int step = 0; step != Steps && !HasFailure(); ++step)
            sequence.step(random.next(), "/in " + std::to_string(step));
        if(!HasFailure()) continue;
        for(const auto& [path, bytes]: sequence.files.files())
            if(path.starts_with("/in")) ADD_FAILURE() << path << ":\n" << bytes;
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, RandomSequences, testing::Range(0, ShardCount));

}
