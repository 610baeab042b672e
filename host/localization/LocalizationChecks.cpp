#include "LocalizationChecks.h"

#include <utility>
#include <vector>

#include <rapidjson/document.h>

#include "CheckedProject.h"
#include "DocumentLookup.h"
#include "Parallel.h"
#include "ProjectChecks.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermChecks.h"
#include "TranslationChecks.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** By @ref CheckKind . */
constexpr LocalizationCheck Checks[]{
    {"placeholder-differs"_s, FindingSeverity::Error, "a translation has other placeholders than its source"_s},
    {"format-differs"_s, FindingSeverity::Warning,
        "a translation formats or escapes the value of a placeholder in another way than its source"_s},
    {"nesting-differs"_s, FindingSeverity::Error, "a translation has other $t() than its source"_s},
    {"nesting-unknown"_s, FindingSeverity::Error, "a $t() leads to no exported term"_s},
    {"plural-missing"_s, FindingSeverity::Warning, "a plural lacks forms that its language needs"_s},
    {"plural-extra"_s, FindingSeverity::Hint, "a plural has a form that its language does not use"_s},
    {"leaf-and-branch"_s, FindingSeverity::Error, "a key has no place in a file beside another key"_s},
    {"reserved-key"_s, FindingSeverity::Warning, "a key has a name that programs lose"_s},
    {"same-as-source"_s, FindingSeverity::Hint, "a translation is the same as its source"_s},
    {"outer-blanks"_s, FindingSeverity::Warning, "a translation begins or ends with other blanks than its source"_s},
    {"only-blanks"_s, FindingSeverity::Error, "a translation has nothing but blanks, so it shows nothing"_s},
    {"stale"_s, FindingSeverity::Hint,
        "a translation is not marked as one of today's source text, so it counts as stale"_s},
    {"source-gone"_s, FindingSeverity::Error, "a term has no source text"_s},
    {"same-source"_s, FindingSeverity::Warning, "two terms have one source text"_s},
    {"translatable-missing"_s, FindingSeverity::Hint, "a term does not say whether it is translatable, so it is not"_s},
    {"term-unknown"_s, FindingSeverity::Warning, "a translation has a key that no term has"_s},
    {"value-unknown"_s, FindingSeverity::Warning,
        "a kept value has a key under which the default language has nothing, so it is in no file"_s},
    {"state-unknown"_s, FindingSeverity::Warning,
        "a translation has a state that does not exist, so it counts as done"_s},
    {"wrong-type"_s, FindingSeverity::Warning, "a value has another type than it must have, so it counts as missing"_s},
    {"language-unknown"_s, FindingSeverity::Error, "`/languages` has a code that no language has, so it is left out"_s},
    {"language-unlisted"_s, FindingSeverity::Warning,
        "there are translations into a language that `/languages` does not have"_s},
    {"default-twice"_s, FindingSeverity::Warning, "more than one language is marked as default"_s},
    {"silenced-without-reason"_s, FindingSeverity::Warning, "a silencing gives no reason, so it silences nothing"_s},
    {"unknown-check"_s, FindingSeverity::Warning, "a silencing names a check that does not exist"_s},
};
static_assert(sizeof(Checks) / sizeof(*Checks) == std::size_t(CheckKind::UnknownCheck) + 1);

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

std::vector<Containers::StringView> codesOf(
    const rapidjson::Value& root, const LocalizationCheckOptions& options, const Containers::StringView defaultCode) {
    std::vector<Containers::StringView> codes;
    const auto add = [&](const Containers::StringView code) {
        if(code != defaultCode) codes.push_back(code);
    };
    for(const UnsignedInt language: options.languages)
        if(language < LanguageCount) add(AllLanguages[language].code);
    const rapidjson::Value* const translations = memberOf(memberOf(&root, "localization"_s), "translations"_s);
    if(options.languages.isEmpty() && translations && translations->IsObject())
        for(const auto& language: translations->GetObject()) add(viewOf(language.name));
    return codes;
}

}

Containers::ArrayView<const LocalizationCheck> localizationChecks() { return Checks; }

LocalizationFindings checkLocalization(const rapidjson::Value& root, const LocalizationCheckOptions& options) {
    const Containers::StringView defaultCode =
        options.defaultLanguage < LanguageCount ? AllLanguages[options.defaultLanguage].code : ""_s;
    const std::vector<Containers::StringView> codes = codesOf(root, options, defaultCode);
    const CheckedProject project{root, defaultCode};

    std::vector<LocalizationFindings> findings(codes.size() + 1);
    forEachInParallel(
        findings.size(),
        [&](const std::size_t i) {
            if(i == 0) {
                checkProject(project, findings[0]);
                checkTerms(project, findings[0]);
            } else checkTranslations(project, codes[i - 1], findings[i]);
        },
        options.progress);
    for(std::size_t i = 1; i != findings.size(); ++i) findings[0].append(std::move(findings[i]));
    return std::move(findings[0]);
}

}
