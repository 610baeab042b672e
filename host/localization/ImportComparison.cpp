#include "ImportComparison.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "ImportOrder.h"
#include "ImportSources.h"
#include "ImportTerms.h"
#include "ImportTranslations.h"
#include "JsonPath.h"
#include "LanguageLookup.h"
#include "LanguageMapping.h"
#include "LocalizationReport.h"
#include "Parallel.h"
#include "Progress.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/AllLanguages.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** What a code begins with, the language without script and region. */
Containers::StringView subtag(const Containers::StringView code) {
    return code.prefix(code.findOr('-', code.end()).begin());
}

/** Files of one language, which lie side by side. */
struct LanguageFiles {
    UnsignedInt language;
    Containers::ArrayView<const ImportedFile> files;
};

std::vector<LanguageFiles> byLanguage(const Containers::ArrayView<const ImportedFile> files) {
    std::vector<LanguageFiles> languages;
    for(std::size_t begin = 0, end; begin != files.size(); begin = end) {
        for(end = begin; end != files.size() && files[end].language == files[begin].language;) ++end;
        languages.push_back({files[begin].language, files.slice(begin, end)});
    }
    return languages;
}

}

struct ImportComparison::Data {
    const rapidjson::Value& root;
    UnsignedInt defaultLanguage;
    Containers::ArrayView<const ImportedFile> files;
    bool isConfirming;
    ImportTerms terms;
    ImportSources sources;
    std::vector<LanguageFiles> others;
    std::vector<std::unique_ptr<ImportTranslations>> translations;
    ImportOrder order;

    Data(const rapidjson::Value& root, const UnsignedInt defaultLanguage,
        const Containers::ArrayView<const ImportedFile> files, const bool isConfirming)
        : root{root},
          defaultLanguage{defaultLanguage},
          files{files},
          isConfirming{isConfirming},
          terms{root, defaultLanguage},
          sources{root, terms, defaultLanguage},
          order{root, terms, defaultLanguage} {}

    /** Containers that something may be put into are objects, where they are there. */
    bool check(Containers::Array<Containers::String>& refusals) const {
        check({"languages"_s}, refusals);
        if(!check({"localization"_s}, refusals)) return false;
        for(const Containers::StringView name: {"terms"_s, "strings"_s, "namespaces"_s})
            check({"localization"_s, name}, refusals);
        for(const ImportedFile& file: files)
            if(check({"localization"_s, "namespaces"_s, file.nameSpace}, refusals))
                check({"localization"_s, "namespaces"_s, file.nameSpace, "order"_s}, refusals);
        for(const Containers::StringView name: {"translations"_s, "values"_s})
            if(check({"localization"_s, name}, refusals))
                for(const LanguageFiles& one: byLanguage(files))
                    check({"localization"_s, name, AllLanguages[one.language].code}, refusals);
        return refusals.isEmpty();
    }

    bool check(const std::initializer_list<Containers::StringView> names,
        Containers::Array<Containers::String>& refusals) const {
        const rapidjson::Value* value = &root;
        for(const Containers::StringView name: names) value = memberOf(value, name);
        if(!value || value->IsObject()) return true;
        Containers::arrayAppend(refusals, Corrade::Utility::format("project.json: {}: is no object", jsonPath(names)));
        return false;
    }

    void compareSources(LocalizationReport& report) {
        for(const LanguageFiles& one: byLanguage(files)) {
            if(one.language != defaultLanguage) {
                others.push_back(one);
                continue;
            }
            report.addLanguage(one.language);
            for(const ImportedFile& file: one.files) {
                sources.compare(file, report);
                addNotices(file, report);
            }
        }
        for(const ImportedFile& file: files) terms.addNamespace(file.nameSpace);
        sources.finish();
    }

    /** Languages without files that keep something whose key has become a term, or is no value of the default language any more. */
    std::vector<LanguageFiles> keptLanguages() const {
        std::vector<LanguageFiles> languages;
        const rapidjson::Value* const values = memberOf(memberOf(&root, "localization"_s), "values"_s);
        if(!values || !terms.hasNewPlaces()) return languages;
        const auto isConcerned = [&](const Containers::StringView key) {
            Int last = -1;
            return terms.isDropped(key) || terms.terms().findKey(key, last) >= Int(terms.knownCount());
        };
        for(const auto& member: values->GetObject()) {
            const Int language = findLanguage({member.name.GetString(), member.name.GetStringLength()});
            const bool hasFiles = std::any_of(
                others.begin(), others.end(), [&](const LanguageFiles& one) { return Int(one.language) == language; });
            if(language == -1 || UnsignedInt(language) == defaultLanguage || hasFiles || !member.value.IsObject())
                continue;
            const auto kept = member.value.GetObject();
            if(std::any_of(kept.MemberBegin(), kept.MemberEnd(), [&](const auto& value) {
                   return !value.value.IsNull() && isConcerned({value.name.GetString(), value.name.GetStringLength()});
               }))
                languages.push_back({UnsignedInt(language), {}});
        }
        return languages;
    }

