#include "Ui/TextBuffer.h"

#include <cstring>
#include <utility>

namespace QuorvaneEngine {

void growBuffer(Containers::Array<char>& buffer, const std::size_t size) {
    if(size <= buffer.size()) return;
    Containers::Array<char> larger{Corrade::ValueInit, size};
    if(!buffer.isEmpty()) std::memcpy(larger.data(), buffer.data(), buffer.size());
    buffer = std::move(larger);
}

void assignBuffer(Containers::Array<char>& buffer, const Containers::StringView text, const std::size_t room) {
    growBuffer(buffer, text.size() + room);
    if(!text.isEmpty()) std::memcpy(buffer.data(), text.data(), text.size());
    buffer[text.size()] = '\0';
}

Containers::StringView editableText(const Containers::StringView stored) {
    return stored.isEmpty() ? Containers::StringView{""} : Containers::StringView{stored.data()};
}

Containers::StringView bufferText(const Containers::Array<char>& buffer) {
    const void* const end = buffer.isEmpty() ? nullptr : std::memchr(buffer.data(), '\0', buffer.size());
    return {buffer.data(), end ? std::size_t(static_cast<const char*>(end) - buffer.data()) : buffer.size()};
}

}
