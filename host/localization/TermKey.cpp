#include "TermKey.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace QuorvaneEngine::TermKey {

using namespace Containers::Literals;

namespace {

/** Whether a character is written as an escape wherever it stands. */
constexpr auto EscapedEverywhere = [] {
    std::array<bool, 256> escaped{};
    for(int c = 0; c != 0x20; ++c) escaped[std::size_t(c)] = true;
    for(const char c: {'.', ':', '%', '#', '\x7f'}) escaped[static_cast<unsigned char>(c)] = true;
    return escaped;
}();

bool isControl(const char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

bool isEscaped(const char c, const bool first) {
    return EscapedEverywhere[static_cast<unsigned char>(c)] || (first && c == '[');
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

/** Whether a path has its leading blank written as an escape, which it needs behind a namespace. */
bool hasEscapedBlank(const Containers::StringView path) { return path.hasPrefix("%20"_s); }

void appendEscape(std::string& out, const char c) {
    constexpr const char* digits = "0123456789ABCDEF";
    out += '%';
    out += digits[static_cast<unsigned char>(c) >> 4];
    out += digits[static_cast<unsigned char>(c) & 15];
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

void appendSegment(std::string& key, const Containers::StringView name) {
    std::size_t plain = 0;
    for(std::size_t i = 0; i != name.size(); ++i) {
        if(!isEscaped(name[i], i == 0)) continue;
        key.append(name.data() + plain, i - plain);
        appendEscape(key, name[i]);
        plain = i + 1;
    }
    key.append(name.data() + plain, name.size() - plain);
}

Containers::String memberSegment(const Containers::StringView name) {
    std::string out;
    appendSegment(out, name);
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

Containers::String canonical(const Containers::StringView path) {
    if(hasEscapedBlank(path)) return canonical(" "_s + path.exceptPrefix(3));
    std::string out;
    out.reserve(path.size());
    Containers::StringView rest = path;
    do {
        const Containers::StringView segment = takeSegment(rest, rest);
        if(elementIndex(segment) >= 0) out.append(segment.data(), segment.size());
        else {
            const std::string name = decoded(segment);
            appendSegment(out, {name.data(), name.size()});
        }
        if(rest.data()) out += '.';
    } while(rest.data());
    return Containers::String{out.data(), out.size()};
}

bool isCanonical(const Containers::StringView path) {
    Containers::StringView rest = path;
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

Containers::StringView takeNamespace(const Containers::StringView key, Containers::StringView& path) {
    path = key;
    const void* const colon = key.isEmpty() ? nullptr : std::memchr(key.data(), ':', key.size());
    if(!colon) return nullptr;
    const std::size_t size = std::size_t(static_cast<const char*>(colon) - key.data());
    const Containers::StringView written = key.prefix(size);
    const Containers::StringView rest = key.exceptPrefix(size + 1);
    if(written.isEmpty() || written.contains(' ') || written.contains('/') || rest.hasPrefix(' ')) return nullptr;
    if(!canTakeNamespace(namespaceName(written))) return nullptr;
    path = rest;
    return written == DefaultNamespace ? Containers::StringView{} : written;
}

Containers::String namespaceName(const Containers::StringView written) {
    if(written.isEmpty()) return DefaultNamespace;
    std::string name;
    for(std::size_t i = 0; i != written.size(); ++i) {
        const int c = written.exceptPrefix(i).hasPrefix("%20"_s) ? ' ' : escapeAt(written, i);
        if(c >= 0) {
            name += char(c);
            i += 2;
        } else name += written[i];
    }
    return Containers::String{name.data(), name.size()};
}

bool canTakeNamespace(const Containers::StringView name) {
    return !name.isEmpty() && name.size() <= MaxNamespaceSize && !name.hasPrefix('.') && !name.contains('/') &&
        !name.contains('\\') && std::none_of(name.begin(), name.end(), isControl);
}

Containers::String withNamespace(const Containers::StringView name, const Containers::StringView path) {
    if(name == DefaultNamespace) return path;
    std::string key;
    for(std::size_t i = 0; i != name.size(); ++i) {
        if(name[i] == ' ' || isEscaped(name[i], i == 0)) appendEscape(key, name[i]);
        else key += name[i];
    }
    key += ':';
    const bool isBlank = path.hasPrefix(' ');
    if(isBlank) appendEscape(key, ' ');
    key.append(path.data() + isBlank, path.size() - isBlank);
    return Containers::String{key.data(), key.size()};
}

Containers::String flatKey(const Containers::StringView key) {
    std::string path;
    for(std::size_t i = 0; i != key.size(); ++i) {
        if(key.exceptPrefix(i).hasPrefix("%2E"_s)) {
            path += '.';
            i += 2;
        } else path += key[i];
    }
    return Containers::String{path.data(), path.size()};
}

Containers::String flatPath(const Containers::StringView path) {
    if(hasEscapedBlank(path)) return memberSegment(memberName(" "_s + path.exceptPrefix(3)));
    return memberSegment(memberName(path));
}

}
