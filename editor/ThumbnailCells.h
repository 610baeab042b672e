#pragma once

#include <Magnum/Math/Range.h>
#include <Magnum/Math/Vector3.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** @file
    Where thumbnails lie in the slices of an atlas, which are grids of cells of one size. Needs no OpenGL. */

/** The cell of an index that counts through all slices: x and y in cells, z the slice. A slice is filled row by row, x fastest.
    @param grid     cells of a slice along x and y, at least 1; grids other than square ones leave cells out */
Magnum::Vector3i thumbnailCell(UnsignedInt index, const Magnum::Vector2i& grid);

/** Where a picture lies that is fitted into a cell: its aspect ratio is kept, it is centred, and fractions of pixels are cut off. One
    side fills the cell; the other is empty where the picture is too narrow for a pixel.
    @param size         of a cell, in pixels
    @param picture      size in pixels; where it is empty, so is the rectangle
    @return             in pixels of the slice */
Magnum::Range2Di thumbnailRectangle(
    const Magnum::Vector3i& cell, const Magnum::Vector2i& size, const Magnum::Vector2i& picture);

/** The whole cell in texture coordinates of its slice. */
Magnum::Range2D thumbnailCoordinates(const Magnum::Vector3i& cell, const Magnum::Vector2i& grid);

}
