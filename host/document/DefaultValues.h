#pragma once

#include <Corrade/Containers/StringView.h>

#include <rapidjson/document.h>

namespace QuorvaneEngine {

namespace Containers = Corrade::Containers;

/** What the documented keys of a project mean where they are not in the document. */
class DefaultValues {
public:
    DefaultValues();

    /** The default value at a path (a JSON Pointer, RFC 6901), or null where none is documented. It must not be written to. */
    rapidjson::Value* find(Containers::StringView path);

private:
    /** One member for each row of the table, named by its pattern. */
    rapidjson::Document _values;
};

}
