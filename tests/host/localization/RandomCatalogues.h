#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "ImportModel.h"

namespace QuorvaneEngine {

/** Makes sets of small files, of one seed always the same ones in one build. */
class RandomCatalogues {
public:
    explicit RandomCatalogues(const std::uint64_t seed): _random{seed} {}

    /** One that has to come back as it is, but for texts that are empty: each language has some of what the default one has, in the
        same shape and in an order of its own, and plural forms that it needs itself.
        @param isWhole  whether no text is empty */
    CatalogueSet fitting(const bool isWhole) {
        _emptyOneIn = isWhole ? 0 : 12;
        CatalogueSet set;
        set.defaultCode = any<std::string>({"en", "en", "en", "de", "ja", "ar", "cy", "la"});
        std::vector<std::string> codes{"de", "fr", "pl", "ru", "ja", "ar", "cy", "pt-BR", "la", "en"};
        std::erase(codes, set.defaultCode);
        std::shuffle(codes.begin(), codes.end(), _random);
        codes.resize(below(4));
        std::vector<std::string> names{"translation", "menu", "items list", "50%", "größe", "a.b", "x#y"};
        std::shuffle(names.begin() + below(2), names.end(), _random);
        names.resize(1 + below(2) + one(8));
        for(const std::string& name: names) {
            const CatalogueFile file =
                fileOf(set.defaultCode, name, one(3) ? flat(set.defaultCode) : object(0, set.defaultCode));
            set.files.push_back(file);
            for(const std::string& code: codes)
                if(!one(6)) set.files.push_back(fileOf(code, name, translated(file.content, code, set.defaultCode)));
        }
        return set;
    }

    /** One in which some files do not fit the others, or themselves. */
    CatalogueSet contradictory() {
        CatalogueSet set = fitting(one(2));
        for(CatalogueFile& file: set.files)
            if(one(2)) contradict(file.content);
        if(one(8)) std::erase_if(set.files, [&](const CatalogueFile&) { return one(4); });
        if(set.files.empty()) return contradictory();
        return set;
    }

    /** Changes a file to what stands in contradiction to others. */
    void contradict(JsonModel& file) {
        for(unsigned count = 1 + below(4); count; --count) {
            switch(below(6)) {
            case 0: anyNode(file) = value(below(3), "la"); break;
            case 1: anyNode(file) = scalar(); break;
            case 2: addMember(anyObject(file), any(oddNames()), value(2, "la")); break;
            case 3: addMember(anyObject(file), any(bases()) + any(suffixes()), scalar()); break;
            case 4: joinNames(file); break;
            default: splitName(file);
            }
        }
    }

    /** Appends a member to an object that has some.
        @param name     of the new one
        @return the name of another one, nothing where no object has any */
    std::vector<std::string> appendMember(JsonModel& file, const std::string& name) {
        std::vector<JsonModel*> nodes, objects;
        collect(file, nodes, objects);
        std::erase_if(objects, [](const JsonModel* const object) { return object->children.empty(); });
        if(objects.empty()) return {};
        JsonModel& object = *any(objects);
        const std::string other = any(object.children).name;
        object.children.push_back({name, scalar()});
        return {other};
    }

    unsigned below(const std::size_t limit) { return unsigned(_random() % limit); }

    /** Whether this is one of so many. */
    bool one(const std::size_t ofMany) { return below(ofMany) == 0; }

    template <class T> const T& any(const std::vector<T>& all) { return all[below(all.size())]; }

private:
    static const std::vector<std::string>& oddNames() {
        using namespace std::string_literals;
        static const std::vector<std::string> names{"a", "b", "menu", "Menu", "file", "open", "Ä", "日本", "😀", "0",
            "123", "-1", "key", "key_0", "key_1", "key_plural", "_plural", "file_other", "a b", "__proto__",
            "constructor", "prototype", "", ".", "..", "a.b", "menu.file", "menu.file.open", "b.", "[0]", "[", "%",
            "%2E", "50%", ":", "ns:key", "Status: Loading...", "Wait. What?", "#", "##", "~", "~1", "/", "a/b", " ",
            " a", "%20a", "\0"s, "\n", "\\", "\"", "\x7f", "\t", "\x1f",
            "a name that is longer than any that lies in a value itself"};
        return names;
    }
    /** Of plurals; no other name begins with one. */
    static const std::vector<std::string>& bases() {
        static const std::vector<std::string> names{"apples", "door_male", "door", "grüße", "floor.up"};
        return names;
    }
    static const std::vector<std::string>& suffixes() {
        static const std::vector<std::string> names{"_zero", "_one", "_two", "_few", "_many", "_other", "_male",
            "_ordinal_one", "_ordinal_two", "_ordinal_few", "_ordinal_other"};
        return names;
    }

