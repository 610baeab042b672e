#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "NamespaceModel.h"

namespace QuorvaneEngine {

/** What has to become of a set of files that a project without terms imports, told from the rules of the exchange alone. */
class ImportModel {
public:
    explicit ImportModel(const CatalogueSet& set): _set{set} {
        languages.insert(set.defaultCode);
        for(const CatalogueFile& file: set.files) {
            languages.insert(file.code);
            const CatalogueFile* const own = set.find(set.defaultCode, file.nameSpace);
            _namespaces.try_emplace(file.nameSpace, file.nameSpace, set.defaultCode, own);
            if(own) _exported.insert(file.nameSpace);
        }
        if(_exported.empty()) _exported.insert("translation");
        for(const CatalogueFile& file: set.files) {
            file.code == set.defaultCode ? takeDefault(file) : take(file);
            notice(file);
        }
        for(const std::string& code: languages)
            for(const std::string& nameSpace: _exported)
                files[code + '/' + nameSpace + ".json"] = contents[{code, nameSpace}].file();
    }

    std::set<std::string> languages;

    /** Of the report, each "language outcome: term: reason (file)", in no order. */
    std::multiset<std::string> lines;

    /** Whether a key has no place beside another one. */
    bool hasConflicts = false;

    /** How many texts are empty. */
    std::size_t empty = 0;

    /** What an export gives back, by languages and namespaces, and by paths. */
    std::map<std::pair<std::string, std::string>, JsonModel> contents;
    std::map<std::string, std::string> files;

    static std::string describe(const JsonModel& value) {
        if(value.kind != JsonModel::Kind::Scalar)
            return value.kind == JsonModel::Kind::Array ? "is an empty array and no text"
                                                        : "is an empty object and no text";
        return value.text == "true" || value.text == "false" ? "is true or false and no text"
                                                             : "is a number and no text";
    }

private:
    void add(
        const CatalogueFile& file, const std::string& outcome, const std::string& key, const std::string& reason = "") {
        lines.insert(file.code + ' ' + outcome + ": " + key + ": " + reason + " (" + file.path + ')');
    }

    void keep(const CatalogueFile& file, const JsonPlace& place, const JsonModel& value) {
        put(contents[{file.code, file.nameSpace}], place, value);
    }

    /** Keys, and why they are kept. */
    using Kept = std::vector<std::pair<std::string, std::string>>;

    void noticeKept(const CatalogueFile& file, const Kept& kept) {
        if(kept.empty()) return;
        const std::string more = kept.size() == 1 ? "" : ", and so are " + std::to_string(kept.size() - 1) + " more";
        add(file, "notice", kept[0].first, kept[0].second + ": it is kept as it is" + more);
    }

    void takeDefault(const CatalogueFile& file) {
        const NamespaceModel& in = _namespaces.at(file.nameSpace);
        const std::vector<JsonLeaf> leaves = leavesOf(file.content);
        std::vector<JsonPlace> sentences;
        Kept kept;
        for(const JsonLeaf& leaf: leaves) {
            if(readsLikeSentence(leaf.place)) sentences.push_back(leaf.place);
            const JsonPlace other = in.otherShape(leaf.place);
            if(!other.empty() && has(leaves, other))
                add(file, "notice", in.key(leaf.place), "the i18next library finds " + in.key(other) + " in its place");
            if(leaf.value->isMissing()) {
                ++empty;
                continue;
            }
            keep(file, leaf.place, *leaf.value);
            add(file, "added", in.key(leaf.place));
            if(!leaf.value->isText()) kept.emplace_back(in.key(leaf.place), describe(*leaf.value));
        }
        noticeKept(file, kept);
        if(!sentences.empty())
            add(file, "notice", in.key(sentences[0]),
                "reads like a sentence: only an application that switches both separators off is sure to find it" +
                    (sentences.size() == 1 ? "" : ", and " + std::to_string(sentences.size() - 1) + " more like it"));
    }

    void take(const CatalogueFile& file) {
        const NamespaceModel& in = _namespaces.at(file.nameSpace);
        const std::vector<JsonLeaf> leaves = leavesOf(file.content);
        if(in.taken.empty()) return skipAll(file, leaves);
        std::set<JsonPlace> found;
        Kept kept, keptTexts;
        _oldForms.clear();
        _plurals = pluralsOfVersion3(leaves);
        for(const JsonLeaf& leaf: leaves) {
            const JsonModel& value = *leaf.value;
            const JsonPlace target = in.target(leaf.place);
            if(value.isMissing()) ++empty;
            else if(target.empty()) takeUnknown(file, in, leaf);
            else if((target != leaf.place && has(leaves, target)) || !found.insert(target).second)
                add(file, "skipped", in.key(target), "stands in the file a second time, with dots in a name");
            else {
                keep(file, target, value);
                add(file, "added", in.key(target));
                if(!value.isText()) kept.emplace_back(in.key(target), describe(value));
                else if(in.values.contains(target))
                    keptTexts.emplace_back(in.key(target), "stands where the default language has no text");
            }
        }
        noticeKept(file, kept);
        noticeKept(file, keptTexts);
        if(_oldForms.empty()) return;
        add(file, "skipped", _oldForms[0],
            "no term has this key" +
                (_oldForms.size() == 1 ? ""
                                       : ", nor those of " + std::to_string(_oldForms.size() - 1) +
                            " more plural forms of version 3 of the format"));
    }

