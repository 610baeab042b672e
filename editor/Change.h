#pragma once

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Utility.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** One entry of the change log: a value of the project document before and after an edit.

    Both values are copies of their own, made with the document's allocator, so an entry can be applied any number of times. They
    may share texts with the document, which never change in place: who keeps a value for longer than the document lives copies it
    with @ref deepCopy() . Movable, not copyable. */
struct Change {
    Change();
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    /** Takes the values over; the source is left without any. */
    Change(Change&& other) noexcept;

    /** Swaps the values with the source. */
    Change& operator=(Change&& other) noexcept;

    /** JSON Pointer (RFC 6901) of the value. */
    Containers::String path;

    /** Null when the change creates the value. */
    Containers::Pointer<rapidjson::Value> oldValue;

    /** Null when the change removes the value. */
    Containers::Pointer<rapidjson::Value> newValue;

    /** The group that the change belongs to, -1 for none. */
    Int group = -1;
};

/** Prints `Change /a/b: 1 -> 2`, `Create /a/b: () -> 2` or `Remove /a/b: 2 -> ()`. */
Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Change& change);

}