    JsonModel scalar() {
        static const std::vector<std::string> texts{R"("text")", R"("ä\n\"\\/")", R"("$t(a.b) {{name}}")", R"(" ")",
            R"("日本")", R"("a text that is longer than any that lies in a value itself")", R"("\u0000\u001F")",
            R"("😀%:.#[0]")", R"("null")"};
        static const std::vector<std::string> others{"true", "false", "0", "-12", "1.5", "18446744073709551615",
            "-9223372036854775808", "0.1", "-0.0", "1.0e+30", "5.0e-324"};
        if(_emptyOneIn && one(_emptyOneIn)) return JsonModel::scalar(one(2) ? "null" : "\"\"");
        return JsonModel::scalar(any(one(8) ? others : texts));
    }
    JsonModel text() { return JsonModel::scalar(quoted("{{count}} " + std::to_string(below(1000)))); }

    JsonModel value(const unsigned depth, const std::string& code) {
        const unsigned kind = below(10);
        if(depth < 3 && kind < 3) return object(depth + 1, code);
        if(depth >= 3 || kind != 3) return scalar();
        JsonModel made{JsonModel::Kind::Array, {}, {}};
        for(unsigned count = below(4); count; --count) made.children.push_back({"", value(depth + 1, code)});
        return made;
    }

    JsonModel object(const unsigned depth, const std::string& code) {
        JsonModel made;
        for(unsigned count = below(depth ? 4 : 7); count; --count) addMember(made, any(oddNames()), value(depth, code));
        if(one(3)) addPlural(made, code);
        return made;
    }

    JsonModel flat(const std::string& code) {
        JsonModel made;
        for(unsigned count = below(7); count; --count) addMember(made, any(oddNames()), scalar());
        if(one(3)) addPlural(made, code);
        return made;
    }

    void addMember(JsonModel& object, const std::string& name, JsonModel&& value) {
        if(!object.member(name))
            object.children.insert(
                object.children.begin() + below(object.children.size() + 1), {name, std::move(value)});
    }

    static const std::vector<std::string>& formsOf(const std::string& code, const int kind) {
        static std::map<std::pair<std::string, int>, std::vector<std::string>> known;
        std::vector<std::string>& forms = known[{code, kind}];
        if(forms.empty())
            for(const char* const form: {"zero", "one", "two", "few", "many", "other"})
                if(PluralModel::of(code).mayHave(kind, form)) forms.emplace_back(form);
        return forms;
    }
    static std::string beginning(const std::string& base, const int kind) { return base + (kind ? "_ordinal_" : "_"); }

    /** Adds forms that prove a plural, where the default language can. */
    void addPlural(JsonModel& object, const std::string& code) {
        const std::string& base = any(bases());
        const int kind = one(3);
        const std::vector<std::string>& forms = formsOf(code, kind);
        const std::string& sure = any(forms);
        for(const std::string& form: forms)
            if(form == "other" || form == sure || one(2)) addMember(object, beginning(base, kind) + form, text());
    }

    /** Some of what a container of the default language's file has, in another one. */
    JsonModel translated(const JsonModel& container, const std::string& code, const std::string& defaultCode) {
        JsonModel made{container.kind, {}, {}};
        for(const JsonModel::Child& child: container.children) {
            JsonModel value = child.value;
            // What is missing there has no place here.
            bool isThere = value.leaveOut() && !one(5);
            if(isThere && !value.children.empty()) {
                value = translated(value, code, defaultCode);
                isThere = !value.children.empty();
            } else if(isThere) value = translatedLeaf(value);
            if(isThere) made.children.push_back({child.name, std::move(value)});
            else if(container.kind == JsonModel::Kind::Array) made.children.push_back({"", JsonModel::scalar("null")});
        }
        if(container.kind == JsonModel::Kind::Array) return made;
        if(one(2)) std::shuffle(made.children.begin(), made.children.end(), _random);
        for(const JsonModel::Child& child: container.children)
            if(child.name.ends_with("_other") && child.name != "file_other")
                addForms(made, container, child.name.substr(0, child.name.size() - 5), code, defaultCode);
        return made;
    }

