#pragma once

#include <unordered_map>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/Renderbuffer.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/Math/Vector2.h>
#include <Magnum/Math/Vector3.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

/** Small pictures of resources, each known by a name of any bytes, kept in cells of a few large textures, the atlas slices, and drawn
    as items of the current GUI window.

    A slice holds 32 x 32 cells of 128 x 128 pixels and takes 64 MB of video memory. Pictures are scaled into their cells with their
    aspect ratio kept; around them a cell keeps what it held before. Slices stay as long as the manager does, at their addresses: the
    GUI is handed the address of a slice for a texture ID, and the host's renderer looks there for the texture's name.

    Needs an OpenGL context that is current whenever the manager is made, asked for slices, handed pictures or destroyed. All on the
    GUI thread. Errors of OpenGL are not looked for. */
class ThumbnailManager {
public:
    /** Makes the first slice. */
    explicit ThumbnailManager();
    ~ThumbnailManager();
    ThumbnailManager(const ThumbnailManager&) = delete;
    ThumbnailManager& operator=(const ThumbnailManager&) = delete;

    /** A page of the atlas; the one behind the last is made. A slice beyond that, or below 0, is a broken precondition. */
    Magnum::GL::Texture2D& atlasSlice(Int slice);

    /** Forgets all names. The slices stay with their pixels, and the next names take their cells anew. */
    void reset();

    /** Copies a picture into the cell of a name, which gets one if it has none. A picture without pixels, or larger than OpenGL takes,
        leaves the cell's pixels as they are.
        @param texture      its level 0 */
    void setThumbnail(Containers::StringView name, Magnum::GL::Texture2D& texture);

    /** @param framebuffer     its viewport in color attachment 0 */
    void setThumbnail(Containers::StringView name, Magnum::GL::Framebuffer& framebuffer);

    /** @param image    RGBA, 8 bits each, bottom row first */
    void setThumbnail(Containers::StringView name, Magnum::ImageView2D image);

    /** Column and row of a name's cell, in cells, and its slice. An unknown name gets the next cell that is free. */
    Magnum::Vector3i thumbnailPos(Containers::StringView name);

    /** Draws the picture of a name, at the cursor of the current window. The name must have a cell in a slice that exists: else returns
        false, and there is no item.
        @param size     of the item, in pixels */
    bool thumbnail(Containers::StringView name, const Magnum::Vector2& size);

    /** As large as a cell, 128 x 128 pixels. */
    bool thumbnail(Containers::StringView name);

    /** Whether a name has a cell, with or without a picture. */
    bool hasThumbnail(Containers::StringView name) const;

private:
    void appendSlice();

    /** The slice of a cell that was handed out, with those before it. */
    Magnum::GL::Texture2D& sliceOfCell(Int slice);

    Containers::Array<Magnum::GL::Texture2D> _atlasSlices;

    /** Read from, with a source texture attached for as long as it is copied. */
    Magnum::GL::Framebuffer _sourceFramebuffer{Magnum::NoCreate};

    /** Drawn to, with the current slice attached. */
    Magnum::GL::Framebuffer _atlasFramebuffer{Magnum::NoCreate};
    Int _currentSlice = -1;

    /** Unused; without an OpenGL object. */
    Magnum::GL::Renderbuffer _renderbuffer{Magnum::NoCreate};

    std::unordered_map<Containers::String, Magnum::Vector3i, StrHash, StrEq> _positions;

    /** Counts through all slices. */
    Int _nextSlot = 0;

    /** In pixels. */
    Magnum::Vector2i _thumbnailSize{128, 128};

    /** In cells. */
    Magnum::Vector2i _gridSize{32, 32};

    /** In pixels. */
    Magnum::Vector2i _sliceSize{_thumbnailSize * _gridSize};
};

}
