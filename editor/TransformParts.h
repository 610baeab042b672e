#pragma once

#include <Magnum/Math/Matrix4.h>
#include <Magnum/Math/Quaternion.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a transformation does, in the order scaling, rotation, translation. */
struct TransformParts {
    Magnum::Vector3 translation;
    Magnum::Quaternion rotation;
    Magnum::Vector3 scaling;
};

/** Takes any matrix apart.

    The scaling is the length of the first three columns; where the matrix mirrors, x is negative. The rotation is that of the
    columns made orthogonal, first column first (Gram-Schmidt), which loses a shear. A single column without length is
    completed from the other two; with more of them, or with columns that are parallel or not finite, the rotation is the
    identity. */
TransformParts transformParts(const Magnum::Matrix4& transform);

}
