#pragma once

#include <Corrade/Containers/ArrayView.h>

#include "LocalizationFindings.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct Progress;

/** One of the checks. */
struct LocalizationCheck {
    /** Stable: projects name it to silence it. */
    Containers::StringView name;

    /** Of its findings; single ones may matter less. */
    FindingSeverity severity;

    /** What it finds, for a list of all checks. */
    Containers::StringView description;
};

/** All checks, in the order in which their findings of one term come. */
QUORVANE_API Containers::ArrayView<const LocalizationCheck> localizationChecks();

struct LocalizationCheckOptions {
    /** Index into @ref AllLanguages : of which the terms' own texts are. */
    UnsignedInt defaultLanguage;

    /** Indices into @ref AllLanguages : whose translations are checked; none for all that the project has. */
    Containers::ArrayView<const UnsignedInt> languages = {};

    /** May be null. */
    Progress* progress = nullptr;
};

/** Checks the languages and terms of a project and its translations. Only reads the document, whatever it holds: values of another
    type than documented count as missing, which is a finding itself. May run on any thread while nobody changes the document, and uses all cores. Takes time in proportion
    to the document.

    Translations are checked of those terms alone that are translatable and have a source text; empty ones are missing, which
    is no finding.

    A project silences a check by a text in `/localization/checks/<check>`, and for one term in
    `/localization/terms/<term>/silenced/<check>`: the reason. Its findings then are still there, with the reason, but do not count. The
    forms of a plural that only other languages have are silenced with the term of the form `other`. A silencing
    without a reason silences nothing.

    @param root     of the project document
    @return what was found; part of it where the progress was cancelled */
QUORVANE_API LocalizationFindings checkLocalization(
    const rapidjson::Value& root, const LocalizationCheckOptions& options);

}
