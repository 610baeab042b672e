#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A line in which the path of a file or folder is typed. */
class QUORVANE_API PathField {
public:
    /** The key that ended the typing. */
    enum class Key : std::uint8_t { None, Enter, Escape };

    /** @param hint     shown while the line is empty; must outlive this object */
    explicit PathField(const char* hint);

    /** As it was typed, NUL-terminated. */
    Containers::StringView text() const { return _text.data(); }

    /** As the disk knows it: "~" in front is the home folder, and no slash is at the end but that of the root. */
    Containers::String path() const;

    /** @return why the text cannot be edited, which is then left as it is; else empty */
    Containers::String set(Containers::StringView text);

    /** Gives the line the keyboard in the next frame, with all of its text chosen. */
    void takeFocus() { _takesFocus = true; }

    /** @param width    in pixels */
    Key draw(float width);

    /** Draws why a path cannot be taken: a line below the field. */
    static void drawReason(Containers::StringView reason);

private:
    const char* _hint;
    /** NUL-terminated. */
    Containers::Array<char> _text;
    bool _takesFocus = false;
};

}
