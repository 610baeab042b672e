#pragma once

#include <cstdint>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The document of the open project in memory: one JSON tree, addressed by JSON Pointers (RFC 6901).

    It is changed through the @ref ChangeManager alone, which tells of each applied change by @ref noteChange(). Reading it never
    asserts and never changes it, whatever it holds. */
class QUORVANE_API ProjectFile {
public:
    /** An empty object at revision 0. */
    ProjectFile();
    ~ProjectFile();
    ProjectFile(const ProjectFile&) = delete;
    ProjectFile& operator=(const ProjectFile&) = delete;

    /** The root; its address never changes, its contents do with @ref replace(). Whoever changes a value tells so by
        @ref noteChange() before the next change. */
    rapidjson::Document& document();

    rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator();

    /** Takes over another document as a whole, which must own its allocator: a load. Counts as a revision. All values of the
        former document and its allocator are gone. */
    void replace(rapidjson::Document&& document);

    /** The value at a path, or null where there is none or the path is not a valid pointer. Members of large objects are found
        through an index.
        @param withDefaults     answer for a value that is not in the document from the table of default values, which are not
                                part of the document and must not be written to */
    rapidjson::Value* getValue(Containers::StringView path, bool withDefaults);

    /** The member of an object, or null, found through an index where the object is large.
        @param object   a value of this document, of any type */
    rapidjson::Value* member(rapidjson::Value& object, Containers::StringView key);

    ValueAccess root();

    /** The first entry of a collection of resources whose "name" is @p name, or a value that does not exist. */
    ValueAccess resourceByName(Containers::StringView type, Containers::StringView name);

    /** Tells that the value at @p path was set, created or removed, perhaps with containers above it that were created with it
        or emptied by it: counts as a revision, and indexes follow. */
    void noteChange(Containers::StringView path);

    /** Counts applied changes and loads. */
    Int revision() const;

    /** How many values have been looked up since the beginning, by path or by key: what an idle frame must not do. */
    std::uint64_t lookupCount() const;

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

}
