#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The bytes of a file, which the system reads as they are looked at. */
class QUORVANE_API MappedFile {
public:
    /** @param path     NUL-terminated; a file that is empty or cannot be read gives no bytes */
    explicit MappedFile(Containers::StringView path);
    ~MappedFile();
    MappedFile(MappedFile&& other) noexcept;
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    MappedFile& operator=(MappedFile&&) = delete;

    /** Valid as long as this object; of a file that somebody shortens meanwhile, what is gone must not be read. */
    Containers::ArrayView<const char> bytes() const { return _bytes; }

private:
    Containers::ArrayView<const char> _bytes;
};

}
