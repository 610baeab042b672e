#include "app/OutcomeLook.h"

#include <Corrade/Containers/ArrayView.h>

#include <icons_font_awesome_6.h>

namespace QuorvaneEngine {

namespace {

using Counts = LocalizationReport::Counts;
using Theme::Color;

constexpr OutcomeLook Looks[]{
    {TermOutcome::Added, Color::Good, ICON_FA_CIRCLE_PLUS, "Added", &Counts::added},
    {TermOutcome::Changed, Color::Link, ICON_FA_PEN, "Changed", &Counts::changed},
    {TermOutcome::Unchanged, Color::PaleLetters, ICON_FA_CHECK, "Unchanged", &Counts::unchanged},
    {TermOutcome::Empty, Color::PaleLetters, ICON_FA_CIRCLE, "No text", &Counts::empty},
    {TermOutcome::Skipped, Color::Caution, ICON_FA_TRIANGLE_EXCLAMATION, "Skipped", &Counts::skipped},
    {TermOutcome::Notice, Color::Link, ICON_FA_CIRCLE_INFO, "Notices", &Counts::notices},
};

}

Containers::ArrayView<const OutcomeLook> outcomeLooks() { return Looks; }

const OutcomeLook& outcomeLook(const TermOutcome outcome) { return Looks[std::size_t(outcome)]; }

}
