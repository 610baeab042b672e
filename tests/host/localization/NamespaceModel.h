#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "JsonModel.h"

namespace QuorvaneEngine {

/** A file of a catalogue. */
struct CatalogueFile {
    std::string code;
    std::string nameSpace;
    /** Relative. */
    std::string path;
    JsonModel content = {};
    JsonLayout layout = {};
};

/** The files of a project in all languages. */
struct CatalogueSet {
    std::string defaultCode;
    std::vector<CatalogueFile> files = {};

    const CatalogueFile* find(const std::string& code, const std::string& nameSpace) const {
        const auto found = std::find_if(files.begin(), files.end(),
            [&](const CatalogueFile& file) { return file.code == code && file.nameSpace == nameSpace; });
        return found == files.end() ? nullptr : &*found;
    }
};

/** The forms that languages have by CLDR, cardinal and ordinal. */
struct PluralModel {
    const char* name;
    const char* forms[2];

    /** @param code one of those that @ref RandomCatalogues knows */
    static const PluralModel& of(const std::string& code) {
        static const std::map<std::string, PluralModel> rules{{"en", {"English", {"one other", "one two few other"}}},
            {"de", {"German", {"one other", "other"}}}, {"fr", {"French", {"one many other", "one other"}}},
            {"pl", {"Polish", {"one few many other", "other"}}}, {"ru", {"Russian", {"one few many other", "other"}}},
            {"ja", {"Japanese", {"other", "other"}}}, {"ar", {"Arabic", {"zero one two few many other", "other"}}},
            {"cy", {"Welsh", {"zero one two few many other", "zero one two few many other"}}},
            {"pt-BR", {"Portuguese (Brazil)", {"one many other", "other"}}}, {"la", {"Latin", {"", ""}}}};
        return rules.at(code);
    }

    bool has(const int kind, const std::string& form) const {
        return (' ' + std::string{forms[kind]} + ' ').find(' ' + form + ' ') != std::string::npos;
    }
    bool mayHave(const int kind, const std::string& form) const { return form == "zero" || has(kind, form); }
};

/** A key as a plural form. */
struct PluralFormModel {
    JsonPlace base;
    int kind = 0;
    std::string form;

    static bool parse(const JsonPlace& place, PluralFormModel& parsed) {
        const auto take = [](std::string& name, const std::string& end) {
            if(name.size() <= end.size() || !name.ends_with(end)) return false;
            name.resize(name.size() - end.size());
            return true;
        };
        for(const char* const form: {"zero", "one", "two", "few", "many", "other"}) {
            parsed = {place, 0, form};
            if(place.back().element >= 0 || !take(parsed.base.back().name, '_' + parsed.form)) continue;
            parsed.kind = take(parsed.base.back().name, "_ordinal");
            return true;
        }
        return false;
    }
};

/** A namespace as the default language's file makes it. */
class NamespaceModel {
public:
    /** @param file     null where there is none */
    explicit NamespaceModel(std::string name, const std::string& defaultCode, const CatalogueFile* const file)
        : _name{std::move(name)}, _default{PluralModel::of(defaultCode)} {
        if(!file) return;
        const std::vector<JsonLeaf> leaves = leavesOf(file->content);
        bool isFlat = true;
        bool isDistinct = false;
        for(const JsonLeaf& leaf: leaves) {
            if(!leaf.value->isMissing()) taken.push_back(leaf);
            isFlat = isFlat && leaf.place.size() == 1 && leaf.value->kind == JsonModel::Kind::Scalar;
            isDistinct = isDistinct || leaf.place[0].name.find_first_of(".: ") != std::string::npos;
        }
        _isFlat = isFlat && isDistinct && !taken.empty();
        for(const JsonLeaf& leaf: taken) (leaf.value->isText() ? terms : values).insert(leaf.place);
        findPlurals();
    }

    /** What the default language's file has there, in its order. */
    std::vector<JsonLeaf> taken;
    std::set<JsonPlace> terms;
    std::set<JsonPlace> values;

    /** The key of a project. */
    std::string key(const JsonPlace& place) const {
        std::string key = fileKey(place);
        if(_isFlat)
            for(std::size_t at; (at = key.find("%2E")) != std::string::npos;) key.replace(at, 3, ".");
        if(_name == "translation") return key;
        if(key.starts_with(' ')) key.replace(0, 1, "%20");
        return encoded(_name, ".:%# ") + ':' + key;
    }

