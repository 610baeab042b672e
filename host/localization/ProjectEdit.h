#pragma once

#include <functional>
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
    make arrays of numeric names. Where many members of one object are set, that is one change of the whole object. */
class QUORVANE_API ProjectEdit {
public:
    using Allocator = rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>;

    /** Members of one object. The functions are called when the edit is pushed, object by object, so that the values of one alone need
        memory; texts that they refer to must outlive that. */
    struct Members {
        std::size_t count;

        /** The name of each, which no other one has; kept by @ref keep() . */
        std::function<Containers::StringView(std::size_t)> name;

        /** Its place among the members that the object has, -1 for one that is new. */
        std::function<Int(std::size_t)> position;

        /** Makes its value, by the events (SAX) that a document takes. Texts are to be copied, but those that are kept by
            @ref keep() ; see @ref isShared() . */
        std::function<void(std::size_t, rapidjson::Document&)> make;

        /** Called when the members are set, and nothing above is called any more; may be empty. */
        std::function<void()> finish = {};
    };

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

    /** Wants members of one object; see @ref set(). Nothing is wanted of none.
        @param names    of the object, at least one */
    bool setMembers(std::initializer_list<Containers::StringView> names, Members&& members);

    /** Wants a value in place of one that exists.
        @param path     JSON Pointer (RFC 6901) */
    void replace(Containers::StringView path, rapidjson::Value&& value);

    /** Copies a text into the project's memory, where any number of values may refer to it; a short one stays where it is. */
    Containers::StringView keep(Containers::StringView text);

    /** Whether a value refers to a text that is kept. Shorter ones lie in the values themselves. */
    static bool isShared(Containers::StringView text) { return text.size() >= 16; }

    /** A JSON string that holds a copy of a text. */
    rapidjson::Value text(Containers::StringView text);

    Allocator& allocator();

    bool isEmpty() const;

    /** Sets everything as one group of changes, none where nothing is wanted. The edit is empty then. No group may be open.
        @return the group, -1 for none */
    Int push();

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

}
