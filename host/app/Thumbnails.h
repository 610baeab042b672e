#pragma once

#include <cstdint>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class EditorSession;

/** Makes pictures of the images, materials and meshes of the open project, and publishes them with the session's editor data for as
    long as it lives.

    They are made on the processor, a few a frame, and again when a resource changes; what that costs a frame does not depend on how many
    there are. A resource that cannot be pictured has none, or an empty one where it had one before. Needs OpenGL, as
    @ref ThumbnailManager does. */
class QUORVANE_API Thumbnails {
public:
    /** What one @ref update() does at most: resources that it looks at, and pictures that it makes. */
    static constexpr std::size_t ChecksPerFrame = 64;
    static constexpr std::size_t PicturesPerFrame = 4;

    /** Of each kind, the rest of the resources has no pictures: together they fill 256 MB of video memory, and no kind takes the
        place of another. */
    static constexpr std::size_t MaxImages = 2048;
    static constexpr std::size_t MaxMaterials = 1024;
    static constexpr std::size_t MaxMeshes = 1024;

    /** @param session  must outlive this object */
    explicit Thumbnails(EditorSession& session);
    ~Thumbnails();
    Thumbnails(const Thumbnails&) = delete;
    Thumbnails& operator=(const Thumbnails&) = delete;

    /** Brings pictures up to date, a few at a time. Called once a frame, between two frames. */
    void update();

    /** Whether the next @ref update() has something to do. */
    bool isBusy() const { return _left != 0; }

    ThumbnailManager& manager() { return *_manager; }

private:
    bool refresh(std::size_t kind, const rapidjson::Value& id, const rapidjson::Value& resource);

    EditorSession* _session;
    Containers::Pointer<ThumbnailManager> _manager;

    /** For each kind of resource, by index, the hash of what was pictured last; 0 where nothing was. */
    std::vector<std::uint64_t> _pictured[3];

    /** The pictures of each kind. */
    std::size_t _pictures[3]{};

    /** The project that the pictures are of. */
    Containers::String _folder;
    Int _revision = -1;

    /** The resource that is looked at next, and how many have to be until all were looked at since the last change. */
    std::size_t _kind = 0;
    std::size_t _member = 0;
    std::size_t _left = 0;
};

}