    /** Where the i18next library would look for the same: nothing where there is no other place. */
    JsonPlace otherShape(const JsonPlace& place) const {
        if(_isFlat) return place.size() == 1 ? JsonPlace{} : joined(place);
        if(place.size() != 1 || place[0].name.find('.') == std::string::npos) return {};
        JsonPlace other;
        std::size_t begin = 0;
        for(std::size_t end; (end = place[0].name.find('.', begin)) != std::string::npos; begin = end + 1)
            other.push_back({place[0].name.substr(begin, end - begin), -1});
        other.push_back({place[0].name.substr(begin), -1});
        return other;
    }

    /** Where something of another language's file belongs: to a text or a value of the default language; nothing for neither. */
    JsonPlace target(const JsonPlace& place) const {
        const JsonPlace other = otherShape(place);
        if(terms.contains(place) || values.contains(place)) return place;
        return terms.contains(other) || (_isFlat && values.contains(other)) ? other : JsonPlace{};
    }

    /** Whether the default language proves the plural of a form that it does not have. */
    bool hasPlural(const PluralFormModel& form) const { return _plurals.contains({form.base, form.kind}); }

    /** Why nothing of the default language has a place. */
    std::string reasonForNone(const JsonPlace& place) const {
        const std::string reason = "no term has this key";
        const auto beginsWith = [](const JsonPlace& whole, const JsonPlace& beginning, const std::size_t size) {
            return whole.size() > size &&
                std::equal(beginning.begin(), beginning.begin() + std::ptrdiff_t(size), whole.begin());
        };
        const auto beside = [&](const JsonPlace& other, const std::string& why) {
            return reason + ", and it cannot stand beside " + key(other) + ": one is " + why;
        };
        for(const JsonLeaf& leaf: taken)
            if(beginsWith(place, leaf.place, leaf.place.size()) || beginsWith(leaf.place, place, place.size()))
                return beside(leaf.place, "a text, and the other lies below it");
        // The innermost container on the way that there is.
        for(std::size_t size = place.size() - 1; size != 0; --size)
            for(const JsonLeaf& leaf: taken)
                if(beginsWith(leaf.place, place, size)) {
                    if((leaf.place[size].element < 0) == (place[size].element < 0)) return reason;
                    return beside(leaf.place, "an element, and the other has a name");
                }
        return reason;
    }

private:
    static std::string encoded(const std::string& name, const std::string& special) {
        std::string out;
        for(const char c: name) {
            const auto byte = static_cast<unsigned char>(c);
            const bool isFirst = out.empty() && c == '[';
            if(byte >= 0x20 && byte != 0x7f && special.find(c) == std::string::npos && !isFirst) out += c;
            else (((out += '%') += "0123456789ABCDEF"[byte / 16]) += "0123456789ABCDEF"[byte % 16]);
        }
        return out;
    }

    static std::string fileKey(const JsonPlace& place) {
        std::string key;
        for(std::size_t i = 0; i != place.size(); ++i) {
            const JsonStep& step = place[i];
            key += (i ? "." : "") +
                (step.element < 0 ? encoded(step.name, ".:%#") : '[' + std::to_string(step.element) + ']');
        }
        return key;
    }

    static JsonPlace joined(const JsonPlace& place) {
        std::string name;
        for(std::size_t i = 0; i != place.size(); ++i)
            name +=
                (i ? "." : "") + (place[i].element < 0 ? place[i].name : '[' + std::to_string(place[i].element) + ']');
        return {{name, -1}};
    }

    void findPlurals() {
        std::map<std::pair<JsonPlace, int>, std::set<std::string>> forms;
        std::vector<std::string> others;
        for(const JsonPlace& place: terms) {
            PluralFormModel form;
            const bool isForm = PluralFormModel::parse(place, form);
            if(isForm) forms[{form.base, form.kind}].insert(form.form);
            if(!isForm || !_default.mayHave(form.kind, form.form)) others.push_back(fileKey(place));
        }
        if(!*_default.forms[0]) return;
        for(const auto& [base, found]: forms) {
            const int kind = base.second;
            bool isProven = found.contains("other") &&
                std::all_of(
                    found.begin(), found.end(), [&, kind](const auto& form) { return _default.mayHave(kind, form); });
            if(found.size() == 1) {
                const std::string beginning = fileKey(base.first) + (kind ? "_ordinal_" : "_");
                isProven = isProven && _default.forms[kind] == std::string{"other"} &&
                    std::none_of(others.begin(), others.end(),
                        [&](const std::string& key) { return key.starts_with(beginning); });
            }
            if(isProven) _plurals.insert(base);
        }
    }

    std::string _name;
    const PluralModel& _default;
    bool _isFlat = false;
    std::set<std::pair<JsonPlace, int>> _plurals;
};

}
