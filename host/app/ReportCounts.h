#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "localization/LocalizationReport.h"

struct ImVec2;

namespace QuorvaneEngine {

struct OutcomeLook;

/** The table of what a report counts for each language; outcomes that no language has are left out. */
class QUORVANE_API ReportCounts {
public:
    /** Takes the numbers of a report: all languages together where there are several, each language, and what belongs to none. */
    void assign(const LocalizationReport& report);

    std::size_t size() const { return _rows.size(); }

    /** How wide the table would like to be, in pixels, without what it needs to be scrolled. */
    float width() const;

    /** How high it would like to be, in pixels. */
    float height() const;

    /** @param size     in pixels; the table scrolls where that is less than it would like */
    void draw(const ImVec2& size) const;

private:
    struct Row {
        Containers::StringView name;
        LocalizationReport::Counts counts;
    };

    void drawHeadings() const;

    Containers::Array<Row> _rows;
    Containers::Array<const OutcomeLook*> _columns;
};

}
