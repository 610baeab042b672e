#include "TermKey.h"

#include <cstring>
#include <string>

namespace QuorvaneEngine::TermKey {

namespace {

bool isEscaped(const char c, const bool first) {
    return c == '.' || c == ':' || c == '%' || c == '#' || (c == '[' && first) ||
        static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

int hexadecimalDigit(const char c) {
    if(c >= '0' && c <= '9') return c - '0';
    if(c >= 'A' && c <= 'F') return c - 'A' + 10;
    if(c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

/** The character that the escape at @p position stands for, -1 where there is no escape that @ref memberSegment() would write. */
int escapeAt(const Containers::StringView segment, const std::size_t position) {
    if(segment[position] != '%' || segment.size() - position < 3) return -1;
    const int high = hexadecimalDigit(segment[position + 1]);
    const int low = hexadecimalDigit(segment[position + 2]);
    if(high < 0 || low < 0) return -1;
    const int c = high * 16 + low;
    return c < 0x80 && isEscaped(char(c), position == 0) ? c : -1;
}

void appendEscape(std::string& out, const char c) {
    constexpr const char* digits = "0123456789ABCDEF";
    out += '%';
    out += digits[static_cast<unsigned char>(c) >> 4];
    out += digits[static_cast<unsigned char>(c) & 15];
}

void appendMember(std::string& out, const Containers::StringView name) {
    for(std::size_t i = 0; i != name.size(); ++i) {
        if(isEscaped(name[i], i == 0)) appendEscape(out, name[i]);
        else out += name[i];
    }
}

std::string decoded(const Containers::StringView segment) {
    std::string out;
    out.reserve(segment.size());
    for(std::size_t i = 0; i != segment.size(); ++i) {
        const int c = escapeAt(segment, i);
        if(c >= 0) {
            out += char(c);
            i += 2;
        } else out += segment[i];
    }
    return out;
}

bool isCanonicalSegment(const Containers::StringView segment) {
    if(elementIndex(segment) >= 0) return true;
    for(std::size_t i = 0; i != segment.size(); ++i) {
        if(segment[i] == '%') {
            if(escapeAt(segment, i) < 0) return false;
            for(const std::size_t digit: {i + 1, i + 2})
                if(segment[digit] >= 'a') return false;
            i += 2;
        } else if(isEscaped(segment[i], i == 0)) return false;
    }
    return true;
}

}

Containers::String memberSegment(const Containers::StringView name) {
    std::string out;
    appendMember(out, name);
    return Containers::String{out.data(), out.size()};
}

Containers::String elementSegment(const Int index) {
    const std::string out = '[' + std::to_string(index) + ']';
    return Containers::String{out.data(), out.size()};
}

Int elementIndex(const Containers::StringView segment) {
    // "[" + at most five digits + "]"
    if(segment.size() < 3 || segment.size() > 7 || segment.front() != '[' || segment.back() != ']') return -1;
    if(segment[1] == '0' && segment.size() != 3) return -1;
    Int index = 0;
    for(const char c: segment.slice(1, segment.size() - 1)) {
        if(c < '0' || c > '9') return -1;
        index = index * 10 + (c - '0');
    }
    return index < MaxElements ? index : -1;
}

Containers::String memberName(const Containers::StringView segment) {
    const std::string out = decoded(segment);
    return Containers::String{out.data(), out.size()};
}

Containers::StringView takeSegment(const Containers::StringView key, Containers::StringView& rest) {
    const void* const dot = key.isEmpty() ? nullptr : std::memchr(key.data(), '.', key.size());
    if(!dot) {
        rest = nullptr;
        return key;
    }
    const std::size_t size = std::size_t(static_cast<const char*>(dot) - key.data());
    rest = Containers::StringView{key.data() + size + 1, key.size() - size - 1};
    return key.prefix(size);
}

Containers::String canonical(const Containers::StringView key) {
    std::string out;
    out.reserve(key.size());
    Containers::StringView rest = key;
    do {
        const Containers::StringView segment = takeSegment(rest, rest);
        if(elementIndex(segment) >= 0) out.append(segment.data(), segment.size());
        else {
            const std::string name = decoded(segment);
            appendMember(out, {name.data(), name.size()});
        }
        if(rest.data()) out += '.';
    } while(rest.data());
    return Containers::String{out.data(), out.size()};
}

bool isCanonical(const Containers::StringView key) {
    Containers::StringView rest = key;
    do {
        if(!isCanonicalSegment(takeSegment(rest, rest))) return false;
    } while(rest.data());
    return true;
}

std::size_t segmentCount(const Containers::StringView key) {
    std::size_t count = 1;
    for(const char c: key) count += c == '.';
    return count;
}

}
