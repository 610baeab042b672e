#pragma once

#include <optional>
#include <type_traits>
#include <utility>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Tags.h"
#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade::Containers {

struct NullOptT {
    struct Init {};
    constexpr explicit NullOptT(Init) {}
};

/** An optional without a value. */
constexpr NullOptT NullOpt{NullOptT::Init{}};

/** A value that may be missing. A moved-from one keeps its (moved-from) value. */
template <class T> class Optional {
public:
    using Type = T;

    Optional(NullOptT = NullOpt) noexcept {}
    Optional(const T& value): _value(value) {}
    Optional(T&& value) noexcept(std::is_nothrow_move_constructible_v<T>): _value(std::move(value)) {}
    template <class... Args> Optional(InPlaceInitT, Args&&... args) { emplace(std::forward<Args>(args)...); }

    explicit operator bool() const { return _value.has_value(); }
    bool operator==(const Optional& other) const { return _value == other._value; }
    bool operator==(NullOptT) const { return !_value; }
    bool operator==(const T& other) const { return _value && *_value == other; }

    T* operator->() { return const_cast<T*>(checked()); }
    const T* operator->() const { return checked(); }
    T& operator*() & { return const_cast<T&>(*checked()); }
    T operator*() && { return std::move(const_cast<T&>(*checked())); }
    const T& operator*() const& { return *checked(); }

    template <class... Args> T& emplace(Args&&... args) {
        if constexpr(std::is_constructible_v<T, Args&&...>) return _value.emplace(std::forward<Args>(args)...);
        else return _value.emplace(T{std::forward<Args>(args)...});
    }

private:
    const T* checked() const {
        CORRADE_DEBUG_ASSERT(_value, "Containers::Optional: the optional is empty", nullptr);
        return &*_value;
    }

    std::optional<T> _value;
};

template <class T> Optional<std::decay_t<T>> optional(T&& value) {
    return Optional<std::decay_t<T>>(std::forward<T>(value));
}
template <class T, class... Args> Optional<T> optional(Args&&... args) {
    return Optional<T>(InPlaceInit, std::forward<Args>(args)...);
}

inline Utility::Debug& operator<<(Utility::Debug& debug, NullOptT) { return debug << "Containers::NullOpt"; }
template <class T> Utility::Debug& operator<<(Utility::Debug& debug, const Optional<T>& value) {
    return value ? debug << *value : debug << NullOpt;
}

} // namespace Corrade::Containers
