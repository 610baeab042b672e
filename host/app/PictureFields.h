#pragma once

#include <vector>

#include <Corrade/Containers/Optional.h>
#include <Magnum/Math/Vector2.h>
#include <Magnum/Math/Vector4.h>

#include <rapidjson/fwd.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** @file
    Reads what a picture of a resource needs from the project, which may hold anything: what is missing or of a wrong type reads as if it
    were not there, and numbers keep within bounds. */

/** Numbers beyond this, in either direction, are of no use to a picture. */
constexpr float LargestNumber = 1.0e6f;

/** The member of an object, or null; of anything but an object, too. */
QUORVANE_API const rapidjson::Value* fieldOf(const rapidjson::Value& object, const char* name);

/** A number between @p min and @p max , clamped; @p fallback where there is none. */
QUORVANE_API float numberField(const rapidjson::Value& object, const char* name, float fallback, float min, float max);

/** A whole number, as @ref numberField() . */
QUORVANE_API Int integerField(const rapidjson::Value& object, const char* name, Int fallback, Int min, Int max);

/** The numbers of an array, at most @p limit of them, each within @ref LargestNumber . Empty where one of them is no number. */
QUORVANE_API std::vector<float> numbersField(const rapidjson::Value& object, const char* name, std::size_t limit);

/** The pairs of numbers of an array of arrays, at most @p limit of them; empty where one of them is no such pair. */
QUORVANE_API std::vector<Magnum::Vector2> pointsField(
    const rapidjson::Value& object, const char* name, std::size_t limit);

/** A color of three or four numbers, each divided by @p scale and clamped to 0 to 1; alpha is 1 where there is none. */
QUORVANE_API Containers::Optional<Magnum::Vector4> colorOf(const rapidjson::Value& value, float scale);

}
