#include "Gathering.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

#include "JsonPath.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "TermSource.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

std::string copyOf(const Containers::StringView text) { return {text.data(), text.size()}; }

bool holdsText(const Containers::StringView name) {
    for(const Containers::StringView known: {"text"_s, "title"_s, "label"_s, "description"_s, "hint"_s})
        if(name == known) return true;
    return name.hasSuffix("Text"_s);
}

/** `[a-z0-9_]` of any name: a capital after a small letter begins a word, all other characters separate. */
void appendWords(std::string& key, const Containers::StringView name) {
    bool isWordOpen = false;
    bool isLowerCase = false;
    for(const char c: name) {
        const bool isUpper = c >= 'A' && c <= 'Z';
        const bool isLower = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if(!isUpper && !isLower) {
            isWordOpen = false;
            continue;
        }
        if((!isWordOpen || (isUpper && isLowerCase)) && !key.empty()) key += '_';
        key += isUpper ? char(c - 'A' + 'a') : c;
        isWordOpen = true;
        isLowerCase = isLower;
    }
}

class Gatherer {
public:
    Gatherer(QuorvaneEditor& editor, LocalizationReport& report): _edit{editor}, _report{report} {
        const rapidjson::Value* const terms = editor.project().root()["localization"_s]["terms"_s].value();
        if(!terms || !terms->IsObject()) return;
        for(const auto& term: terms->GetObject()) {
            // A key that is the beginning of another one would have no place beside it in a file.
            const std::string key = copyOf(viewOf(term.name));
            _keys.insert(key.substr(0, key.find('.')));
            _keys.insert(key);
            if(!term.value.IsObject()) continue;
            const auto source = term.value.FindMember("sourceText");
            if(source != term.value.MemberEnd() && source->value.IsString())
                _sources.insert(copyOf(TermSource::path(viewOf(source->value))));
        }
    }

    /** @return false where a term cannot be kept in this project */
    bool gather(const rapidjson::Value& objects) {
        for(const auto& object: objects.GetObject()) {
            const Level level{
                copyOf(jsonPath({"objects"_s, viewOf(object.name)})), words({}, viewOf(object.name)), &object.value};
            if(!gather(level)) return false;
        }
        return true;
    }

    std::size_t count() const { return _count; }
    Int push() { return _edit.push(); }

private:
    struct Level {
        std::string path;
        std::string key;
        const rapidjson::Value* value;
    };

    static std::string words(std::string key, const Containers::StringView name) {
        appendWords(key, name);
        return key;
    }

    // Levels wait on a heap of their own: nobody limits how deep the document in memory is.
    bool gather(const Level& object) {
        std::vector<Level> waiting{object};
        while(!waiting.empty()) {
            const Level level = std::move(waiting.back());
            waiting.pop_back();
            const std::size_t firstBelow = waiting.size();
            if(level.value->IsObject()) {
                for(const auto& member: level.value->GetObject()) {
                    const Containers::StringView name = viewOf(member.name);
                    const bool isText = member.value.IsString() && holdsText(name) && member.value.GetStringLength();
                    if(!isText && !isContainer(member.value)) continue;
                    Level below{level.path + copyOf(jsonPath({name})), words(level.key, name), &member.value};
                    if(!isText) waiting.push_back(std::move(below));
                    else if(!makeTerm(below)) return false;
                }
            } else if(level.value->IsArray()) {
                for(rapidjson::SizeType i = 0; i != level.value->Size(); ++i)
                    if(isContainer((*level.value)[i])) {
                        const std::string index = std::to_string(i);
                        waiting.push_back({level.path + '/' + index, level.key + '_' + index, &(*level.value)[i]});
                    }
            }
            // The last one is taken first, and document order is wanted.
            std::reverse(waiting.begin() + std::ptrdiff_t(firstBelow), waiting.end());
        }
        return true;
    }

    static bool isContainer(const rapidjson::Value& value) { return value.IsObject() || value.IsArray(); }

    bool makeTerm(const Level& text) {
        if(!_sources.insert(text.path).second) return true;
        std::string key = text.key;
        for(std::size_t i = 2; !_keys.insert(key).second; ++i) key = text.key + '_' + std::to_string(i);

        rapidjson::Value term{rapidjson::kObjectType};
        term.AddMember("sourceText", _edit.text({text.path.data(), text.path.size()}), _edit.allocator());
        term.AddMember("translatable", rapidjson::Value{true}, _edit.allocator());
        ++_count;
        _report.add(LocalizationReport::NoLanguage, TermOutcome::Added, {key.data(), key.size()});
        return _edit.set({"localization"_s, "terms"_s, {key.data(), key.size()}}, std::move(term));
    }

    ProjectEdit _edit;
    LocalizationReport& _report;
    std::unordered_set<std::string> _keys;
    std::unordered_set<std::string> _sources;
    std::size_t _count = 0;
};

}

std::size_t gatherTerms(QuorvaneEditor& editor, LocalizationRun& run, const bool isDryRun) {
    const rapidjson::Value* const objects = editor.project().root()["objects"_s].value();
    if(!objects || !objects->IsObject()) return 0;
    Gatherer gatherer{editor, run.report};
    if(!gatherer.gather(*objects)) {
        run.report = LocalizationReport{};
        Containers::arrayAppend(run.refusals, "project.json: /localization/terms: is no object"_s);
        return 0;
    }
    if(!isDryRun) run.group = gatherer.push();
    return gatherer.count();
}

}