    void skipAll(const CatalogueFile& file, const std::vector<JsonLeaf>& leaves) {
        std::size_t count = 0;
        for(const JsonLeaf& leaf: leaves) ++(leaf.value->isMissing() ? empty : count);
        if(count == 0) return;
        add(file, "skipped", "",
            "the project has nothing of the default language's " + _set.defaultCode + '/' + file.nameSpace +
                ".json, so " + (count == 1 ? "this text is" : "all " + std::to_string(count) + " texts are") +
                " skipped");
    }

    static std::vector<JsonPlace> pluralsOfVersion3(const std::vector<JsonLeaf>& leaves) {
        std::vector<JsonPlace> plurals;
        for(const JsonLeaf& leaf: leaves) {
            JsonPlace base = leaf.place;
            std::string& name = base.back().name;
            if(!leaf.value->isText() || !name.ends_with("_plural")) continue;
            name.resize(name.size() - 7);
            if(has(leaves, base, true)) plurals.push_back(leaf.place);
        }
        return plurals;
    }

    void takeUnknown(const CatalogueFile& file, const NamespaceModel& in, const JsonLeaf& leaf) {
        const PluralModel& language = PluralModel::of(file.code);
        PluralFormModel form;
        std::string reason = in.reasonForNone(leaf.place);
        const bool isConflict = reason != "no term has this key";
        if(!leaf.value->isText()) reason = describe(*leaf.value) + ", and " + reason;
        else if(PluralFormModel::parse(leaf.place, form) && in.hasPlural(form)) {
            if(*language.forms[0] && !language.mayHave(form.kind, form.form))
                return add(file, "skipped", in.key(leaf.place),
                    "is a plural form that " + std::string{language.name} + " does not have");
            if(!isConflict) {
                add(file, "added", in.key(leaf.place));
                return keep(file, leaf.place, *leaf.value);
            }
        }
        hasConflicts = hasConflicts || isConflict;
        if(!isConflict && std::find(_plurals.begin(), _plurals.end(), leaf.place) != _plurals.end())
            return _oldForms.push_back(in.key(leaf.place));
        add(file, "skipped", in.key(leaf.place), reason);
    }

    /** What is said of names in every language. */
    void notice(const CatalogueFile& file) {
        static const std::map<std::string, std::string> reserved{
            {"__proto__", "is lost where the i18next library merges a file into another one"},
            {"constructor", "is lost where the i18next library merges a file into another one"},
            {"prototype", "is lost in many programs that merge files, though not in the i18next library"}};
        const NamespaceModel& in = _namespaces.at(file.nameSpace);
        const std::vector<JsonLeaf> leaves = leavesOf(file.content);
        JsonPlace last;
        for(const JsonLeaf& leaf: leaves) {
            std::size_t common = 0;
            while(common < last.size() && common < leaf.place.size() && last[common] == leaf.place[common]) ++common;
            for(std::size_t size = common + 1; size <= leaf.place.size(); ++size)
                if(const auto lost = reserved.find(leaf.place[size - 1].name); lost != reserved.end())
                    add(file, "notice", in.key({leaf.place.begin(), leaf.place.begin() + std::ptrdiff_t(size)}),
                        lost->second);
            last = leaf.place;
        }
        const std::vector<JsonPlace> plurals = pluralsOfVersion3(leaves);
        if(plurals.empty()) return;
        const std::size_t more = plurals.size() - 1;
        add(file, "notice", in.key(plurals[0]),
            "looks like a plural form of version 3 of the format" +
                (more ? ", as " + std::to_string(more) + " more do: they are ordinary keys"
                      : std::string{": it is an ordinary key"}) +
                ", which version 4 does not choose by number");
    }

    static bool has(const std::vector<JsonLeaf>& leaves, const JsonPlace& place, const bool isText = false) {
        return std::any_of(leaves.begin(), leaves.end(),
            [&](const JsonLeaf& leaf) { return leaf.place == place && (!isText || leaf.value->isText()); });
    }

    static bool readsLikeSentence(const JsonPlace& place) {
        const std::string& last = place.back().name;
        return last.ends_with('.') || last.ends_with(':') ||
            std::any_of(place.begin(), place.end(), [](const JsonStep& step) {
                return step.name.find(". ") != std::string::npos || step.name.find(": ") != std::string::npos;
            });
    }

    const CatalogueSet& _set;
    std::map<std::string, NamespaceModel> _namespaces;
    std::set<std::string> _exported;
    /** Of the file that is taken, the plural forms of version 3, and the keys of those that no term has. */
    std::vector<JsonPlace> _plurals;
    std::vector<std::string> _oldForms;
};

}
