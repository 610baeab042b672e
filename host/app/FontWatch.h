#pragma once

#include <string>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "fonts/FontCoverage.h"

namespace QuorvaneEngine {

/** Keeps what is known of the fonts and the project's languages up to date, a step in each frame after a change and nothing otherwise. */
class QUORVANE_API FontWatch {
public:
    /** @param drawn    letters that can be drawn; must outlive this object */
    explicit FontWatch(const LetterSet& drawn): _coverage{drawn} {}

    /** Goes on for a millisecond or so. Between two frames.
        @param revision     of the project, as published for this frame
        @param languages    of the project */
    void update(ProjectFile& project, Int revision, Containers::ArrayView<const UnsignedInt> languages);

    /** Whether there is more to look at. */
    bool isBusy() const { return !_coverage.isFinished(); }

    /** See @ref FontCoverage::summary() . Stays until the next @ref update() . */
    Containers::StringView summary() const { return {_summary.data(), _summary.size()}; }

private:
    FontCoverage _coverage;
    std::string _summary;
    /** That was looked at, -1 before. */
    Int _revision = -1;
};

}
