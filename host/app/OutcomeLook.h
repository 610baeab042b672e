#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/Theme.h"
#include "localization/LocalizationReport.h"

namespace QuorvaneEngine {

/** How an outcome is shown wherever a report is. */
struct OutcomeLook {
    TermOutcome outcome;
    Theme::Color tone;

    /** As the icon font's text. */
    const char* icon;

    /** What heads its numbers. */
    const char* heading;

    UnsignedInt LocalizationReport::Counts::*count;

    /** Of the present theme. */
    const ImVec4& color() const { return Theme::color(tone); }
};

/** All outcomes, in the order of the enumeration. */
QUORVANE_API Containers::ArrayView<const OutcomeLook> outcomeLooks();

QUORVANE_API const OutcomeLook& outcomeLook(TermOutcome outcome);

}
