#pragma once

#include "Corrade/Containers/Containers.h"
#include "Corrade/Tags.h"

namespace Corrade::Containers {

/**
 * A set of flags of one scoped enumeration, as wide as the enumeration's underlying type.
 *
 * @tparam fullValue  all bits that a complement may set
 *
 * `a >= b` asks whether `a` contains all of `b`. An empty set is false. Put CORRADE_ENUMSET_OPERATORS next to the
 * typedef, so that two plain flags combine to a set, too.
 */
template <class T, std::underlying_type_t<T> fullValue> class EnumSet {
    static_assert(std::is_enum_v<T>, "a set of flags needs an enumeration");

public:
    using Type = T;
    using UnderlyingType = std::underlying_type_t<T>;
    enum : UnderlyingType { FullValue = fullValue };

    constexpr EnumSet() noexcept = default;
    constexpr EnumSet(T flag) noexcept: _bits(UnderlyingType(flag)) {}
    constexpr explicit EnumSet(UnderlyingType bits) noexcept: _bits(bits) {}

    constexpr bool operator==(EnumSet other) const { return _bits == other._bits; }
    constexpr bool operator!=(EnumSet other) const { return _bits != other._bits; }
    constexpr bool operator>=(EnumSet other) const { return (other._bits & ~_bits) == 0; }
    constexpr bool operator<=(EnumSet other) const { return other >= *this; }

    constexpr EnumSet operator|(EnumSet other) const { return EnumSet(UnderlyingType(_bits | other._bits)); }
    constexpr EnumSet operator&(EnumSet other) const { return EnumSet(UnderlyingType(_bits & other._bits)); }
    constexpr EnumSet operator^(EnumSet other) const { return EnumSet(UnderlyingType(_bits ^ other._bits)); }
    constexpr EnumSet operator~() const { return EnumSet(UnderlyingType(fullValue & ~_bits)); }
    EnumSet& operator|=(EnumSet other) { return *this = *this | other; }
    EnumSet& operator&=(EnumSet other) { return *this = *this & other; }
    EnumSet& operator^=(EnumSet other) { return *this = *this ^ other; }

    constexpr explicit operator bool() const { return _bits != 0; }
    constexpr explicit operator UnderlyingType() const { return _bits; }

private:
    UnderlyingType _bits = 0;
};

/** The number behind a flag or a set of flags. */
template <class T>
requires std::is_enum_v<T>
constexpr std::underlying_type_t<T> enumCastUnderlyingType(T value) { return std::underlying_type_t<T>(value); }
template <class T, std::underlying_type_t<T> fullValue>
constexpr std::underlying_type_t<T> enumCastUnderlyingType(EnumSet<T, fullValue> value) {
    return std::underlying_type_t<T>(value);
}

} // namespace Corrade::Containers

#define CORRADE_COMPAT_ENUMSET_OPERATORS_(prefix, set)                                                                 \
    [[maybe_unused]] prefix constexpr bool operator==(set::Type a, set b) { return set(a) == b; }                      \
    [[maybe_unused]] prefix constexpr bool operator!=(set::Type a, set b) { return set(a) != b; }                      \
    [[maybe_unused]] prefix constexpr bool operator>=(set::Type a, set b) { return set(a) >= b; }                      \
    [[maybe_unused]] prefix constexpr bool operator<=(set::Type a, set b) { return set(a) <= b; }                      \
    [[maybe_unused]] prefix constexpr set operator|(set::Type a, set b) { return set(a) | b; }                         \
    [[maybe_unused]] prefix constexpr set operator&(set::Type a, set b) { return set(a) & b; }                         \
    [[maybe_unused]] prefix constexpr set operator^(set::Type a, set b) { return set(a) ^ b; }                         \
    [[maybe_unused]] prefix constexpr set operator~(set::Type a) { return ~set(a); }

/** Operators between plain flags; stands in the namespace of the enumeration. */
#define CORRADE_ENUMSET_OPERATORS(class) CORRADE_COMPAT_ENUMSET_OPERATORS_(, class)

/** The same for an enumeration inside a class; stands in that class. */
#define CORRADE_ENUMSET_FRIEND_OPERATORS(class) CORRADE_COMPAT_ENUMSET_OPERATORS_(friend, class)
