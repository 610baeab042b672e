#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct Progress;

/** What a dialog shows while the user waits. */
namespace ProgressBox {

/** In pixels at scale 1. */
constexpr float Width = 640.0f;

struct Texts {
    /** Of the icon font. */
    const char* icon;
    const char* heading;
    /** What is worked on; may be empty. */
    Containers::StringView subject;
    /** May be empty. */
    Containers::StringView note;
};

/** Draws the texts, a bar, and the button to cancel, into the dialog that is open.
    @return whether the user asks for the end: by the button, or by Escape */
QUORVANE_API bool draw(const Texts& texts, const Progress& progress);

}

}
