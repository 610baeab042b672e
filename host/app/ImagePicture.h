#pragma once

#include <Corrade/Containers/Optional.h>
#include <Magnum/Image.h>

#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What an image of the project looks like, at most @ref PictureSize pixels wide and high.

    An image names its generator, "constant", "checkerboard" (with "cell", the pixels of a square), "gradient" (from top to bottom) or
    "noise" (with "octaves" and "seed"), its "size" in pixels, and "colors", each of three or four numbers from 0 to 255.
    @return nothing where the image is described otherwise */
QUORVANE_API Containers::Optional<Magnum::Image2D> imagePicture(const rapidjson::Value& image);

}
