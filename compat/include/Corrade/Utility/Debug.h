#pragma once

#include <iosfwd>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/TypeTraits.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade::Utility {

/**
 * One line of output. Items are separated by single blanks, and a newline ends the line when the object is destroyed,
 * provided that anything was written.
 *
 * Debug writes to the standard output, Warning and Error to the standard error. An object made with an output of its
 * own redirects all output of its class, on this thread, until it is destroyed; a null output is silent. Redirections
 * nest, and end in the opposite order.
 */
class Debug {
public:
    enum class Flag : unsigned char {
        NoNewlineAtTheEnd = 1 << 0,
        /** No blanks between items. */
        NoSpace = 1 << 2,
        /** Containers without braces and commas. */
        Packed = 1 << 3,
        /** Integers in hexadecimal, after "0x". */
        Hex = 1 << 7
    };
    using Flags = Containers::EnumSet<Flag>;
    CORRADE_ENUMSET_FRIEND_OPERATORS(Flags)

    using Modifier = void (*)(Debug&);

    /** No blank before the next item. */
    static void nospace(Debug& debug);
    /** Ends the line; no blank before the next item. */
    static void newline(Debug& debug);
    /** A blank here, and none after it. */
    static void space(Debug& debug);
    /** Packed and Hex for the next item alone. */
    static void packed(Debug& debug);
    static void hex(Debug& debug);

    /** Where output goes without any redirection, and where it goes now. */
    static std::ostream* defaultOutput();
    static std::ostream* output();

    explicit Debug(Flags flags = {});
    explicit Debug(std::ostream* output, Flags flags = {});
    explicit Debug(std::nullptr_t, Flags flags = {}): Debug(static_cast<std::ostream*>(nullptr), flags) {}
    /** Appends to the string, which must outlive this. It is complete when this is destroyed. */
    explicit Debug(Containers::String* output, Flags flags = {});

    Debug(const Debug&) = delete;
    Debug(Debug&& other) noexcept;
    Debug& operator=(const Debug&) = delete;
    Debug& operator=(Debug&&) = delete;
    ~Debug();

    Flags flags() const { return _flags; }
    void setFlags(Flags flags) { _flags = flags; }
    /** Flags of the next item: those of all items and its own. */
    Flags immediateFlags() const { return _flags | _immediateFlags; }
    void setImmediateFlags(Flags flags) { _immediateFlags = flags; }

    Debug& operator<<(Modifier modifier) {
        modifier(*this);
        return *this;
    }
    Debug& operator<<(const char* value);
    Debug& operator<<(Containers::StringView value);
    Debug& operator<<(Containers::MutableStringView value);
    Debug& operator<<(const Containers::String& value);
    /** The address, in hexadecimal. */
    Debug& operator<<(const void* value);
    Debug& operator<<(std::nullptr_t);
    Debug& operator<<(bool value);
    /** Characters are numbers here. */
    Debug& operator<<(char value);
    Debug& operator<<(unsigned char value);
    Debug& operator<<(int value);
    Debug& operator<<(long value);
    Debug& operator<<(long long value);
    Debug& operator<<(unsigned value);
    Debug& operator<<(unsigned long value);
    Debug& operator<<(unsigned long long value);
    /** With up to 6, 15 and 18 significant digits. */
    Debug& operator<<(float value);
    Debug& operator<<(double value);
    Debug& operator<<(long double value);

protected:
    // Which of the three redirectable outputs an object stands for.
    enum class Channel : unsigned char { Debug, Warning, Error };

    explicit Debug(Channel channel, Flags flags);
    explicit Debug(Channel channel, std::ostream* output, bool owned, Flags flags);
    static std::ostream* redirected(Containers::String* output);
    static std::ostream* current(Channel channel);
    void finish();

private:
    template <class T> Debug& print(const T& value);
    template <class T> Debug& printNumber(T value);

    std::ostream* _output;
    std::ostream* _previous;
    Flags _flags;
    Flags _immediateFlags = Flag::NoSpace;
    Channel _channel;
    bool _owned;
    bool _written = false;
    bool _active = true;
};

/** Output of temporaries. */
template <class T> Debug& operator<<(Debug&& debug, const T& value) { return debug << value; }

/** Lists in braces; lists of lists one to a line. The flags of the first item count for all of them. */
template <class T>
requires(IsIterable<T>::value && !IsStringLike<T>::value) Debug& operator<<(Debug& debug, const T& value) {
    using Item = decltype(*value.begin());
    constexpr bool nested = IsIterable<Item>::value && !IsStringLike<Item>::value;
    const Debug::Flags outer = debug.flags();
    const bool packed = debug.immediateFlags() >= Debug::Flag::Packed;
    const char* separator = nested ? (packed ? "\n" : ",\n ") : (packed ? "" : ", ");

    debug.setFlags(outer | (debug.immediateFlags() & ~Debug::Flag::NoSpace));
    debug << (packed ? "" : "{") << Debug::nospace;
    bool first = true;
    for(const auto& item: value) {
        if(!first) debug << Debug::nospace << separator << Debug::nospace;
        first = false;
        debug << item;
    }
    debug << Debug::nospace << (packed ? "" : "}");
    debug.setFlags(outer);
    return debug;
}

/** A line about something odd that the program copes with. */
class Warning: public Debug {
public:
    static std::ostream* defaultOutput();
    static std::ostream* output();

    explicit Warning(Flags flags = {});
    explicit Warning(std::ostream* output, Flags flags = {});
    explicit Warning(std::nullptr_t, Flags flags = {}): Warning(static_cast<std::ostream*>(nullptr), flags) {}
    explicit Warning(Containers::String* output, Flags flags = {});
};

/** A line about something that failed. */
class Error: public Debug {
public:
    static std::ostream* defaultOutput();
    static std::ostream* output();

    explicit Error(Flags flags = {});
    explicit Error(std::ostream* output, Flags flags = {});
    explicit Error(std::nullptr_t, Flags flags = {}): Error(static_cast<std::ostream*>(nullptr), flags) {}
    explicit Error(Containers::String* output, Flags flags = {});
};

/** A line about something that cannot go on: ends the program with an exit code when the line is complete. */
class Fatal: public Error {
public:
    explicit Fatal(int exitCode = 1, Flags flags = {}): Error(flags), _exitCode(exitCode) {}
    explicit Fatal(Flags flags): Fatal(1, flags) {}
    [[noreturn]] ~Fatal();

private:
    int _exitCode;
};

} // namespace Corrade::Utility
