#include "app/PictureFields.h"

#include <algorithm>
#include <cmath>

#include <rapidjson/document.h>

namespace QuorvaneEngine {

using Magnum::Vector2;
using Magnum::Vector4;

namespace {

float bounded(const rapidjson::Value& number) {
    return float(std::clamp(number.GetDouble(), double(-LargestNumber), double(LargestNumber)));
}

/** An array with at least one element, each a number; or null. */
const rapidjson::Value* numbersOf(const rapidjson::Value* value) {
    if(!value || !value->IsArray() || value->Empty()) return nullptr;
    const bool areNumbers =
        std::all_of(value->Begin(), value->End(), [](const rapidjson::Value& each) { return each.IsNumber(); });
    return areNumbers ? value : nullptr;
}

}

const rapidjson::Value* fieldOf(const rapidjson::Value& object, const char* name) {
    if(!object.IsObject()) return nullptr;
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

float numberField(const rapidjson::Value& object, const char* name, float fallback, float min, float max) {
    const rapidjson::Value* const value = fieldOf(object, name);
    return value && value->IsNumber() ? std::clamp(bounded(*value), min, max) : fallback;
}

Int integerField(const rapidjson::Value& object, const char* name, Int fallback, Int min, Int max) {
    return Int(std::lround(numberField(object, name, float(fallback), float(min), float(max))));
}

std::vector<float> numbersField(const rapidjson::Value& object, const char* name, std::size_t limit) {
    std::vector<float> numbers;
    if(const rapidjson::Value* const value = numbersOf(fieldOf(object, name)))
        for(rapidjson::SizeType i = 0; i != value->Size() && i != limit; ++i) numbers.push_back(bounded((*value)[i]));
    return numbers;
}

std::vector<Vector2> pointsField(const rapidjson::Value& object, const char* name, std::size_t limit) {
    const rapidjson::Value* const value = fieldOf(object, name);
    std::vector<Vector2> points;
    if(!value || !value->IsArray()) return points;
    for(rapidjson::SizeType i = 0; i != value->Size() && i != limit; ++i) {
        const rapidjson::Value* const pair = numbersOf(&(*value)[i]);
        if(!pair || pair->Size() != 2) return {};
        points.emplace_back(bounded((*pair)[0]), bounded((*pair)[1]));
    }
    return points;
}

Containers::Optional<Vector4> colorOf(const rapidjson::Value& value, float scale) {
    const rapidjson::Value* const channels = numbersOf(&value);
    if(!channels || channels->Size() < 3 || channels->Size() > 4) return {};
    Vector4 color{1.0f};
    for(rapidjson::SizeType i = 0; i != channels->Size(); ++i)
        color[i] = std::clamp(bounded((*channels)[i]) / scale, 0.0f, 1.0f);
    return color;
}

}
