#include "DeepCopy.h"

#include <rapidjson/document.h>

namespace QuorvaneEngine {

namespace {

using Allocator = rapidjson::Document::AllocatorType;

void ownString(rapidjson::Value& copy, const rapidjson::Value& source, Allocator& allocator) {
    if(copy.GetString() == source.GetString()) copy.SetString(source.GetString(), source.GetStringLength(), allocator);
}

void ownStrings(rapidjson::Value& copy, const rapidjson::Value& source, Allocator& allocator) {
    if(copy.IsString()) ownString(copy, source, allocator);
    else if(copy.IsArray()) {
        for(rapidjson::SizeType i = 0; i != copy.Size(); ++i) ownStrings(copy[i], source[i], allocator);
    } else if(copy.IsObject()) {
        auto from = source.MemberBegin();
        auto to = copy.MemberBegin();
        for(rapidjson::SizeType i = 0; i != copy.MemberCount(); ++i, ++from, ++to) {
            ownString(to->name, from->name, allocator);
            ownStrings(to->value, from->value, allocator);
        }
    }
}

}

void deepCopy(rapidjson::Value& target, const rapidjson::Value& source, Allocator& allocator) {
    target.CopyFrom(source, allocator);
    // Copied texts lie elsewhere than their source, referenced ones do not.
    ownStrings(target, source, allocator);
}

}
