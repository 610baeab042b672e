#include "JsonPath.h"

#include <string>

namespace QuorvaneEngine {

Containers::String jsonPath(const Containers::ArrayView<const Containers::StringView> names) {
    std::string path;
    for(const Containers::StringView name: names) {
        path += '/';
        for(const char c: name) {
            if(c == '~') path += "~0";
            else if(c == '/') path += "~1";
            else path += c;
        }
    }
    return Containers::String{path.data(), path.size()};
}

Containers::String jsonPath(const std::initializer_list<Containers::StringView> names) {
    return jsonPath(Containers::ArrayView<const Containers::StringView>{names.begin(), names.size()});
}

}
