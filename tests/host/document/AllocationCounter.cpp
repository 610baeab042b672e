#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t count = 0;

}

std::size_t allocationCount() { return count; }

void* operator new(std::size_t size) {
    ++count;
    if(void* const data = std::malloc(size)) return data;
    throw std::bad_alloc{};
}

void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* data) noexcept { std::free(data); }
void operator delete[](void* data) noexcept { std::free(data); }
void operator delete(void* data, std::size_t) noexcept { std::free(data); }
void operator delete[](void* data, std::size_t) noexcept { std::free(data); }
