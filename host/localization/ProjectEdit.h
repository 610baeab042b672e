#pragma once

#include <initializer_list>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Collects values that are to be set in the project, and sets them as one undo step that leaves nothing behind when it is undone.

    What does not exist is made as one change, with all that lies below it, of the topmost container that is missing or empty:
    undoing the creation of a member would remove the container that it leaves empty, and creating a path piece by piece would
    make arrays of numeric names. */
class QUORVANE_API ProjectEdit {
public:
    /** @param editor   must outlive the edit; its project must not change before @ref push() */
    explicit ProjectEdit(QuorvaneEditor& editor);
    ~ProjectEdit();
    ProjectEdit(const ProjectEdit&) = delete;
    ProjectEdit& operator=(const ProjectEdit&) = delete;

    /** Wants a value at a place.
        @param names    members from the root on, at least one; no place may be given twice, nor one below another
        @param value    taken over; its memory must come from @ref allocator()
        @return false, with nothing wanted, where a container on the way is there and is no object */
    bool set(Containers::ArrayView<const Containers::StringView> names, rapidjson::Value&& value);
    bool set(std::initializer_list<Containers::StringView> names, rapidjson::Value&& value);

    /** Wants a text at a place; see @ref set(). */
    bool setText(std::initializer_list<Containers::StringView> names, Containers::StringView text);

    /** Wants a value in place of one that exists.
        @param path     JSON Pointer (RFC 6901) */
    void replace(Containers::StringView path, rapidjson::Value&& value);

    /** A JSON string that holds a copy of a text. */
    rapidjson::Value text(Containers::StringView text);

    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator();

    bool isEmpty() const;

    /** Sets everything as one group of changes, none where nothing is wanted. The edit is empty then. No group may be open. */
    void push();

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

}
