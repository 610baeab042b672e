#pragma once

#include <cstdint>

namespace Magnum {

using UnsignedByte = std::uint8_t;
using Byte = std::int8_t;
using UnsignedShort = std::uint16_t;
using Short = std::int16_t;
using UnsignedInt = std::uint32_t;
using Int = std::int32_t;
using UnsignedLong = unsigned long long;
using Long = long long;
using Float = float;
using Double = double;

} // namespace Magnum
