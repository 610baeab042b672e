#pragma once

#include <rapidjson/document.h>

#include "QuorvaneEditor/Host.h"
#include "localization/LocalizationFindings.h"

namespace QuorvaneEngine {

class BatchOutput;
class LocalizationReport;

/** Prints what an exchange did: a warning for every text that was skipped and for what is worth knowing, and the counts of each
    language as a table.
    @param isDetailed   also a line for every text that is new or has changed */
void printReport(const LocalizationReport& report, bool isDetailed, BatchOutput& output);

/** Adds the members "languages" and "lines" of @ref LocalizationReport::json() to an object. */
void addReport(const LocalizationReport& report, rapidjson::Document& object);

/** Prints what checks have found, a line for each finding that is not silenced: file, term, severity, message, and in brackets the name
    of the check; then how many there are of each severity, and silenced ones.
    @param least    the last severity that is counted */
void printFindings(
    const LocalizationFindings& findings, BatchOutput& output, FindingSeverity least = FindingSeverity::Hint);

/** Adds the members of @ref LocalizationFindings::toJson() to an object. */
void addFindings(const LocalizationFindings& findings, rapidjson::Document& object);

}
