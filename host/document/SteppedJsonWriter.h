#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <rapidjson/document.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Writes a document as JSON text on one line, a part at a time, for who has no time for all of it at once. */
class QUORVANE_API SteppedJsonWriter {
public:
    /** @param document     must be an object; must stay as it is until all of it is written */
    explicit SteppedJsonWriter(const rapidjson::Value& document);

    /** Writes some more.
        @param members  how many values at most, each with all that is in it where it is nested deeper than terms are
        @return whether all of it is written now */
    bool write(std::size_t members);

    /** What was written. */
    std::string& text() { return _text; }

private:
    struct Object {
        const rapidjson::Value* value;
        rapidjson::SizeType next;
    };

    std::vector<Object> _open;
    std::string _text;
};

}
