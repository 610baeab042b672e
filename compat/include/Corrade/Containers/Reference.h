#pragma once

#include "Corrade/Containers/Containers.h"

namespace Corrade::Containers {

/** A reference that containers can hold and assignment can rebind. Never null. */
template <class T> class Reference {
public:
    using Type = T;

    constexpr Reference(T& reference) noexcept: _reference(&reference) {}
    Reference(T&&) = delete;

    constexpr operator T&() const { return *_reference; }
    constexpr T& get() const { return *_reference; }
    constexpr T* operator->() const { return _reference; }
    constexpr T& operator*() const { return *_reference; }

private:
    T* _reference;
};

} // namespace Corrade::Containers
