#pragma once

#include <vector>

#include <Magnum/Math/Vector3.h>

#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Three corners in space, y upwards; which way they turn means nothing. */
struct Triangle {
    Magnum::Vector3 corners[3];
};

/** The triangles of a mesh of the project, at most some ten thousand, coarser than the mesh where that has more.

    A mesh names its "primitive", with members of its own:

    | primitive | members |
    |---|---|
    | cube | halfExtent: 3 numbers |
    | plane | halfExtent: 2 numbers, along x and z |
    | cylinder | radius, height, segments, caps: 1 the lower, 2 the upper, 3 both |
    | capsule | radius, height from pole to pole, segments |
    | icosphere | radius, subdivisions |
    | torus | radius: of the ring and of its tube; segments: along and around the tube |
    | lathe | profile: pairs of radius and height; segments |
    | extrusion | profile: corners of an outline; depth |
    | spiral | radius, turns, taper: what a turn leaves of the radius |
    | helix | radius: inner and outer; height, steps |
    | heightfield | size: 2 numbers of cells; cellSize, seed |

    @return none where the mesh is described otherwise */
QUORVANE_API std::vector<Triangle> meshShape(const rapidjson::Value& mesh);

}
