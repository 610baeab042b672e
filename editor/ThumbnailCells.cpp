#include "ThumbnailCells.h"

namespace QuorvaneEngine {

using Magnum::Float;
using Magnum::Vector2i;
using Magnum::Vector3i;

Vector3i thumbnailCell(UnsignedInt index, const Vector2i& grid) {
    const UnsignedInt cells = UnsignedInt(grid.product());
    const UnsignedInt slice = index / cells;
    const UnsignedInt rest = index - slice * cells;
    const UnsignedInt y = rest / UnsignedInt(grid.y());
    const UnsignedInt x = rest - UnsignedInt(grid.x()) * y;
    return {Int(x), Int(y), Int(slice)};
}

Magnum::Range2Di thumbnailRectangle(const Vector3i& cell, const Vector2i& size, const Vector2i& picture) {
    const Vector2i corner = cell.xy() * size;
    // Not only nothing to see: the ratio of nothing to nothing is no number.
    if(picture.x() <= 0 || picture.y() <= 0) return {corner, corner};
    const Float width = Float(picture.x());
    const Float height = Float(picture.y());
    Vector2i fitted = size;
    if(width <= height) fitted.x() = Int(Float(size.x()) * (width / height));
    else fitted.y() = Int(Float(size.y()) * (height / width));
    const Vector2i margin{Int(Float(size.x() - fitted.x()) * 0.5f), Int(Float(size.y() - fitted.y()) * 0.5f)};
    return Magnum::Range2Di::fromSize(corner + margin, fitted);
}

Magnum::Range2D thumbnailCoordinates(const Vector3i& cell, const Vector2i& grid) {
    const Magnum::Vector2 extent = Magnum::Vector2{1.0f} / Magnum::Vector2{grid};
    return Magnum::Range2D::fromSize(Magnum::Vector2{cell.xy()} * extent, extent);
}

}
