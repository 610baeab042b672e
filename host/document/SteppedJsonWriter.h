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

    /** What was written, one part after the other; nothing of it is left here. One text that grows would have to be moved as a whole now and then,
        which of a large document takes longer than any step. */
    std::vector<std::string> takeParts();

    /** Bytes of a part, or as many more as the last value has. */
    static constexpr std::size_t PartSize = std::size_t(1) << 18;

private:
    struct Object {
        const rapidjson::Value* value;
        rapidjson::SizeType next;
    };

    std::vector<Object> _open;
    std::vector<std::string> _parts;
    std::string _text;
};

}
