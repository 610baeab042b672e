#pragma once

#include <Corrade/Containers/Optional.h>
#include <Magnum/Image.h>

#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A mesh of the project, seen from above and from the side without perspective, as large as fits, in front of nothing. See
    @ref meshShape() for how meshes are described.
    @return nothing where there is nothing to see */
QUORVANE_API Containers::Optional<Magnum::Image2D> meshPicture(const rapidjson::Value& mesh);

}
