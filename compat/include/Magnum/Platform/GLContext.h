#pragma once

#include "Magnum/GL/Context.h"

namespace Magnum::Platform {

/** Takes over the OpenGL context that a window library has made current. At most one at a time. */
class GLContext: public GL::Context {
public:
    /** As create(). */
    explicit GLContext(): GLContext(NoCreate) { create(); }
    /** Takes over nothing yet. */
    explicit GLContext(NoCreateT): Context(NoCreate) {}

    /** Prints what draws, or the reason why nothing can, and tells whether it worked. OpenGL 3.0 at least. */
    bool tryCreate() { return Context::tryCreate(); }
    /** The same, but ends the program where it did not work. */
    void create() { Context::create(); }
};

} // namespace Magnum::Platform
