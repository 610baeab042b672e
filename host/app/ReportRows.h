#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "localization/LocalizationReport.h"

namespace QuorvaneEngine {

/** The lines of a report in the order and the selection in which they are shown, as indices: a million lines are sorted and
    searched when that is asked for, and cost nothing while they are looked at. */
class QUORVANE_API ReportRows {
public:
    /** What lines are sorted by, in the order of the table's columns. */
    enum class Column : std::uint8_t { Language, Outcome, Term, Reason, File };

    /** A set of outcomes, as bits by @ref TermOutcome . */
    using Outcomes = UnsignedInt;

    static constexpr Outcomes bit(TermOutcome outcome) { return Outcomes(1) << unsigned(outcome); }
    static constexpr Outcomes AllOutcomes = ~Outcomes{};

    /** Takes the lines of a report, all of them, in the order of the report.
        @param lines    not copied */
    void assign(Containers::ArrayView<const LocalizationReport::Line> lines);

    /** Sorts by one column; lines that are alike there stay in the order of the report. Languages are ordered by name, outcomes
        as the enumeration has them, texts by their bytes. */
    void sort(Column column, bool descending);

    /** Puts the lines back into the order of the report. */
    void unsort();

    /** Shows only lines with one of the outcomes whose term, reason, file, or language by name or code contains a text without
        regard to case.
        @param search   empty for all lines */
    void filter(Outcomes outcomes, Containers::StringView search);

    /** How many lines are shown. */
    std::size_t size() const { return _shown.size(); }

    /** Index of a shown line in the report. */
    UnsignedInt index(std::size_t row) const { return _shown[row]; }

    const LocalizationReport::Line& operator[](std::size_t row) const { return _lines[_shown[row]]; }

private:
    Containers::ArrayView<const LocalizationReport::Line> _lines;
    std::vector<UnsignedInt> _order;
    std::vector<UnsignedInt> _shown;
    Outcomes _outcomes = AllOutcomes;
    Containers::String _search;

    void select();
};

}
