#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>

#include "LanguageLookup.h"
#include "QuorvaneEditor/LocalizationTools.h"
#include "TestFolder.h"
#include "TestProject.h"
#include "support/CapturedOutput.h"

namespace QuorvaneEngine {

inline Containers::Array<UnsignedInt> languagesOf(const std::initializer_list<const char*> codes) {
    Containers::Array<UnsignedInt> languages;
    for(const char* const code: codes) Containers::arrayAppend(languages, UnsignedInt(findLanguage(code)));
    return languages;
}

inline void exportTo(TestProject& project, const std::initializer_list<const char*> codes, const std::string& path) {
    LocalizationTools::exportTerms(
        project.editor(), languagesOf(codes), FallbackLanguage, viewed(path), LocalizationFormat::I18Next);
}

inline void exportCompressedTo(
    TestProject& project, const std::initializer_list<const char*> codes, const std::string& path) {
    LocalizationTools::exportTermsCompressed(
        project.editor(), languagesOf(codes), FallbackLanguage, viewed(path), LocalizationFormat::I18Next);
}

/** The codes of the languages after an import into a list of @p codes , with blanks between. */
inline std::string importFrom(
    TestProject& project, const std::initializer_list<const char*> codes, const std::string& path) {
    Containers::Array<UnsignedInt> languages = languagesOf(codes);
    LocalizationTools::importTerms(
        project.editor(), languages, FallbackLanguage, viewed(path), LocalizationFormat::I18Next);
    std::string list;
    for(const UnsignedInt language: languages) list += (list.empty() ? "" : " ") + copied(AllLanguages[language].code);
    return list;
}

/** What every warning of an import begins with. */
inline const std::string ImportPrefix = "LocalizationTools::importTerms(): ";

/** What an import of one file says into a project of which English is the default language. */
inline std::string importFile(TestProject& project, const std::string& file, const std::string& json) {
    const TestFolder folder;
    folder.write(file, json);
    const Test::CapturedOutput output;
    importFrom(project, {"en"}, folder.path);
    return output.warning();
}

}
