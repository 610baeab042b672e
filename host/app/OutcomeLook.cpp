#include "app/OutcomeLook.h"

#include <Corrade/Containers/ArrayView.h>

#include <icons_font_awesome_6.h>

namespace QuorvaneEngine {

namespace {

using Counts = LocalizationReport::Counts;
using Theme::Color;

constexpr OutcomeLook Looks[]{
    {TermOutcome::Added, ICON_FA_CIRCLE_PLUS, Color::Good, "Added", &Counts::added},
    {TermOutcome::Changed, ICON_FA_PEN, Color::Link, "Changed", &Counts::changed},
    {TermOutcome::Unchanged, ICON_FA_CHECK, Color::PaleLetters, "Unchanged", &Counts::unchanged},
    {TermOutcome::Empty, ICON_FA_CIRCLE, Color::PaleLetters, "No text", &Counts::empty},
    {TermOutcome::Skipped, ICON_FA_TRIANGLE_EXCLAMATION, Color::Caution, "Skipped", &Counts::skipped},
    {TermOutcome::Notice, ICON_FA_CIRCLE_INFO, Color::Link, "Notices", &Counts::notices},
};

}

Containers::ArrayView<const OutcomeLook> outcomeLooks() { return Looks; }

const OutcomeLook& outcomeLook(const TermOutcome outcome) { return Looks[std::size_t(outcome)]; }

}
