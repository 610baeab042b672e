#include "app/Thumbnails.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <Corrade/Containers/Optional.h>
#include <Magnum/Image.h>
#include <Magnum/ImageView.h>

#include <rapidjson/document.h>
#include <rapidjson/writer.h>

#include "QuorvaneEditor/EditorData.h"
#include "ThumbnailManager.h"
#include "app/ImagePicture.h"
#include "app/MaterialPicture.h"
#include "app/MeshPicture.h"
#include "app/Picture.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {

namespace {

using Picture = Containers::Optional<Magnum::Image2D>;

constexpr struct {
    const char* collection;
    ResourceIndexMap EditorData::*indices;

    /** Of the name of a thumbnail, in front of the index. */
    const char* prefix;
    Picture (*picture)(const rapidjson::Value& resource);
    std::size_t maxPictures;
} Kinds[]{
    {"images", &EditorData::imageIndices, "", imagePicture, Thumbnails::MaxImages},
    {"materials", &EditorData::materialIndices, "ma", materialPicture, Thumbnails::MaxMaterials},
    {"meshes", &EditorData::meshIndices, "m", meshPicture, Thumbnails::MaxMeshes},
};

constexpr std::size_t KindCount = std::size(Kinds);

/** A stream that keeps of what is written to it no more than its FNV-1a hash. */
struct HashStream {
    using Ch = char;

    void Put(char byte) { hash = (hash ^ std::uint8_t(byte)) * 0x100000001b3u; }
    void Flush() {}

    std::uint64_t hash = 0xcbf29ce484222325u;
};

/** Of a value's text; never 0. */
std::uint64_t hashOf(const rapidjson::Value& value) {
    HashStream stream;
    rapidjson::Writer<HashStream> writer{stream};
    value.Accept(writer);
    return stream.hash ? stream.hash : 1;
}

/** The resources of a kind, or null where there are none. */
const rapidjson::Value* collectionOf(EditorSession& session, std::size_t kind) {
    rapidjson::Value* const value = session.project().member(session.project().document(), Kinds[kind].collection);
    return value && value->IsObject() && !value->ObjectEmpty() ? value : nullptr;
}

}

Thumbnails::Thumbnails(EditorSession& session): _session{&session}, _manager{Corrade::InPlaceInit} {
    session.data().thumbnails = _manager.get();
}

Thumbnails::~Thumbnails() { _session->data().thumbnails = nullptr; }

void Thumbnails::update() {
    const Int revision = _session->data().currentRevision();
    if(revision == _revision && !_left) return;
    const rapidjson::Value* collections[KindCount];
    std::size_t count = 0;
    for(std::size_t kind = 0; kind != KindCount; ++kind) {
        collections[kind] = collectionOf(*_session, kind);
        if(collections[kind]) count += collections[kind]->MemberCount();
    }
    if(revision != _revision) {
        _revision = revision;
        if(_folder != _session->folder()) {
            _folder = Containers::String{_session->folder()};
            _manager->reset();
            std::fill(std::begin(_pictures), std::end(_pictures), 0);
            for(std::vector<std::uint64_t>& pictured: _pictured) pictured.clear();
        }
        // Goes on where it is: who drags a value all the time must not keep the last ones from their turn.
        _left = count;
    }

    std::size_t made = 0;
    for(std::size_t checks = 0; checks != ChecksPerFrame && made != PicturesPerFrame && _left; ++checks) {
        while(!collections[_kind] || _member >= collections[_kind]->MemberCount()) {
            _kind = (_kind + 1) % KindCount;
            _member = 0;
        }
        const auto member = collections[_kind]->MemberBegin() + rapidjson::SizeType(_member++);
        --_left;
        made += refresh(_kind, member->name, member->value);
    }
}

bool Thumbnails::refresh(std::size_t kind, const rapidjson::Value& id, const rapidjson::Value& resource) {
    const std::size_t index = (_session->data().*Kinds[kind].indices)[{id.GetString(), id.GetStringLength()}];
    std::vector<std::uint64_t>& pictured = _pictured[kind];
    // The index of no resource.
    if(index == 0) return false;
    if(pictured.size() <= index) pictured.resize(index + 1);
    const std::uint64_t hash = hashOf(resource);
    if(pictured[index] == hash) return false;
    pictured[index] = hash;

    char name[16];
    std::snprintf(name, sizeof(name), "%s%zu", Kinds[kind].prefix, index);
    const bool isKnown = _manager->hasThumbnail(name);
    if(!isKnown && _pictures[kind] == Kinds[kind].maxPictures) return false;
    Picture picture = Kinds[kind].picture(resource);
    if(!picture && !isKnown) return false;
    // Around a picture stays what was there before.
    if(isKnown || !picture || picture->size() != Magnum::Vector2i{PictureSize})
        _manager->setThumbnail(
            name, makePicture({PictureSize, PictureSize}, [](Int, Int) { return Magnum::Vector4{0.0f}; }));
    if(picture) _manager->setThumbnail(name, *picture);
    _pictures[kind] += !isKnown;
    return true;
}

}
