#pragma once

#include "Corrade/Containers/StringView.h"
#include "Corrade/Tags.h"

namespace Corrade::Containers {

namespace Implementation {

/** Conversions from and to foreign string types; headers such as StringStl.h specialise it. */
template <class> struct StringConverter;

} // namespace Implementation

/** Asks for memory on the heap even where the text is short. */
struct AllocatedInitT {
    struct Init {};
    constexpr explicit AllocatedInitT(Init) {}
};
constexpr AllocatedInitT AllocatedInit{AllocatedInitT::Init{}};

/**
 * Text that owns its bytes; any bytes, of a fixed size, with a zero byte behind them.
 *
 * Up to 22 bytes live inside the object: moving such a string moves its text, and views into it die. Longer text lives
 * on the heap, or in memory with a deleter of its own. Move assignment swaps; a string that was moved from by
 * construction has size 0 and null data.
 */
class String {
public:
    /** Called with pointer and size; null stands for `delete[]`. */
    using Deleter = void (*)(char*, std::size_t);

    /** Owns a copy, unless the view is NullTerminated: then it refers to the same memory, which must outlive it. */
    static String nullTerminatedView(StringView view);
    /** The same, but refers only to text that is also Global. */
    static String nullTerminatedGlobalView(StringView view);

    String() noexcept;
    String(StringView view);
    String(MutableStringView view);
    String(ArrayView<const char> view);
    String(ArrayView<char> view);
    template <class T>
    requires(std::is_convertible_v<T, const char*> && !std::is_convertible_v<T, std::size_t>) String(T data)
        : String(static_cast<const char*>(data), lengthOf(data)) {}
    String(const char* data, std::size_t size);
    explicit String(AllocatedInitT, StringView view);
    explicit String(ValueInitT, std::size_t size);
    /** The bytes are the caller's to write; the zero behind them is there. */
    explicit String(NoInitT, std::size_t size);
    explicit String(DirectInitT, std::size_t size, char character);
    /** Takes over `data`, which must have a zero byte at `size`. */
    explicit String(char* data, std::size_t size, Deleter deleter) noexcept;
    template <class T>
    requires(std::is_convertible_v<T, Deleter> && !std::is_convertible_v<T, std::size_t>) explicit String(
        char* data, T deleter) noexcept
        : String(data, lengthOf(data), Deleter(deleter)) {}
    template <class T, class = decltype(Implementation::StringConverter<std::decay_t<T&&>>::from(std::declval<T&&>()))>
    String(T&& other): String(Implementation::StringConverter<std::decay_t<T&&>>::from(std::forward<T>(other))) {}

    String(const String& other);
    String(String&& other) noexcept;
    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;
    ~String();

    template <class T, class = decltype(Implementation::StringConverter<T>::to(std::declval<String>()))>
    operator T() const {
        return Implementation::StringConverter<T>::to(*this);
    }

    /** Whether there is any text. */
    explicit operator bool() const { return !isEmpty(); }
    bool isSmall() const { return lastByte() & SmallBit; }
    /** NullTerminated, and Global where the string refers to global text. */
    StringViewFlags viewFlags() const;
    char* data() { return isSmall() ? _small : _large.data; }
    const char* data() const { return isSmall() ? _small : _large.data; }
    /** Only of a string that is not small. */
    Deleter deleter() const;
    bool isEmpty() const { return size() == 0; }
    std::size_t size() const {
        return isSmall() ? lastByte() & ~(SmallBit | GlobalBit) : _large.size & ~Implementation::StringFlagBits;
    }

    char* begin() { return data(); }
    const char* begin() const { return data(); }
    char* end() { return data() + size(); }
    const char* end() const { return data() + size(); }
    char& front() { return const_cast<char&>(checkedFront()); }
    char front() const { return checkedFront(); }
    char& back() { return const_cast<char&>(checkedBack()); }
    char back() const { return checkedBack(); }
    /** The zero byte behind the text, too. */
    char& operator[](std::size_t i) { return const_cast<char&>(checkedAt(i)); }
    char operator[](std::size_t i) const { return checkedAt(i); }

