#pragma once

#include <Corrade/Containers/Optional.h>
#include <Magnum/Image.h>

#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A ball of a material of the project, lit from the upper left, in front of nothing.

    A material has a "baseColor" of three or four numbers from 0 to 1; optional are "specularColor", "emissiveColor" and "shininess", the
    exponent of the highlight (Blinn 1977). Textures are not shown.
    @return nothing where there is no base color */
QUORVANE_API Containers::Optional<Magnum::Image2D> materialPicture(const rapidjson::Value& material);

}
