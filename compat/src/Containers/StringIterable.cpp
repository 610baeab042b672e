#include "Corrade/Containers/StringIterable.h"

#include "Corrade/Containers/String.h"

namespace Corrade::Containers {

StringIterable::StringIterable(std::initializer_list<StringView> views) noexcept: StringIterable(arrayView(views)) {}

StringView StringIterable::front() const {
    CORRADE_DEBUG_ASSERT(_size, "Containers::StringIterable::front(): view is empty", {});
    return (*this)[0];
}

StringView StringIterable::back() const {
    CORRADE_DEBUG_ASSERT(_size, "Containers::StringIterable::back(): view is empty", {});
    return (*this)[_size - 1];
}

StringView StringIterable::operator[](std::size_t i) const {
    CORRADE_DEBUG_ASSERT(i < _size,
        "Containers::StringIterable::operator[](): index" << i << "out of range for" << _size << "elements", {});
    return _accessor(static_cast<const char*>(_data) + std::ptrdiff_t(i) * _stride, _context, _stride, i);
}

StringView StringIterableIterator::operator*() const { return _list[_i]; }

namespace Implementation {

StringView StringIterableConverter<StringView>::accessor(
    const void* element, const void*, std::ptrdiff_t, std::size_t) {
    return *static_cast<const StringView*>(element);
}

StringView StringIterableConverter<MutableStringView>::accessor(
    const void* element, const void*, std::ptrdiff_t, std::size_t) {
    return *static_cast<const MutableStringView*>(element);
}

StringView StringIterableConverter<String>::accessor(const void* element, const void*, std::ptrdiff_t, std::size_t) {
    return *static_cast<const String*>(element);
}

StringView StringIterableConverter<const char*>::accessor(
    const void* element, const void*, std::ptrdiff_t, std::size_t) {
    return *static_cast<const char* const*>(element);
}

} // namespace Implementation

} // namespace Corrade::Containers
