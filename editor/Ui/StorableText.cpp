#include "Ui/StorableText.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

namespace QuorvaneEngine {

namespace {

/** What the JSON library writes a character to that it looks at. */
struct NoOutput {
    void Put(char) {}
};

}

bool isStorable(const Containers::StringView text) {
    rapidjson::MemoryStream input{text.isEmpty() ? "" : text.data(), text.size()};
    NoOutput output;
    while(input.Tell() != text.size())
        if(!rapidjson::UTF8<>::Validate(input, output)) return false;
    return true;
}

}
