#pragma once

#include <cstdint>
#include <memory>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/ReportCounts.h"
#include "app/ReportTable.h"

namespace QuorvaneEngine {

/** The window with the report of a run of the localization tools: what was done, with counts for each language and a line for
    every text that something became of, to be sorted, searched and copied; or the reasons why nothing was. */
class QUORVANE_API ReportPanel {
public:
    enum class Mode : std::uint8_t {
        /** The run is over. */
        Done,
        /** The report is that of a preview. */
        Preview,
        /** It is that of a preview that came to something else when it was to be applied. */
        Outdated
    };

    enum class Action : std::uint8_t { None, Undo, Apply, Discard };

    ReportPanel();

    /** Draws the window. Costs what its visible lines cost.
        @param editor   whose run it is
        @param run      null for none; shared while it is shown
        @param open     cleared by the close button
        @return what the user asks for */
    Action draw(const QuorvaneEditor& editor, const std::shared_ptr<const LocalizationRun>& run, Mode mode, bool* open);

private:
    struct Filter {
        TermOutcome outcome;
        /** With the number of lines. */
        Containers::String label;
    };

    void show(const std::shared_ptr<const LocalizationRun>& run, Mode mode);
    void findObstacle(const QuorvaneEditor& editor);
    Action drawHeadline() const;
    Action drawPreviewButtons() const;
    Action drawUndoButton() const;
    void drawRefusals() const;
    Action drawTools();
    void drawTables();

    std::shared_ptr<const LocalizationRun> _run;
    Mode _mode = Mode::Done;
    Containers::String _headline;
    Containers::String _time;
    ReportCounts _counts;
    ReportTable _table;
    /** Of the outcomes that have lines. */
    Containers::Array<Filter> _filters;
    ReportRows::Outcomes _outcomes = ReportRows::AllOutcomes;
    /** NUL-terminated. */
    Containers::Array<char> _search;

    /** Why the run cannot be undone or applied, and of when that is. */
    Containers::StringView _obstacle;
    bool _isUndone = false;
    Int _obstacleRevision = -1;
    bool _obstacleInGroup = false;
};

}
