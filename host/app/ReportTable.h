#pragma once

#include <memory>

#include "QuorvaneEditor/Host.h"
#include "app/ReportRows.h"

struct ImVec2;

namespace QuorvaneEngine {

/** The table of the lines of a report, without the columns of languages and files where no line has any. It begins with what needs
    attention, notices and skipped texts. Costs what its visible rows cost. */
class QUORVANE_API ReportTable {
public:
    /** Shows the lines of a run, all of them, sorted as the lines before were.
        @param run  shared while it is shown */
    void assign(const std::shared_ptr<const LocalizationRun>& run);

    void filter(ReportRows::Outcomes outcomes, Containers::StringView search) { _rows.filter(outcomes, search); }

    const ReportRows& rows() const { return _rows; }

    /** @param size     in pixels */
    void draw(const ImVec2& size);

    /** Puts the selected line into the clipboard, if there is one. */
    void copySelected() const;

    /** Puts the lines that are shown into the clipboard, with the reasons why nothing was done. */
    void copyShown() const;

private:
    static constexpr UnsignedInt Nothing = ~UnsignedInt{};

    void drawRow(std::size_t row);
    void drawContextMenu();

    std::shared_ptr<const LocalizationRun> _run;
    ReportRows _rows;
    bool _needsSort = false;
    bool _hasLanguages = false;
    bool _hasFiles = false;

    /** Index in the report. */
    UnsignedInt _selected = Nothing;
};

}
