#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Something that the Localization view takes for granted, and the project does not give. */
struct LocalizationCondition {
    /** For the user: place and reason, a whole sentence. */
    Containers::String reason;
};

/** What keeps the Localization view closed, nothing where all is well: `/languages` is an object of objects and, unless it is empty,
    marks a known language as default; `/localization` is an object; `/localization/terms` is an object of objects. What is missing
    altogether is no failure.

    Walks the languages and looks at the type of every term: to be asked again whenever the project's revision changes, and
    only then. */
QUORVANE_API Containers::Array<LocalizationCondition> checkLocalizationConditions(ProjectFile& project);

/** Makes all conditions hold, as one undo step. What has the wrong type is replaced by an empty object; the first known language
    becomes the default one, or English is added. All else is kept. Undoing it brings the failures back. */
QUORVANE_API void repairLocalizationConditions(QuorvaneEditor& editor);

}
