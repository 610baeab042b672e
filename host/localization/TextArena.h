#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Keeps many texts in few pieces of memory. They stay where they are until the arena goes, also when it is moved. */
class QUORVANE_API TextArena {
public:
    TextArena();
    ~TextArena();
    TextArena(const TextArena&) = delete;
    TextArena& operator=(const TextArena&) = delete;
    TextArena(TextArena&&) noexcept;
    TextArena& operator=(TextArena&&) noexcept;

    /** Copies a text. */
    Containers::StringView add(Containers::StringView text);

    /** Copies the pieces of a text, one behind the other. */
    Containers::StringView add(Containers::ArrayView<const Containers::StringView> pieces);

    /** Takes the texts of another arena over, which is empty then. */
    void append(TextArena&& other);

private:
    char* allocate(std::size_t size);

    Containers::Array<Containers::String> _pieces;
    char* _free = nullptr;
    std::size_t _left = 0;
    std::size_t _nextSize = 0;
};

}
