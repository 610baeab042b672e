#include "Corrade/Containers/String.h"

#include <algorithm>
#include <bit>

#include "Corrade/Containers/Array.h"
#include "Corrade/Containers/StaticArray.h"
#include "Corrade/Containers/StringIterable.h"

namespace Corrade::Containers {

static_assert(std::endian::native == std::endian::little, "the last byte must hold the highest bits of the size");

String String::nullTerminatedView(StringView view) {
    if(!(view.flags() & StringViewFlag::NullTerminated)) return String(view);
    String out(const_cast<char*>(view.data()), view.size(), [](char*, std::size_t) {});
    if(view.flags() >= StringViewFlag::Global) out._small[sizeof(Large) - 1] = char(out.lastByte() | GlobalBit);
    return out;
}

String String::nullTerminatedGlobalView(StringView view) {
    if(view.flags() >= (StringViewFlag::NullTerminated | StringViewFlag::Global)) return nullTerminatedView(view);
    return String(view);
}

char* String::allocate(std::size_t size) {
    if(size < sizeof(Large) - 1) {
        _small[sizeof(Large) - 1] = char(size | SmallBit);
        _small[size] = '\0';
        return _small;
    }
    _large = {new char[size + 1], nullptr, size};
    _large.data[size] = '\0';
    return _large.data;
}

void String::free() {
    if(isSmall()) return;
    if(_large.deleter) _large.deleter(_large.data, size());
    else delete[] _large.data;
}

String::String() noexcept { allocate(0); }

String::String(StringView view): String(view.data(), view.size()) {}

String::String(MutableStringView view): String(view.data(), view.size()) {}

String::String(ArrayView<const char> view): String(view.data(), view.size()) {}

String::String(ArrayView<char> view): String(view.data(), view.size()) {}

String::String(const char* data, std::size_t size) {
    CORRADE_ASSERT(data || !size, "Containers::String: received a null string of size" << size, );
    std::copy_n(data, size, allocate(size));
}

String::String(AllocatedInitT, StringView view): _large{new char[view.size() + 1], nullptr, view.size()} {
    *std::copy(view.begin(), view.end(), _large.data) = '\0';
}

String::String(ValueInitT, std::size_t size): String(DirectInit, size, '\0') {}

String::String(NoInitT, std::size_t size) { allocate(size); }

String::String(DirectInitT, std::size_t size, char character) { std::fill_n(allocate(size), size, character); }

String::String(char* data, std::size_t size, Deleter deleter) noexcept: _large{data, deleter, size} {
    CORRADE_ASSERT(
        data && !data[size], "Containers::String: can only take ownership of a non-null null-terminated array", );
}

String::String(const String& other): String(other.data(), other.size()) {}

String::String(String&& other) noexcept: _large(std::exchange(other._large, Large{})) {}

String& String::operator=(const String& other) { return *this = String(other); }

String& String::operator=(String&& other) noexcept {
    std::swap(_large, other._large);
    return *this;
}

String::~String() { free(); }

StringViewFlags String::viewFlags() const {
    return StringViewFlags(lastByte() & GlobalBit ? std::size_t(StringViewFlag::Global) : 0) |
        StringViewFlag::NullTerminated;
}

String::Deleter String::deleter() const {
    CORRADE_ASSERT(!isSmall(), "Containers::String::deleter(): cannot call on a SSO instance", {});
    return _large.deleter;
}

const char& String::checkedFront() const {
    CORRADE_DEBUG_ASSERT(size(), "Containers::String::front(): string is empty", *data());
    return *data();
}

const char& String::checkedBack() const {
    CORRADE_DEBUG_ASSERT(size(), "Containers::String::back(): string is empty", *data());
    return data()[size() - 1];
}

const char& String::checkedAt(std::size_t i) const {
    CORRADE_DEBUG_ASSERT(i <= size(),
        "Containers::String::operator[](): index" << i << "out of range for" << size() << "null-terminated bytes",
        *data());
    return data()[i];
}

char* String::release() {
    CORRADE_ASSERT(!isSmall(), "Containers::String::release(): cannot call on a SSO instance", {});
    char* data = _large.data;
    allocate(0);
    return data;
}

// Each of these is the view's function, once for a string that can change and once for one that cannot.
#define COMPAT_FORWARD(Mutable, Const, function, Argument)                                                             \
    Mutable String::function(Argument argument) { return mutableView().function(argument); }                           \
    Const String::function(Argument argument) const { return constView().function(argument); }

COMPAT_FORWARD(MutableStringView, StringView, prefix, std::size_t)
COMPAT_FORWARD(MutableStringView, StringView, exceptPrefix, std::size_t)
COMPAT_FORWARD(MutableStringView, StringView, exceptSuffix, std::size_t)
COMPAT_FORWARD(MutableStringView, StringView, exceptPrefix, StringView)
COMPAT_FORWARD(MutableStringView, StringView, exceptSuffix, StringView)
COMPAT_FORWARD(Array<MutableStringView>, Array<StringView>, split, char)
COMPAT_FORWARD(Array<MutableStringView>, Array<StringView>, split, StringView)
COMPAT_FORWARD(Array<MutableStringView>, Array<StringView>, splitWithoutEmptyParts, char)
COMPAT_FORWARD(Array3<MutableStringView>, Array3<StringView>, partition, char)
COMPAT_FORWARD(MutableStringView, StringView, find, StringView)
COMPAT_FORWARD(MutableStringView, StringView, find, char)
COMPAT_FORWARD(MutableStringView, StringView, findLast, StringView)
COMPAT_FORWARD(MutableStringView, StringView, findLast, char)

#undef COMPAT_FORWARD

MutableStringView String::slice(std::size_t begin, std::size_t end) { return mutableView().slice(begin, end); }

StringView String::slice(std::size_t begin, std::size_t end) const { return constView().slice(begin, end); }

MutableStringView String::slice(char* begin, char* end) { return mutableView().slice(begin, end); }

StringView String::slice(const char* begin, const char* end) const { return constView().slice(begin, end); }

MutableStringView String::sliceSize(std::size_t begin, std::size_t size) {
    return mutableView().sliceSize(begin, size);
}

StringView String::sliceSize(std::size_t begin, std::size_t size) const { return constView().sliceSize(begin, size); }

MutableStringView String::suffix(char* begin) { return mutableView().suffix(begin); }

StringView String::suffix(const char* begin) const { return constView().suffix(begin); }

MutableStringView String::trimmed() { return mutableView().trimmed(); }

StringView String::trimmed() const { return constView().trimmed(); }

String String::join(const StringIterable& strings) const { return constView().join(strings); }

} // namespace Corrade::Containers