    JsonModel translatedLeaf(const JsonModel& leaf) {
        if(leaf.isText() && !one(20)) return JsonModel::scalar(quoted("translated " + std::to_string(below(1000))));
        // What is no text may become one, and the other way round.
        if(one(4)) return {one(2) ? JsonModel::Kind::Object : JsonModel::Kind::Array, {}, {}};
        return scalar();
    }

    /** Adds forms that the language has, and the default one lacks. */
    void addForms(JsonModel& made, const JsonModel& ofDefault, const std::string& beginning, const std::string& code,
        const std::string& defaultCode) {
        const int kind = beginning.ends_with("_ordinal_");
        const std::vector<std::string>& proving = formsOf(defaultCode, kind);
        const auto has = [&](const std::string& form) {
            return std::any_of(ofDefault.children.begin(), ofDefault.children.end(),
                [&](const JsonModel::Child& child) { return child.name == beginning + form; });
        };
        // Japanese has "other" alone, so that it proves a plural by itself.
        const bool isSure = PluralModel::of(defaultCode).forms[kind] == std::string{"other"};
        if(std::count_if(proving.begin(), proving.end(), has) < (isSure ? 1 : 2)) return;
        for(const std::string& form: formsOf(code, kind))
            if(!has(form) && one(2)) addMember(made, beginning + form, text());
    }

    CatalogueFile fileOf(const std::string& code, const std::string& nameSpace, JsonModel&& content) {
        static const std::vector<JsonLayout> layouts{{}, {}, {}, {"\xef\xbb\xbf", "\r\n", "\t", " :\t", false},
            {"", "", "", ":", false}, {"", "\n", "    ", ": ", true}};
        const bool isShort = nameSpace == "translation" && one(3);
        return {code, nameSpace, code + (isShort ? "" : '/' + nameSpace) + ".json", std::move(content), any(layouts)};
    }

    /** Every value of a file but itself, and every object. */
    static void collect(JsonModel& value, std::vector<JsonModel*>& nodes, std::vector<JsonModel*>& objects) {
        if(value.kind == JsonModel::Kind::Object) objects.push_back(&value);
        for(JsonModel::Child& child: value.children) {
            nodes.push_back(&child.value);
            collect(child.value, nodes, objects);
        }
    }
    JsonModel& anyNode(JsonModel& file) {
        std::vector<JsonModel*> nodes, objects;
        collect(file, nodes, objects);
        if(!nodes.empty()) return *any(nodes);
        file.children.push_back({"a", scalar()});
        return file.children[0].value;
    }
    JsonModel& anyObject(JsonModel& file) {
        std::vector<JsonModel*> nodes, objects;
        collect(file, nodes, objects);
        return *any(objects);
    }

    /** Gives a text that lies in objects a second place, or another one: a member of the root with dots in its name. */
    void joinNames(JsonModel& file) {
        std::vector<JsonLeaf> leaves = leavesOf(file);
        std::erase_if(leaves, [](const JsonLeaf& leaf) {
            return leaf.place.size() == 1 ||
                std::any_of(leaf.place.begin(), leaf.place.end(),
                    [](const JsonStep& step) { return step.element >= 0 || step.name.starts_with('['); });
        });
        if(leaves.empty()) return;
        const JsonLeaf leaf = any(leaves);
        std::string name = leaf.place[0].name;
        for(std::size_t i = 1; i != leaf.place.size(); ++i) name += '.' + leaf.place[i].name;
        if(one(2)) put(file, leaf.place, JsonModel::scalar("null"));
        addMember(file, name, scalar());
    }

    /** The other way round. */
    void splitName(JsonModel& file) {
        std::vector<std::string> names;
        for(const JsonModel::Child& child: file.children)
            if(child.name.find('.') != std::string::npos) names.push_back(child.name);
        if(names.empty()) return;
        const std::string name = any(names);
        if(one(2)) std::erase_if(file.children, [&](const JsonModel::Child& child) { return child.name == name; });
        JsonPlace place;
        std::size_t begin = 0;
        for(std::size_t end; (end = name.find('.', begin)) != std::string::npos; begin = end + 1)
            place.push_back({name.substr(begin, end - begin), -1});
        place.push_back({name.substr(begin), -1});
        put(file, place, scalar());
    }

    std::mt19937_64 _random;
    unsigned _emptyOneIn = 0;
};

}
