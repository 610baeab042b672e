#pragma once

#include <cstdint>

#include "QuorvaneEditor/Host.h"

struct ImDrawData;

namespace QuorvaneEngine {

/** Tells whether a frame of the GUI looks like the one that was shown before, which need not be drawn again. */
class QUORVANE_API FrameRepeat {
public:
    /** Compares a frame with that of the last call. One that is drawn with more than the GUI's own, complete textures is never a
        repetition: a view's texture and a view's calls may show something new each time.
        @param drawData     as the GUI has made it; not kept */
    bool isRepeated(const ImDrawData& drawData);

private:
    /** 0 for a frame that is never repeated. */
    std::uint64_t _shown = 0;
};

}
