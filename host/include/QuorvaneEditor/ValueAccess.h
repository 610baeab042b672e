#pragma once

#include <Corrade/Containers/Array.h>

#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/KeyIterator.h"

namespace QuorvaneEngine {

/** A value of the open project by its place. As cheap to copy as two pointers; valid until the next change. */
class QUORVANE_API ValueAccess: public JsonObject {
public:
    /** @param project  must outlive this object
        @param value    the value, or null */
    explicit ValueAccess(ProjectFile& project, rapidjson::Value* value): JsonObject{value}, _project{&project} {}

    /** The value at a JSON Pointer from the project's root when @p keyOrPath begins with "/", else the member with that key. */
    ValueAccess operator[](Containers::StringView keyOrPath) const;

    /** The member with exactly this key, which may hold any character. Large objects are looked up through an index. */
    ValueAccess member(Containers::StringView key) const;

    bool existsInProject() const { return _value; }

    /** Appends all keys of the object to @p keys, in document order; they view the document. */
    void keys(Containers::Array<Containers::StringView>& keys) const;

    KeyIterator begin() const;
    KeyIterator end() const;

private:
    ProjectFile* _project;
};

}
