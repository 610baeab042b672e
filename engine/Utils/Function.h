#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace QuorvaneEngine {

template <class> class Function;

/** A move-only callable of any type.

    Holds a call pointer, a destroy pointer (null when there is nothing to destroy) and 64 bytes of storage. Moving copies the
    bytes and clears the source's pointers, so only callables that are trivially copyable and fit live in the storage; any other
    lives on the heap, and the storage holds its address. */
template <class R, class... Args> class Function<R(Args...)> {
public:
    static constexpr std::size_t StorageSize = 64;

    Function() = default;

    /** One that is empty. */
    Function(std::nullptr_t) {}

    /** Takes over any callable with the signature. A null pointer to a function makes an empty one. */
    template <class T>
    requires(!std::is_same_v<std::remove_cvref_t<T>, Function> && std::is_invocable_r_v<R, T&, Args...>)
        Function(T&& callable) { // NOLINT(bugprone-forwarding-reference-overload)
        using Type = std::decay_t<T>;
        if constexpr(std::is_pointer_v<std::remove_reference_t<T>>) {
            if(!callable) return;
        }
        if constexpr(std::is_trivially_copyable_v<Type> && sizeof(Type) <= StorageSize &&
            alignof(Type) <= alignof(std::max_align_t)) {
            new(_storage) Type(std::forward<T>(callable));
            _call = [](std::byte* storage, Args... args) -> R {
                return (*std::launder(reinterpret_cast<Type*>(storage)))(std::forward<Args>(args)...);
            };
        } else {
            new(_storage) Type*(std::make_unique<Type>(std::forward<T>(callable)).release());
            _call = [](std::byte* storage, Args... args) -> R {
                return (**std::launder(reinterpret_cast<Type**>(storage)))(std::forward<Args>(args)...);
            };
            _destroy = [](std::byte* storage) {
                std::default_delete<Type>{}(*std::launder(reinterpret_cast<Type**>(storage)));
            };
        }
    }

    Function(Function&& other) noexcept { take(other); }

    Function& operator=(Function&& other) noexcept {
        if(this != &other) {
            destroy();
            take(other);
        }
        return *this;
    }

    ~Function() { destroy(); }

    /** Whether there is something to call; a moved-from function is empty. */
    explicit operator bool() const { return _call; }

    /** Calls the callable, which must be there. */
    R operator()(Args... args) { return _call(_storage, std::forward<Args>(args)...); }

private:
    void take(Function& other) noexcept {
        _call = std::exchange(other._call, nullptr);
        _destroy = std::exchange(other._destroy, nullptr);
        std::memcpy(_storage, other._storage, StorageSize);
    }

    void destroy() noexcept {
        if(_destroy) _destroy(_storage);
        _call = nullptr;
        _destroy = nullptr;
    }

    R (*_call)(std::byte*, Args...) = nullptr;
    void (*_destroy)(std::byte*) = nullptr;
    alignas(std::max_align_t) std::byte _storage[StorageSize]{};
};

}
