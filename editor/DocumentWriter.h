#pragma once

#include <Corrade/Containers/Containers.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Writes values into the project document as @ref ChangeManager says: with the containers that lead there, and without those that
    become empty. Records nothing and tells nobody. Paths are JSON Pointers that begin with "/". */
class DocumentWriter {
public:
    explicit DocumentWriter(ProjectFile& project): _project{project} {}

    /** Replaces the value at a path, which is created where it is missing.
        @param value    moved into the document, in whose allocator all of it lies */
    void set(Containers::StringView path, rapidjson::Value& value);

    /** Puts a value where there was none: as an element, at an index of an array.
        @param value    as for @ref set() */
    void add(const Containers::String& path, rapidjson::Value& value);

    /** Removes the value at a path, if there is one, and the containers that it leaves empty up to the members of the root. */
    void remove(Containers::StringView path);

private:
    /** The value at a pointer, the root for the empty one, or null. */
    rapidjson::Value* find(Containers::StringView path);

    /** The value at a pointer, created with all that leads to it where it is missing. */
    rapidjson::Value& create(Containers::StringView path, bool* existed);

    /** The value that a token of a pointer stands for in a value, or null. */
    rapidjson::Value* child(rapidjson::Value& container, Containers::StringView token);

    void insert(const Containers::String& path, rapidjson::Value& value);
    void assertPadding(Containers::StringView path);

    ProjectFile& _project;
};

}
