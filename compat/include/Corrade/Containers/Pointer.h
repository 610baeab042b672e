#pragma once

#include <type_traits>
#include <utility>

#include "Corrade/Tags.h"
#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade::Containers {

namespace Implementation {

template <class T, class... Args> T* allocate(Args&&... args) {
    if constexpr(sizeof...(Args) == 0) return new T();
    else return new T{std::forward<Args>(args)...};
}

/** Deletes through a base are fine only where the base's destructor is virtual, or there is nothing to destroy. */
template <class Derived, class Base>
constexpr bool DeletableAs = std::is_trivially_destructible_v<Derived> || std::has_virtual_destructor_v<Base>;

} // namespace Implementation

/** Sole owner of one object on the heap; may be null. Move assignment swaps. A const owner gives a const object. */
template <class T> class Pointer {
    static_assert(!std::is_array_v<T>, "use Containers::Array");

public:
    using Type = T;

    Pointer() noexcept = default;
    template <class U>
    requires std::is_same_v<U, std::nullptr_t> Pointer(U)
    noexcept {}
    /** Takes over an object made with `new`. */
    explicit Pointer(T* pointer) noexcept: _pointer(pointer) {}
    template <class... Args>
    explicit Pointer(InPlaceInitT, Args&&... args)
        : _pointer(Implementation::allocate<T>(std::forward<Args>(args)...)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Pointer(Pointer<U>&& other)
    noexcept: _pointer(other.release()) { static_assert(Implementation::DeletableAs<U, T>); }

    Pointer(const Pointer&) = delete;
    Pointer(Pointer&& other) noexcept: _pointer(other.release()) {}
    Pointer& operator=(const Pointer&) = delete;
    Pointer& operator=(Pointer&& other) noexcept {
        std::swap(_pointer, other._pointer);
        return *this;
    }
    ~Pointer() {
        static_assert(sizeof(T) != 0, "the type must be complete");
        delete _pointer;
    }

    bool operator==(std::nullptr_t) const { return !_pointer; }
    explicit operator bool() const { return _pointer; }
    T* get() { return _pointer; }
    const T* get() const { return _pointer; }
    T* operator->() { return const_cast<T*>(checked()); }
    const T* operator->() const { return checked(); }
    T& operator*() { return const_cast<T&>(*checked()); }
    const T& operator*() const { return *checked(); }

    void reset(T* pointer = nullptr) { delete std::exchange(_pointer, pointer); }
    template <class... Args> T& emplace(Args&&... args) { return emplace<T>(std::forward<Args>(args)...); }
    template <class U, class... Args> U& emplace(Args&&... args) {
        static_assert(std::is_same_v<T, U> || Implementation::DeletableAs<U, T>);
        delete std::exchange(_pointer, nullptr);
        U* made = Implementation::allocate<U>(std::forward<Args>(args)...);
        _pointer = made;
        return *made;
    }
    /** Hands the object to the caller; null stays. */
    T* release() { return std::exchange(_pointer, nullptr); }

private:
    const T* checked() const {
        CORRADE_DEBUG_ASSERT(_pointer, "Containers::Pointer: the pointer is null", nullptr);
        return _pointer;
    }

    T* _pointer = nullptr;
};

/** Takes over an object made with `new`. */
template <class T> Pointer<T> pointer(T* pointer) { return Pointer<T>(pointer); }
/** Makes an object. */
template <class T, class... Args> Pointer<T> pointer(Args&&... args) {
    return Pointer<T>(InPlaceInit, std::forward<Args>(args)...);
}
/** The same object as another type of its hierarchy; not checked. */
template <class U, class T> Pointer<U> pointerCast(Pointer<T>&& pointer) {
    return Pointer<U>(static_cast<U*>(pointer.release()));
}

template <class T> Utility::Debug& operator<<(Utility::Debug& debug, const Pointer<T>& value) {
    return debug << static_cast<const void*>(value.get());
}

} // namespace Corrade::Containers
