#pragma once

#include <cstddef>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

/** @file
    Texts that text inputs edit in place: arrays of characters, NUL-terminated, that never shrink.

    Views grow those of the widget toolkit from libraries of their own, which are unloaded before it ends. A growable array would
    keep the address of its deleter in the one that grew it last; these are plain ones, without any. */

namespace QuorvaneEngine {

/** Makes a buffer at least @p size bytes large. The bytes that are new are zero, and views of the old ones die. */
void growBuffer(Containers::Array<char>& buffer, std::size_t size);

/** Makes a buffer hold a text, up to its first zero byte.
    @param text     must not view the buffer
    @param room     how much larger than the text it has to be, in bytes, at least 1 */
void assignBuffer(Containers::Array<char>& buffer, Containers::StringView text, std::size_t room = 1);

/** A text of the document as an input shows it, up to its first zero byte.
    @param stored   NUL-terminated, or empty */
Containers::StringView editableText(Containers::StringView stored);

/** The text that a buffer holds, empty for one without bytes. */
Containers::StringView bufferText(const Containers::Array<char>& buffer);

}
