#include "DeepCopy.h"

#include <cstdint>

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

/** Hands on what a value holds. */
struct Copying {
    rapidjson::Document& out;
    bool isSharing;

    bool Null() { return out.Null(); }
    bool Bool(const bool value) { return out.Bool(value); }
    bool Int(const int value) { return out.Int(value); }
    bool Uint(const unsigned value) { return out.Uint(value); }
    bool Int64(const std::int64_t value) { return out.Int64(value); }
    bool Uint64(const std::uint64_t value) { return out.Uint64(value); }
    bool Double(const double value) { return out.Double(value); }
    bool RawNumber(const char* const text, const rapidjson::SizeType size, bool) { return String(text, size, true); }
    bool String(const char* const text, const rapidjson::SizeType size, bool) {
        return out.String(text, size, !isSharing || size < MinSharedText);
    }
    bool Key(const char* const text, const rapidjson::SizeType size, bool) { return String(text, size, true); }
    bool StartObject() { return out.StartObject(); }
    bool EndObject(const rapidjson::SizeType count) { return out.EndObject(count); }
    bool StartArray() { return out.StartArray(); }
    bool EndArray(const rapidjson::SizeType count) { return out.EndArray(count); }
};

}

void deepCopy(rapidjson::Value& target, const rapidjson::Value& source, Allocator& allocator) {
    target.CopyFrom(source, allocator);
    // Copied texts lie elsewhere than their source, referenced ones do not.
    ownStrings(target, source, allocator);
}

void sharingCopy(rapidjson::Value& target, const rapidjson::Value& source, Allocator& allocator) {
    if(!source.IsObject() && !source.IsArray()) {
        if(source.IsString() && source.GetStringLength() >= MinSharedText)
            target = rapidjson::Value{rapidjson::StringRef(source.GetString(), source.GetStringLength())};
        else target.CopyFrom(source, allocator);
        return;
    }
    rapidjson::Document copy{&allocator};
    auto share = [&source](rapidjson::Document& out) { return putCopy(out, source, true); };
    copy.Populate(share);
    target = static_cast<rapidjson::Value&&>(copy);
}

bool putCopy(rapidjson::Document& target, const rapidjson::Value& source, const bool isSharing) {
    Copying copying{target, isSharing};
    return source.Accept(copying);
}

}
