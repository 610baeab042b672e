#pragma once

/** @file
 * Tags that tell constructors how memory is to be initialised. Each tag type is built from an own `Init`, so that `{}`
 * never turns into a tag by accident.
 */

namespace Corrade {

/** Value-initialise: zeros for trivial types, the default constructor for others. */
struct ValueInitT {
    struct Init {};
    constexpr explicit ValueInitT(Init) {}
};

/** Leave the memory as it comes; the caller constructs what he puts there. */
struct NoInitT {
    struct Init {};
    constexpr explicit NoInitT(Init) {}
};

/** Make the C++ object without the resource (such as an OpenGL name) behind it. */
struct NoCreateT {
    struct Init {};
    constexpr explicit NoCreateT(Init) {}
};

/** Construct every element from the same arguments. */
struct DirectInitT {
    struct Init {};
    constexpr explicit DirectInitT(Init) {}
};

/** Construct from the given list, or one element from the given arguments. */
struct InPlaceInitT {
    struct Init {};
    constexpr explicit InPlaceInitT(Init) {}
};

constexpr ValueInitT ValueInit{ValueInitT::Init{}};
constexpr NoInitT NoInit{NoInitT::Init{}};
constexpr NoCreateT NoCreate{NoCreateT::Init{}};
constexpr DirectInitT DirectInit{DirectInitT::Init{}};
constexpr InPlaceInitT InPlaceInit{InPlaceInitT::Init{}};

} // namespace Corrade