    bool compareTranslations(LocalizationReport& report, Progress* const progress) {
        std::vector<LanguageFiles> all = keptLanguages();
        all.insert(all.begin(), others.begin(), others.end());
        translations.resize(all.size());
        std::vector<LocalizationReport::KeptTerm> kept;
        for(const ProjectTerm& term: terms.terms().terms()) kept.push_back(report.keep(term.key));
        std::vector<LocalizationReport> reports(all.size());
        const bool isDone = forEachInParallel(
            all.size(),
            [&](const std::size_t i) {
                translations[i] = std::make_unique<ImportTranslations>(root, terms,
                    Containers::ArrayView<const LocalizationReport::KeptTerm>{kept.data(), kept.size()},
                    all[i].language, isConfirming);
                reports[i].keepTexts(report.keepsTexts());
                if(i < others.size()) reports[i].addLanguage(all[i].language);
                std::size_t count = 0;
                for(const ImportedFile& file: all[i].files) count += file.catalogue.entries().size();
                reports[i].reserve(count);
                for(const ImportedFile& file: all[i].files) {
                    translations[i]->compare(file, reports[i]);
                    addNotices(file, reports[i]);
                }
                translations[i]->finish(reports[i]);
            },
            progress);
        std::size_t lines = report.lines().size();
        for(const LocalizationReport& one: reports) lines += one.lines().size();
        report.reserve(lines);
        for(LocalizationReport& one: reports) report.append(std::move(one));
        return isDone;
    }

    void addNotices(const ImportedFile& file, LocalizationReport& report) const {
        const Int nameSpace = terms.terms().findNamespace(file.nameSpace);
        for(const CatalogueNotice& notice: file.catalogue.notices()) {
            const Containers::String key =
                notice.key.isEmpty() ? notice.key : terms.key(UnsignedInt(nameSpace), notice.key);
            report.add(file.language, TermOutcome::Notice, key, notice.reason, file.path);
        }
    }

    /** Texts may go beside those of the language that they are meant for. */
    void noticeNewLanguages(const Containers::ArrayView<const LanguageMapping> map, LocalizationReport& report) const {
        const rapidjson::Value* const known = memberOf(&root, "languages"_s);
        if(!known) return;
        for(const auto& [language, isDefault]: newLanguages()) {
            // What was asked for by name is meant.
            if(std::any_of(map.begin(), map.end(),
                   [asked = language](const LanguageMapping& one) { return one.language == asked; }))
                continue;
            const Containers::StringView code = AllLanguages[language].code;
            for(const auto& member: known->GetObject()) {
                const Containers::StringView other{member.name.GetString(), member.name.GetStringLength()};
                const Int near = findLanguage(other);
                if(near == -1 || subtag(other) != subtag(code)) continue;
                report.add(language, TermOutcome::Notice, {},
                    Corrade::Utility::format(
                        "is new beside the project's {} ({}): if that is meant, map it with --map {}={}",
                        AllLanguages[near].name, other, code, other));
                break;
            }
        }
    }

    /** Languages that the project does not have, with a mark for the default one. */
    std::vector<std::pair<UnsignedInt, bool>> newLanguages() const {
        std::vector<std::pair<UnsignedInt, bool>> languages;
        const rapidjson::Value* const known = memberOf(&root, "languages"_s);
        const bool isFirst = !known || known->ObjectEmpty();
        if(isFirst) languages.emplace_back(defaultLanguage, true);
        const auto add = [&](const UnsignedInt language) {
            const bool isKnown =
                isFirst ? language == defaultLanguage : memberOf(known, AllLanguages[language].code) != nullptr;
            if(!isKnown) languages.emplace_back(language, false);
        };
        for(const LanguageFiles& one: byLanguage(files))
            if(one.language == defaultLanguage) add(one.language);
        for(const LanguageFiles& one: others) add(one.language);
        return languages;
    }
};

ImportComparison::ImportComparison(const rapidjson::Value& root, const UnsignedInt defaultLanguage,
    const Containers::ArrayView<const ImportedFile> files, const bool isConfirming)
    : _data{Corrade::InPlaceInit, root, defaultLanguage, files, isConfirming} {}

ImportComparison::~ImportComparison() = default;

bool ImportComparison::run(
    LocalizationReport& report, Containers::Array<Containers::String>& refusals, Progress* const progress) {
    if(!_data->check(refusals)) return false;
    _data->compareSources(report);
    if(!_data->compareTranslations(report, progress)) return false;
    _data->order.compare(_data->files, _data->sources, {_data->translations.data(), _data->translations.size()});
    return true;
}

void ImportComparison::noticeNewLanguages(
    const Containers::ArrayView<const LanguageMapping> map, LocalizationReport& report) const {
    _data->noticeNewLanguages(map, report);
}

bool ImportComparison::isEmpty() const {
    return _data->sources.isEmpty() && _data->order.isEmpty() && _data->newLanguages().empty() &&
        std::all_of(_data->translations.begin(), _data->translations.end(),
            [](const auto& translations) { return translations->isEmpty(); });
}

TextDigest ImportComparison::replaced() const {
    TextDigest all = _data->sources.replaced();
    for(const auto& translations: _data->translations) all.add(translations->replaced());
    return all;
}

void ImportComparison::collect(ProjectEdit& edit, const std::function<void(UnsignedInt language)>& release) {
    for(const auto& [language, isDefault]: _data->newLanguages()) {
        rapidjson::Value entry{rapidjson::kObjectType};
        if(isDefault) entry.AddMember("isDefault", rapidjson::Value{true}, edit.allocator());
        edit.set({"languages"_s, AllLanguages[language].code}, std::move(entry));
    }
    _data->sources.collect(edit);
    for(const auto& translations: _data->translations)
        translations->collect(
            edit, _data->terms, [release, language = translations->language()] { release(language); });
    _data->order.collect(edit);
}

}
