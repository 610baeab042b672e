#include "Ui/JsonNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <rapidjson/document.h>

namespace QuorvaneEngine {

namespace {

/** The nearest value that a type holds, cut off where it holds no fractions. */
template <class T> T nearest(const double number) {
    using Limits = std::numeric_limits<T>;
    if(std::isnan(number)) return T{};
    return T(std::clamp(number, double(Limits::lowest()), double(Limits::max())));
}

}

float jsonFloat(const rapidjson::Value* const value) {
    return value && value->IsNumber() ? nearest<float>(value->GetDouble()) : 0.0f;
}

Int jsonInt(const rapidjson::Value* const value) {
    if(!value || !value->IsNumber()) return 0;
    if(value->IsInt()) return value->GetInt();
    if(value->IsUint()) return Int(value->GetUint());
    return nearest<Int>(value->GetDouble());
}

UnsignedInt jsonBits(const rapidjson::Value* const value) {
    if(!value || !value->IsNumber()) return 0;
    if(value->IsInt64()) return UnsignedInt(value->GetInt64());
    if(value->IsUint64()) return UnsignedInt(value->GetUint64());
    const double number = value->GetDouble();
    return number == double(nearest<Int>(number)) ? UnsignedInt(Int(number)) : 0;
}

rapidjson::Value toggledBits(const rapidjson::Value* const value, const UnsignedInt mask) {
    if(value && !value->IsInt() && !value->IsUint()) {
        if(value->IsInt64()) return rapidjson::Value{std::int64_t(std::uint64_t(value->GetInt64()) ^ mask)};
        if(value->IsUint64()) return rapidjson::Value{std::uint64_t(value->GetUint64() ^ mask)};
    }
    return toJson(Int(jsonBits(value) ^ mask));
}

const rapidjson::Value* jsonElement(const rapidjson::Value* const array, const UnsignedInt index) {
    return array && array->IsArray() && index < array->Size() ? &(*array)[index] : nullptr;
}

rapidjson::Value toJson(const float number) { return rapidjson::Value{double(number)}; }

rapidjson::Value toJson(const Int number) { return rapidjson::Value{number}; }

template <class T>
rapidjson::Value toJson(
    const Containers::ArrayView<const T> numbers, rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator) {
    rapidjson::Value array{rapidjson::kArrayType};
    for(const T number: numbers) array.PushBack(toJson(number), allocator);
    return array;
}

template rapidjson::Value toJson(
    Containers::ArrayView<const float>, rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>&);
template rapidjson::Value toJson(
    Containers::ArrayView<const Int>, rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>&);

}
