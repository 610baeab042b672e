#include "support/Allocations.h"

#include <cstddef>

#include "support/AddressSanitizer.h"

namespace {

thread_local constinit std::uint64_t allocations = 0;

}

#ifdef QUORVANE_ADDRESS_SANITIZER

// The sanitizer has its own allocator, and hooks for those who want to watch it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*allocated)(const volatile void*, std::size_t), void (*freed)(const volatile void*));

namespace {

const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { ++allocations; }, [](const volatile void*) {});

}

#else

// These take the place of the C library's in the whole process; `operator new` calls them, too.
extern "C" {

__attribute__((visibility("default"))) void* __libc_malloc(std::size_t size);
__attribute__((visibility("default"))) void* __libc_calloc(std::size_t count, std::size_t size);
__attribute__((visibility("default"))) void* __libc_realloc(void* memory, std::size_t size);

__attribute__((visibility("default"))) void* malloc(const std::size_t size) noexcept {
    ++allocations;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(const std::size_t count, const std::size_t size) noexcept {
    ++allocations;
    return __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* const memory, const std::size_t size) noexcept {
    ++allocations;
    return __libc_realloc(memory, size);
}
}

#endif

namespace QuorvaneEngine::Test {

Allocations::Allocations(): _before{allocations} {
#ifdef QUORVANE_ADDRESS_SANITIZER
    // Refers to the variable, so that nothing drops it.
    if(!installed) _before = 0;
#endif
}

std::uint64_t Allocations::count() const { return allocations - _before; }

}
