#pragma once

#include <type_traits>
#include <utility>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Tags.h"
#include "Corrade/Utility/Debug.h"

namespace Corrade::Containers {

/** Two values. */
template <class F, class S> class Pair {
public:
    using FirstType = F;
    using SecondType = S;

    constexpr Pair(): _first(), _second() {}
    constexpr explicit Pair(ValueInitT): Pair() {}
    constexpr Pair(const F& first, const S& second): _first(first), _second(second) {}
    constexpr Pair(const F& first, S&& second): _first(first), _second(std::move(second)) {}
    constexpr Pair(F&& first, const S& second): _first(std::move(first)), _second(second) {}
    constexpr Pair(F&& first, S&& second): _first(std::move(first)), _second(std::move(second)) {}

    constexpr bool operator==(const Pair& other) const { return _first == other._first && _second == other._second; }

    constexpr F& first() & { return _first; }
    constexpr F first() && { return std::move(_first); }
    constexpr const F& first() const& { return _first; }
    constexpr S& second() & { return _second; }
    constexpr S second() && { return std::move(_second); }
    constexpr const S& second() const& { return _second; }

private:
    F _first;
    S _second;
};

template <class F, class S> constexpr Pair<std::decay_t<F>, std::decay_t<S>> pair(F&& first, S&& second) {
    return {std::forward<F>(first), std::forward<S>(second)};
}

template <class F, class S> Utility::Debug& operator<<(Utility::Debug& debug, const Pair<F, S>& value) {
    const auto outer = debug.flags();
    debug.setFlags(outer | (debug.immediateFlags() & ~Utility::Debug::Flag::NoSpace));
    debug << "{" << Utility::Debug::nospace << value.first() << Utility::Debug::nospace << "," << value.second()
          << Utility::Debug::nospace << "}";
    debug.setFlags(outer);
    return debug;
}

} // namespace Corrade::Containers
