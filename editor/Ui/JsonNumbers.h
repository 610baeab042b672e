#pragma once

#include <Corrade/Containers/ArrayView.h>

#include "QuorvaneEditor/Host.h"

/** @file
    Numbers of the project's document as widgets edit them. Reading is total: what is missing and what is no number is 0. */

namespace QuorvaneEngine {

/** A number of any JSON type. What a float cannot hold is its largest or smallest value. */
float jsonFloat(const rapidjson::Value* value);

/** An integer, of which one of 32 bits without a sign keeps its bits. A fraction is cut off, and what is farther away is the
    largest or smallest value. */
Int jsonInt(const rapidjson::Value* value);

/** The lowest bits of an integer, of which there may be 64; of a number without fractions in 32 bits otherwise, and none of others. */
UnsignedInt jsonBits(const rapidjson::Value* value);

/** An integer with some of its bits toggled, written with a sign. One of more than 32 bits keeps all others, and one that has no
    @ref jsonBits() counts as 0. */
rapidjson::Value toggledBits(const rapidjson::Value* value, UnsignedInt mask);

/** An element of an array, null where there is none. */
const rapidjson::Value* jsonElement(const rapidjson::Value* array, UnsignedInt index);

/** What stands for a number in a document, doubles for floats. */
rapidjson::Value toJson(float number);
rapidjson::Value toJson(Int number);

/** An array of numbers in a document.
    @param allocator    of the document */
template <class T>
rapidjson::Value toJson(
    Containers::ArrayView<const T> numbers, rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>& allocator);

}