    // As those of StringView; of a string that can change, views through which it can be changed.
    MutableStringView slice(std::size_t begin, std::size_t end);
    StringView slice(std::size_t begin, std::size_t end) const;
    MutableStringView slice(char* begin, char* end);
    StringView slice(const char* begin, const char* end) const;
    MutableStringView sliceSize(std::size_t begin, std::size_t size);
    StringView sliceSize(std::size_t begin, std::size_t size) const;
    MutableStringView prefix(std::size_t size);
    StringView prefix(std::size_t size) const;
    template <Implementation::PointerTo<char> T> MutableStringView prefix(T end) { return mutableView().prefix(end); }
    template <Implementation::PointerTo<const char> T> StringView prefix(T end) const {
        return constView().prefix(static_cast<const char*>(end));
    }
    MutableStringView suffix(char* begin);
    StringView suffix(const char* begin) const;
    MutableStringView exceptPrefix(std::size_t size);
    StringView exceptPrefix(std::size_t size) const;
    MutableStringView exceptSuffix(std::size_t size);
    StringView exceptSuffix(std::size_t size) const;
    MutableStringView exceptPrefix(StringView prefix);
    StringView exceptPrefix(StringView prefix) const;
    MutableStringView exceptSuffix(StringView suffix);
    StringView exceptSuffix(StringView suffix) const;

    Array<MutableStringView> split(char delimiter);
    Array<StringView> split(char delimiter) const;
    Array<MutableStringView> split(StringView delimiter);
    Array<StringView> split(StringView delimiter) const;
    Array<MutableStringView> splitWithoutEmptyParts(char delimiter);
    Array<StringView> splitWithoutEmptyParts(char delimiter) const;
    Array3<MutableStringView> partition(char separator);
    Array3<StringView> partition(char separator) const;
    String join(const StringIterable& strings) const;

    bool hasPrefix(StringView prefix) const { return constView().hasPrefix(prefix); }
    bool hasPrefix(char prefix) const { return constView().hasPrefix(prefix); }
    bool hasSuffix(StringView suffix) const { return constView().hasSuffix(suffix); }
    bool hasSuffix(char suffix) const { return constView().hasSuffix(suffix); }

    MutableStringView trimmed();
    StringView trimmed() const;
    MutableStringView find(StringView text);
    StringView find(StringView text) const;
    MutableStringView find(char character);
    StringView find(char character) const;
    MutableStringView findLast(StringView text);
    StringView findLast(StringView text) const;
    MutableStringView findLast(char character);
    StringView findLast(char character) const;
    bool contains(StringView text) const { return constView().contains(text); }
    bool contains(char character) const { return constView().contains(character); }
    bool containsAny(StringView characters) const { return constView().containsAny(characters); }
    std::size_t count(char character) const { return constView().count(character); }

    /** Hands the memory of a string that is not small to the caller, who frees it as deleter() would have. */
    char* release();

private:
    // The last byte of the object tells the two forms apart: it holds the highest bits of the size of large ones.
    static constexpr unsigned char SmallBit = 0x40;
    static constexpr unsigned char GlobalBit = 0x80;
    struct Large {
        char* data;
        Deleter deleter;
        std::size_t size;
    };

    static std::size_t lengthOf(const char* data) { return data ? std::strlen(data) : 0; }
    unsigned char lastByte() const { return static_cast<unsigned char>(_small[sizeof(Large) - 1]); }
    StringView constView() const { return StringView(*this); }
    MutableStringView mutableView() { return MutableStringView(*this); }
    const char& checkedFront() const;
    const char& checkedBack() const;
    const char& checkedAt(std::size_t i) const;
    char* allocate(std::size_t size);
    void free();

    union {
        Large _large;
        char _small[sizeof(Large)];
    };
};

template <class T>
BasicStringView<T>::BasicStringView(String& string) noexcept
    : BasicStringView(string.data(), string.size(), string.data() ? string.viewFlags() : StringViewFlags{}) {}
template <class T> template <class U>
requires std::is_const_v<U> BasicStringView<T>::BasicStringView(const String& string)
noexcept: BasicStringView(string.data(), string.size(), string.data() ? string.viewFlags() : StringViewFlags{}) {}

} // namespace Corrade::Containers
