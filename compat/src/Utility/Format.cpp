#include "Corrade/Utility/Format.h"

#include <algorithm>
#include <cstdio>

namespace Corrade::Utility::Implementation {

namespace {

using Kind = FormatArgument::Kind;

struct Placeholder {
    int index = -1;
    int precision = -1;
    char type = 0;
};

constexpr Containers::StringView IntegerTypes{"odxX", 4};
constexpr Containers::StringView FloatTypes{"gGeEfF", 6};

bool isFloat(Kind kind) { return kind == Kind::Float || kind == Kind::Double || kind == Kind::LongDouble; }

// The type that printf expects; aborts where it does not fit the value.
char printfType(const FormatArgument& argument, char type) {
    if(isFloat(argument.kind)) {
        CORRADE_ASSERT(type != 'c', "Utility::format(): character type used for a floating-point value", 'g');
        CORRADE_ASSERT(!type || FloatTypes.contains(type),
            "Utility::format(): integral type used for a floating-point value", 'g');
        return type ? type : 'g';
    }
    CORRADE_ASSERT(
        type != 'c' || argument.kind != Kind::Bool, "Utility::format(): character type used for a boolean value", 'd');
    CORRADE_ASSERT(type != 'c' || !argument.wide, "Utility::format(): character type used for a 64-bit value", 'd');
    CORRADE_ASSERT(!type || type == 'c' || IntegerTypes.contains(type),
        "Utility::format(): floating-point type used for an integral value", 'd');
    if(type && type != 'd') return type;
    return argument.kind == Kind::Signed ? 'd' : 'u';
}

// As snprintf: writes what fits, returns the whole size.
std::size_t formatNumber(char* out, std::size_t room, const FormatArgument& argument, const Placeholder& placeholder) {
    const char type = printfType(argument, placeholder.type);
    const int precision = placeholder.precision;
    if(type == 'c') return std::size_t(std::snprintf(out, room, "%c", int(argument.integer)));
    if(isFloat(argument.kind)) {
        const int digits = argument.kind == Kind::Float ? 6 : argument.kind == Kind::Double ? 15 : 18;
        const char pattern[]{'%', '.', '*', 'L', type, 0};
        return std::size_t(std::snprintf(out, room, pattern, precision == -1 ? digits : precision, argument.real));
    }
    // Octal and hexadecimal digits are those of the value's own width.
    const long long value = argument.wide || type == 'd' ? argument.integer : (long long)(unsigned(argument.integer));
    const char pattern[]{'%', '.', '*', 'l', 'l', type, 0};
    return std::size_t(std::snprintf(out, room, pattern, precision == -1 ? 1 : precision, value));
}

// The number at `at`, which then stands behind it; -1 where there is none.
int parseNumber(const char*& at) {
    if(*at < '0' || *at > '9') return -1;
    int number = 0;
    for(; *at >= '0' && *at <= '9'; ++at) number = number * 10 + (*at - '0');
    return number;
}

// What is between the braces; `at` then stands at the closing one.
Placeholder parsePlaceholder(const char*& at) {
    Placeholder out;
    out.index = parseNumber(at);
    if(*at == ':') {
        ++at;
        if(*at == '.') {
            ++at;
            out.precision = parseNumber(at);
            CORRADE_ASSERT(out.precision != -1,
                "Utility::format(): invalid character in precision specifier:" << Containers::StringView(
                    at, *at ? 1 : 0),
                {});
        }
        if(*at && *at != '}') {
            CORRADE_ASSERT(*at == 'c' || IntegerTypes.contains(*at) || FloatTypes.contains(*at),
                "Utility::format(): invalid type specifier:" << Containers::StringView(at, 1), {});
            out.type = *at++;
        }
    }
    CORRADE_ASSERT(*at, "Utility::format(): unexpected end of format string", {});
    CORRADE_ASSERT(*at == '}', "Utility::format(): unknown placeholder content:" << Containers::StringView(at, 1), {});
    return out;
}

// Where the text goes; counts alone where the buffer is null.
struct Writer {
    Containers::MutableStringView buffer;
    std::size_t size = 0;

    char* end() const { return buffer.data() ? buffer.data() + size : nullptr; }
    std::size_t room() const { return buffer.data() ? buffer.size() - size : 0; }
    void grow(std::size_t count) {
        CORRADE_ASSERT(!buffer.data() || count <= room(),
            "Utility::formatInto(): buffer too small, expected at least" << size + count << "but got"
                                                                         << buffer.size(), );
        size += count;
    }
    void write(Containers::StringView text) {
        char* const to = end();
        grow(text.size());
        if(to) std::copy(text.begin(), text.end(), to);
    }
    void write(const FormatArgument& argument, const Placeholder& placeholder) {
        if(argument.kind != Kind::Text) {
            grow(formatNumber(end(), room(), argument, placeholder));
            return;
        }
        CORRADE_ASSERT(!placeholder.type, "Utility::format(): type specifier can't be used for a string value", );
        write(argument.text.prefix(std::min(argument.text.size(), std::size_t(placeholder.precision))));
    }
};

} // namespace

std::size_t formatArguments(
    Containers::MutableStringView buffer, const char* format, const FormatArgument* arguments, std::size_t count) {
    Writer writer{buffer};
    std::size_t next = 0;
    for(const char* at = format; *at;) {
        if((*at == '{' || *at == '}') && at[1] == *at) {
            writer.write({at, 1});
            at += 2;
        } else if(*at == '{') {
            const char* const begin = at++;
            const Placeholder placeholder = parsePlaceholder(at);
            ++at;
            if(placeholder.index != -1) next = std::size_t(placeholder.index);
            if(next < count) writer.write(arguments[next], placeholder);
            else writer.write({begin, std::size_t(at - begin)});
            ++next;
        } else {
            CORRADE_ASSERT(*at != '}', "Utility::format(): mismatched }", {});
            const std::size_t size = std::strcspn(at, "{}");
            writer.write({at, size});
            at += size;
        }
    }
    return writer.size;
}

} // namespace Corrade::Utility::Implementation
