#pragma once

#include "CheckedProject.h"

namespace QuorvaneEngine {

/** Checks the texts of one language, which is not the default one. May run beside the checks of other languages.
    @param findings     receives what is found */
QUORVANE_API void checkTranslations(
    const CheckedProject& project, Containers::StringView code, LocalizationFindings& findings);

}
