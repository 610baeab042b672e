#pragma once

#include "CheckedProject.h"

namespace QuorvaneEngine {

/** Checks the terms themselves: their keys, their sources, and what the project silences.
    @param findings     receives what is found */
QUORVANE_API void checkTerms(const CheckedProject& project, LocalizationFindings& findings);

}
