#include "app/FrameRepeat.h"

#include <cstddef>
#include <cstring>
#include <utility>

#include <imgui.h>

namespace QuorvaneEngine {

namespace {

/** A hash of bytes, eight at a time, after the pattern of FNV-1a. */
class Digest {
public:
    void add(const void* const data, const std::size_t size) {
        const char* const bytes = static_cast<const char*>(data);
        std::size_t i = 0;
        for(; i + sizeof(std::uint64_t) <= size; i += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes + i, sizeof(word));
            mix(word);
        }
        std::uint64_t rest = size;
        for(; i != size; ++i) rest = rest << 8 | std::uint8_t(bytes[i]);
        mix(rest);
    }

    template <class T> void add(const T& value) { add(&value, sizeof(value)); }

    /** Never 0. */
    std::uint64_t value() const { return _value ? _value : 1; }

private:
    void mix(const std::uint64_t word) {
        _value = (_value ^ word) * 0x9e3779b97f4a7c15u;
        // The product's upper bits depend on all of the word, the lower ones do not.
        _value ^= _value >> 32;
    }

    std::uint64_t _value = 0xcbf29ce484222325u;
};

bool isOwnTexture(const ImTextureRef& texture) {
    return texture._TexData && texture._TexData->Status == ImTextureStatus_OK;
}

/** Adds the commands of a list; false where one of them is not the GUI's own. */
bool addCommands(Digest& digest, const ImDrawList& list) {
    for(const ImDrawCmd& command: list.CmdBuffer) {
        if(command.UserCallback || !isOwnTexture(command.TexRef)) return false;
        digest.add(command.ClipRect);
        digest.add(reinterpret_cast<std::uintptr_t>(command.TexRef._TexData));
        digest.add(command.VtxOffset);
        digest.add(command.IdxOffset);
        digest.add(command.ElemCount);
    }
    return true;
}

std::uint64_t digestOf(const ImDrawData& drawData) {
    if(drawData.Textures)
        for(const ImTextureData* const texture: *drawData.Textures)
            if(texture->Status != ImTextureStatus_OK) return 0;
    Digest digest;
    digest.add(drawData.DisplayPos);
    digest.add(drawData.DisplaySize);
    digest.add(drawData.FramebufferScale);
    for(const ImDrawList* const list: drawData.CmdLists) {
        if(!addCommands(digest, *list)) return 0;
        digest.add(list->VtxBuffer.Data, list->VtxBuffer.size_in_bytes());
        digest.add(list->IdxBuffer.Data, list->IdxBuffer.size_in_bytes());
    }
    return digest.value();
}

}

bool FrameRepeat::isRepeated(const ImDrawData& drawData) {
    const std::uint64_t shown = std::exchange(_shown, digestOf(drawData));
    return shown && shown == _shown;
}

}
