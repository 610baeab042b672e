#pragma once

#include <cstdio>
#include <type_traits>

#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade::Utility {

namespace Implementation {

/** One value to be formatted: numbers at full width, text by reference. Lives for one call. */
class FormatArgument {
public:
    enum class Kind : unsigned char { Signed, Unsigned, Bool, Float, Double, LongDouble, Text };

    template <class T> explicit FormatArgument(const T& value) {
        if constexpr(std::is_enum_v<T>) {
            *this = FormatArgument(std::underlying_type_t<T>(value));
        } else if constexpr(std::is_same_v<T, bool>) {
            kind = Kind::Bool;
            integer = value;
        } else if constexpr(std::is_integral_v<T>) {
            kind = std::is_signed_v<T> ? Kind::Signed : Kind::Unsigned;
            wide = sizeof(T) == 8;
            integer = static_cast<long long>(value);
        } else if constexpr(std::is_floating_point_v<T>) {
            kind = std::is_same_v<T, float> ? Kind::Float : std::is_same_v<T, double> ? Kind::Double : Kind::LongDouble;
            real = value;
        } else {
            kind = Kind::Text;
            text = Containers::StringView(value);
        }
    }

    Kind kind;
    /** Whether an integer has 64 bits; such are never characters. */
    bool wide = false;
    long long integer = 0;
    long double real = 0;
    Containers::StringView text;
};

/** A null buffer counts only. Returns the size of the text. */
std::size_t formatArguments(
    Containers::MutableStringView buffer, const char* format, const FormatArgument* arguments, std::size_t count);

} // namespace Implementation

/**
 * Text with its placeholders replaced by values.
 *
 * A placeholder is "{}", "{2}" (the third value; the next "{}" goes on from there) or "{2:.3x}" with a precision and a
 * type: c, o, d, x, X for integers, g, G, e, E, f, F for floating-point numbers. "{{" and "}}" stand for braces. A
 * placeholder without a value stays as it is. Characters and booleans are numbers; the precision of an integer is its
 * least number of digits, that of text its greatest size. A wrong type or an unfinished placeholder aborts.
 */
template <class... Args> Containers::String format(const char* format, const Args&... args) {
    const Implementation::FormatArgument arguments[]{
        Implementation::FormatArgument(args)..., Implementation::FormatArgument(0)};
    Containers::String out(NoInit, Implementation::formatArguments(nullptr, format, arguments, sizeof...(args)));
    Implementation::formatArguments({out.data(), out.size() + 1}, format, arguments, sizeof...(args));
    return out;
}

/**
 * The same into a buffer that is large enough; returns the size of the text, which gets no zero byte. Give it one byte
 * more than the text where that ends with a number.
 */
template <class... Args>
std::size_t formatInto(const Containers::MutableStringView& buffer, const char* format, const Args&... args) {
    const Implementation::FormatArgument arguments[]{
        Implementation::FormatArgument(args)..., Implementation::FormatArgument(0)};
    return Implementation::formatArguments(buffer, format, arguments, sizeof...(args));
}
template <class... Args, std::size_t size>
std::size_t formatInto(char (&buffer)[size], const char* format, const Args&... args) {
    return formatInto(Containers::MutableStringView(buffer, size), format, args...);
}

/** Into a file, or onto the standard output or error. */
template <class... Args> void formatInto(std::FILE* file, const char* format, const Args&... args) {
    const Containers::String text = Utility::format(format, args...);
    std::fwrite(text.data(), 1, text.size(), file);
}
template <class... Args> void print(const char* format, const Args&... args) { formatInto(stdout, format, args...); }
template <class... Args> void printError(const char* format, const Args&... args) {
    formatInto(stderr, format, args...);
}

} // namespace Corrade::Utility
