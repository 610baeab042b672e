#pragma once

#include <string>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "localization/LocalizationReport.h"

namespace QuorvaneEngine {

class ReportRows;

/** The report of a run in words. */
namespace ReportText {

/** "Added" and so on. */
QUORVANE_API Containers::StringView outcomeName(TermOutcome outcome);

/** The English name of a language of a line, empty for none. */
QUORVANE_API Containers::StringView languageName(UnsignedInt language);

/** How many texts of a report, whatever their language, have an outcome. */
QUORVANE_API UnsignedInt count(const LocalizationReport& report, TermOutcome outcome);

/** What was done and with what, as a sentence without full stop.
    @param isPreview    whether it is not done yet */
QUORVANE_API Containers::String headline(const LocalizationRun& run, bool isPreview);

/** What came of it: "3 added, 1 skipped", "nothing to do", or the first reason why nothing was done. */
QUORVANE_API Containers::String summary(const LocalizationRun& run);

/** When the run was, in local time, as "2024-02-29 17:05:09". */
QUORVANE_API Containers::String time(const LocalizationRun& run);

/** Whether a run changed the project, and was undone since. */
QUORVANE_API bool isUndone(const QuorvaneEditor& editor, const LocalizationRun& run);

/** Why one step of undo would not take back just what a run changed, as a sentence without full stop; empty where it would. */
QUORVANE_API Containers::StringView undoObstacle(const QuorvaneEditor& editor, const LocalizationRun& run);

/** A line as texts with tabs between: language code, outcome, term, reason, file. Control characters are blanks. */
QUORVANE_API std::string copied(const LocalizationReport::Line& line);

/** The reasons why nothing was done, one per line; then the names of the columns and the lines that are shown. */
QUORVANE_API std::string copied(const LocalizationRun& run, const ReportRows& rows);

}

}
