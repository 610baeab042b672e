#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Whether a project with this text can be saved: its files are UTF-8 throughout, and names of other files, for one, may hold any
    bytes. Zero bytes are no obstacle. */
bool isStorable(Containers::StringView text);

}
