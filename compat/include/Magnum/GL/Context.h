#pragma once

#include "Magnum/GL/GL.h"

namespace Magnum::GL {

/** The OpenGL context that this thread draws with. Platform::GLContext makes one. */
class Context {
public:
    /** Around OpenGL calls that do not go through this library. */
    enum class State : UnsignedInt {
        /** Before them. */
        EnterExternal = 1 << 0,
        /** After them. */
        ExitExternal = 1 << 1
    };
    using States = Containers::EnumSet<State>;

    static bool hasCurrent();
    /** Aborts if there is none. */
    static Context& current();

    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context();

    /** Nothing is remembered here, so there is nothing to forget; the real library needs it. */
    void resetState(States states = ~States{});

protected:
    explicit Context(NoCreateT) {}
    bool tryCreate();
    void create();
};

CORRADE_ENUMSET_OPERATORS(Context::States)

} // namespace Magnum::GL
