#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The blanks of a text: what Unicode calls white space (spaces of all widths, tabs, line ends), and the byte order mark. */
namespace TextBlanks {

/** The blanks that a text begins with; all of it where it has nothing else. */
QUORVANE_API Containers::StringView leading(Containers::StringView text);

/** The blanks that a text ends with; empty where it has nothing else. */
QUORVANE_API Containers::StringView trailing(Containers::StringView text);

/** A text without the blanks around it. */
QUORVANE_API Containers::StringView trimmed(Containers::StringView text);

}

}
