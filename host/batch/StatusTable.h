#pragma once

#include <string>

#include <Corrade/Containers/ArrayView.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/Host.h"
#include "batch/Terminal.h"

namespace QuorvaneEngine {

struct LanguageLetters;
struct LanguageStatus;

/** How far languages are translated, as a table: a line with numbers and a bar for each, and a line that explains the bars. They
    become shorter on a narrow terminal, down to ten characters, for which the languages' names give way first.

    A text counts as translated unless it is missing or stale. Per cents are rounded down, so that 100 means all; what there is a
    text of has at least one character of the bar. */
std::string statusTable(Containers::ArrayView<const LanguageStatus> statuses, const Terminal& terminal);

/** Which languages the editor cannot show as they are written: a line for letters that no font of this machine has, and one for
    languages that need shaping; none where everything is well.
    @param hasFonts     whether there is any font, without which nothing is known of letters but that */
std::string letterLines(Containers::ArrayView<const LanguageLetters> languages, bool hasFonts);

/** Adds the member "languages" to an object, an array of objects with "language" (BCP 47), "name", "percent" (translated, rounded
    down), "total", "done", "review", "draft", "stale" and "missing" (numbers of texts), "undrawn" (number of letters that no font
    has, null without any font) and "needsShaping"; and the member "hasFonts".
    @param letters      of the same languages in the same order */
void addStatus(Containers::ArrayView<const LanguageStatus> statuses,
    Containers::ArrayView<const LanguageLetters> letters, bool hasFonts, rapidjson::Document& object);

}
