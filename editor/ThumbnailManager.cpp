#include "ThumbnailManager.h"

#include <cstdlib>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>
#include <Magnum/GL/TextureFormat.h>
#include <Magnum/ImageView.h>
#include <Magnum/Math/Range.h>
#include <Magnum/Sampler.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ThumbnailCells.h"

namespace QuorvaneEngine {

namespace GL = Magnum::GL;

using Magnum::Vector2;
using Magnum::Vector2i;

namespace {

/* An array that grows moves its elements, and draw lists refer to slices by their addresses. So there is room from the beginning for
   more slices than any machine has video memory for, 64 GB, in 12 KB. */
constexpr std::size_t SliceCapacity = 1024;

const GL::Framebuffer::ColorAttachment Color{0};

}

ThumbnailManager::ThumbnailManager() {
    Containers::arrayReserve(_atlasSlices, SliceCapacity);
    appendSlice();
    _positions.max_load_factor(1.0f);
    _positions.reserve(std::size_t(_gridSize.product()));
    const Magnum::Range2Di viewport{{}, _thumbnailSize};
    _sourceFramebuffer = GL::Framebuffer{viewport};
    _atlasFramebuffer = GL::Framebuffer{viewport};
    _atlasFramebuffer.attachTexture(Color, _atlasSlices[0], 0);
    _currentSlice = 0;
}

ThumbnailManager::~ThumbnailManager() = default;

void ThumbnailManager::appendSlice() {
    GL::Texture2D slice;
    slice.setStorage(1, GL::TextureFormat::RGBA8, _sliceSize)
        .setMinificationFilter(Magnum::SamplerFilter::Linear, Magnum::SamplerMipmap::Base)
        .setMagnificationFilter(Magnum::SamplerFilter::Linear);
    Containers::arrayAppend(_atlasSlices, std::move(slice));
}

GL::Texture2D& ThumbnailManager::atlasSlice(Int slice) {
    const Int count = Int(_atlasSlices.size());
    if(slice < 0 || slice > count) {
        Corrade::Utility::Error{} << "ThumbnailManager::atlasSlice(): slice" << slice << "out of range, there are"
                                  << count;
        std::abort();
    }
    if(slice == count) appendSlice();
    return _atlasSlices[std::size_t(slice)];
}

void ThumbnailManager::reset() {
    _nextSlot = 0;
    _positions.clear();
}

GL::Texture2D& ThumbnailManager::sliceOfCell(Int slice) {
    // Cells are handed out in order, but nobody has to fill them in that order.
    while(Int(_atlasSlices.size()) < slice) appendSlice();
    return atlasSlice(slice);
}

void ThumbnailManager::setThumbnail(Containers::StringView name, GL::Framebuffer& framebuffer) {
    const Magnum::Vector3i position = thumbnailPos(name);
    if(position.z() != _currentSlice) {
        _atlasFramebuffer.detach(Color);
        _atlasFramebuffer.attachTexture(Color, sliceOfCell(position.z()), 0);
        _currentSlice = position.z();
    }
    const Magnum::Range2Di source = framebuffer.viewport();
    const Magnum::Range2Di destination = thumbnailRectangle(position, _thumbnailSize, source.size());
    // Nothing would be copied, but a framebuffer whose texture has no pixels is an error to OpenGL.
    if(!destination.sizeX() || !destination.sizeY()) return;
    GL::AbstractFramebuffer::blit(framebuffer, _atlasFramebuffer, source, destination, GL::FramebufferBlit::Color,
        GL::FramebufferBlitFilter::Linear);
}

void ThumbnailManager::setThumbnail(Containers::StringView name, GL::Texture2D& texture) {
    _sourceFramebuffer.attachTexture(Color, texture, 0);
    _sourceFramebuffer.setViewport({{}, texture.imageSize(0)});
    setThumbnail(name, _sourceFramebuffer);
    _sourceFramebuffer.detach(Color);
}

void ThumbnailManager::setThumbnail(Containers::StringView name, Magnum::ImageView2D image) {
    const Magnum::Vector3i position = thumbnailPos(name);
    const Vector2i size = image.size();
    const Vector2i limit = GL::Texture2D::maxSize();
    if(size.x() <= 0 || size.y() <= 0 || size.x() > limit.x() || size.y() > limit.y()) return;
    if(size == _thumbnailSize) sliceOfCell(position.z()).setSubImage(0, position.xy() * _thumbnailSize, image);
    GL::Texture2D texture;
    texture.setStorage(1, GL::TextureFormat::RGBA8, size)
        .setSubImage(0, {}, image)
        .setMinificationFilter(Magnum::SamplerFilter::Linear, Magnum::SamplerMipmap::Linear);
    setThumbnail(name, texture);
}

Magnum::Vector3i ThumbnailManager::thumbnailPos(Containers::StringView name) {
    const auto found = _positions.find(name);
    if(found != _positions.end()) return found->second;
    const Magnum::Vector3i position = thumbnailCell(UnsignedInt(_nextSlot++), _gridSize);
    _positions.emplace(name, position);
    return position;
}

bool ThumbnailManager::thumbnail(Containers::StringView name, const Vector2& size) {
    const auto found = _positions.find(name);
    if(found == _positions.end() || found->second.z() >= Int(_atlasSlices.size())) return false;
    const Magnum::Range2D coordinates = thumbnailCoordinates(found->second, _gridSize);

    // Marks the window as written to.
    ImGuiWindow* const window = ImGui::GetCurrentWindow();
    if(window->SkipItems) return true;
    const ImVec2 corner = window->DC.CursorPos;
    const ImRect rectangle{corner, {corner.x + size.x(), corner.y + size.y()}};
    ImGui::ItemSize(rectangle, -1.0f);
    if(!ImGui::ItemAdd(rectangle, 0)) return true;
    // OpenGL's first row is the bottom one.
    window->DrawList->AddImageRounded(reinterpret_cast<ImTextureID>(&_atlasSlices[std::size_t(found->second.z())]),
        rectangle.Min, rectangle.Max, {coordinates.left(), coordinates.top()},
        {coordinates.right(), coordinates.bottom()}, IM_COL32_WHITE, ImGui::GetStyle().FrameRounding);
    return true;
}

bool ThumbnailManager::thumbnail(Containers::StringView name) { return thumbnail(name, Vector2{_thumbnailSize}); }

bool ThumbnailManager::hasThumbnail(Containers::StringView name) const {
    return _positions.find(name) != _positions.end();
}

}
