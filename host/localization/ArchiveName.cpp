#include "ArchiveName.h"

#include <cstdint>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <unicode/ucnv.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include "../document/JsonReader.h"
#include "ArchiveBytes.h"

namespace QuorvaneEngine::ArchiveName {

using namespace Containers::Literals;

namespace {

constexpr unsigned UnicodePath = 0x7075;

/** The name in UTF-8 that the extra field for it has, if it is of these bytes. */
Containers::StringView unicodePath(const Containers::StringView bytes, const Containers::StringView extra) {
    const ArchiveBytes field{ArchiveBytes::extraField(extra, UnicodePath)};
    if(!field.has(0, 5) || field.byte(0) != 1 || field.four(1) != ArchiveBytes::checksum(bytes)) return {};
    const Containers::StringView name = field.text(5, field.size() - 5);
    return JsonReader::isUtf8(name) ? name : Containers::StringView{};
}

using Units = std::vector<UChar>;

Units unitsOf(const Containers::StringView text) {
    // No character has more UTF-16 units than UTF-8 bytes.
    Units units(text.size() + 1);
    std::int32_t size = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units.data(), std::int32_t(units.size()), &size, text.data(), std::int32_t(text.size()),
        0xfffd, nullptr, &error);
    units.resize(std::size_t(size));
    return units;
}

/** Calls an ICU function twice, first for the size. */
template <class Convert> Units converted(const Units& from, Convert&& convert) {
    UErrorCode error = U_ZERO_ERROR;
    Units to(from.size() * 2 + 1);
    std::int32_t size = convert(from.data(), std::int32_t(from.size()), to.data(), std::int32_t(to.size()), error);
    if(error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        to.resize(std::size_t(size) + 1);
        size = convert(from.data(), std::int32_t(from.size()), to.data(), std::int32_t(to.size()), error);
    }
    to.resize(U_FAILURE(error) ? 0 : std::size_t(size));
    return U_FAILURE(error) ? from : to;
}

Units decomposed(const Units& text) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFDInstance(&error);
    if(U_FAILURE(error)) return text;
    return converted(text, [&](const UChar* from, std::int32_t size, UChar* to, std::int32_t room, UErrorCode& failed) {
        return unorm2_normalize(normalizer, from, size, to, room, &failed);
    });
}

}

bool decode(const Containers::StringView bytes, const bool isUtf8, const Containers::StringView extra,
    Containers::String& name) {
    if(JsonReader::isUtf8(bytes)) {
        name = bytes;
        return true;
    }
    if(isUtf8) return false;
    if(const Containers::StringView path = unicodePath(bytes, extra); !path.isEmpty()) {
        name = path;
        return true;
    }
    UErrorCode error = U_ZERO_ERROR;
    // No character of the code page has more than three bytes.
    Containers::Array<char> text{Corrade::ValueInit, bytes.size() * 3 + 1};
    const std::int32_t size = ucnv_convert(
        "UTF-8", "ibm-437", text.data(), std::int32_t(text.size()), bytes.data(), std::int32_t(bytes.size()), &error);
    if(U_FAILURE(error)) return false;
    name = Containers::String{text.data(), std::size_t(size)};
    return true;
}

Containers::StringView fault(const Containers::StringView name) {
    if(name.isEmpty()) return "has an entry without a name"_s;
    if(name.contains('\0')) return "has a zero byte in its name"_s;
    if(name.contains('\\')) return "has a backslash in its name"_s;
    if(name.hasPrefix('/')) return "has an absolute path"_s;
    if(name.size() >= 2 && name[1] == ':') return "begins with a drive letter"_s;
    for(const Containers::StringView part: name.split('/'))
        if(part == ".."_s) return "leads out of its folder"_s;
    return {};
}

Containers::String plain(const Containers::StringView name) {
    std::string out;
    for(const Containers::StringView part: name.split('/')) {
        if(part.isEmpty() || part == "."_s) continue;
        if(!out.empty()) out += '/';
        out.append(part.data(), part.size());
    }
    return {out.data(), out.size()};
}

std::string folded(const Containers::StringView name) {
    bool isAscii = true;
    for(const char character: name) isAscii = isAscii && !(character & 0x80);
    std::string out{name.data(), name.size()};
    if(isAscii) {
        for(char& character: out)
            if(character >= 'A' && character <= 'Z') character = char(character - 'A' + 'a');
        return out;
    }
    const Units folded = converted(decomposed(unitsOf(name)),
        [](const UChar* from, std::int32_t size, UChar* to, std::int32_t room, UErrorCode& error) {
            return u_strFoldCase(to, room, from, size, U_FOLD_CASE_DEFAULT, &error);
        });
    const Units again = decomposed(folded);
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t size = 0;
    out.resize(again.size() * 3 + 1);
    u_strToUTF8(out.data(), std::int32_t(out.size()), &size, again.data(), std::int32_t(again.size()), &error);
    out.resize(std::size_t(size));
    return out;
}

}
