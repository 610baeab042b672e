#include "QuorvaneEditor/RapidJsonUtils.h"

#include <string>

#include <Corrade/Utility/Debug.h>

#include <rapidjson/document.h>

#include "JsonText.h"

namespace QuorvaneEngine::RapidJsonUtils {

Int enumStringToValue(Containers::StringView text, const Containers::StringIterable& values) {
    for(std::size_t i = 0; i != values.size(); ++i)
        if(values[i] == text) return Int(i);
    return -1;
}

}

namespace rapidjson {

Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Value& value) {
    std::string text;
    QuorvaneEngine::appendJson(text, value);
    return debug << Corrade::Containers::StringView{text.data(), text.size()};
}

}
