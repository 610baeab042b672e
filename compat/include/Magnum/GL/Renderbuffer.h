#pragma once

#include <utility>

#include "Magnum/GL/GL.h"

namespace Magnum::GL {

/** Pixels that can be drawn to but not sampled; movable. This subset makes them and does nothing with them. */
class Renderbuffer {
public:
    explicit Renderbuffer();
    /** Without an OpenGL object. */
    explicit Renderbuffer(NoCreateT) noexcept {}
    Renderbuffer(const Renderbuffer&) = delete;
    Renderbuffer(Renderbuffer&& other) noexcept: _id(std::exchange(other._id, 0)) {}
    Renderbuffer& operator=(const Renderbuffer&) = delete;
    Renderbuffer& operator=(Renderbuffer&& other) noexcept {
        std::swap(_id, other._id);
        return *this;
    }
    ~Renderbuffer();

    UnsignedInt id() const { return _id; }

private:
    UnsignedInt _id = 0;
};

} // namespace Magnum::GL
