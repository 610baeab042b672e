#pragma once

#include "CheckedProject.h"

namespace QuorvaneEngine {

/** Checks what a project says of its languages, and the types of its values, but for translations.
    @param findings     receives what is found */
QUORVANE_API void checkProject(const CheckedProject& project, LocalizationFindings& findings);

}
