#pragma once

#include <initializer_list>
#include <string>

#include <rapidjson/document.h>

#include "Fingerprint.h"
#include "LanguageLookup.h"
#include "LocalizationChecks.h"
#include "TermSource.h"
#include "TestProject.h"

namespace QuorvaneEngine {

/** A finding on one line: check, file, path, message, and the reason where it is silenced. */
inline std::string lineOf(const LocalizationFinding& finding) {
    std::string line = copied(finding.check) + ": " + copied(finding.file) + ": " + copied(finding.path) + ": " +
        copied(finding.message);
    if(!finding.silenced.isEmpty()) line += " [" + copied(finding.silenced) + ']';
    return line;
}

inline LocalizationFindings findingsOf(const std::string& json, const char* const defaultCode = "en") {
    TestProject project{json};
    LocalizationCheckOptions options;
    options.defaultLanguage = UnsignedInt(findLanguage(defaultCode));
    return checkLocalization(project.project().document(), options);
}

/** An entry of a language: a translation of a source text, both without what JSON escapes.
    @param more     further members, with a comma in front */
inline std::string translation(const char* const text, const char* const source, const std::string& more = "") {
    return R"({"text": ")" + std::string{text} + R"(", "source": ")" + copied(fingerprint(source)) + '"' + more + '}';
}

/** What all checks find in a project, a line for each finding. */
inline std::string found(const std::string& json, const char* const defaultCode = "en") {
    const LocalizationFindings findings = findingsOf(json, defaultCode);
    std::string lines;
    for(const LocalizationFinding& finding: findings.findings()) lines += lineOf(finding) + '\n';
    return lines;
}

/** A project with terms of the given keys and texts, and translations of today's texts. A form that no term has is one of the term of
    the form `other`.
    @param terms            key, text of the source
    @param translations     key, text */
inline std::string translated(const std::initializer_list<std::pair<std::string, std::string>> terms,
    const std::initializer_list<std::pair<std::string, std::string>> translations, const std::string& code = "de",
    const std::string& more = "") {
    const auto quoted = [](const std::string& text) {
        rapidjson::Value value{text.data(), rapidjson::SizeType(text.size())};
        return TestProject::printed(value);
    };
    std::string termsText, strings, texts;
    const auto append = [](std::string& to, const std::string& what) { to += (to.empty() ? "" : ",") + what; };
    for(const auto& [key, text]: terms) {
        append(termsText,
            quoted(key) + R"(: {"sourceText": )" + quoted(copied(TermSource::stringsPath(viewed(key)))) +
                R"(, "translatable": true})");
        append(strings, quoted(key) + ": " + quoted(text));
    }
    const auto sourceOf = [&](const std::string& wanted) {
        for(const auto& [key, text]: terms)
            if(key == wanted) return copied(fingerprint(viewed(text)));
        return std::string{};
    };
    for(const auto& [key, text]: translations) {
        std::string source = sourceOf(key);
        if(source.empty()) source = sourceOf(key.substr(0, key.rfind('_')) + "_other");
        append(texts, quoted(key) + R"(: {"text": )" + quoted(text) + R"(, "source": )" + quoted(source) + "}");
    }
    return R"({"localization": {"terms": {)" + termsText + R"(}, "strings": {)" + strings + R"(}, "translations": {")" +
        code + R"(": {)" + texts + "}}" + more + "}}";
}

}
