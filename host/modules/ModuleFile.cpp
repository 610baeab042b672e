#include "modules/ModuleFile.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <cxxabi.h>
#include <elf.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine {

namespace {

/** Where something ends that begins at an offset; the largest number where that is none. */
std::uint64_t endOf(const std::uint64_t offset, const std::uint64_t size) {
    const std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
    return size > limit - offset ? limit : offset + size;
}

/** The bytes that a library has at least, as far as what is there of it tells.
    @param size     of the file */
std::uint64_t neededSize(std::ifstream& file, const std::uint64_t size) {
    Elf64_Ehdr header{};
    file.read(reinterpret_cast<char*>(&header), sizeof(header));
    const auto read = std::size_t(file.gcount());
    if(read < SELFMAG || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return 0;
    if(read < sizeof(header)) return sizeof(header);
    if(header.e_ident[EI_CLASS] != ELFCLASS64) return 0;

    const std::uint64_t segmentsEnd = endOf(header.e_phoff, std::uint64_t{header.e_phnum} * header.e_phentsize);
    const std::uint64_t sectionsEnd = endOf(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize);
    std::uint64_t needed = std::max({std::uint64_t{sizeof(header)}, segmentsEnd, sectionsEnd});
    if(segmentsEnd > size || header.e_phentsize != sizeof(Elf64_Phdr)) return needed;
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    file.seekg(std::streamoff(header.e_phoff));
    file.read(reinterpret_cast<char*>(segments.data()), std::streamsize(segments.size() * sizeof(Elf64_Phdr)));
    for(const Elf64_Phdr& segment: segments) needed = std::max(needed, endOf(segment.p_offset, segment.p_filesz));
    return needed;
}

bool isSymbolPart(const char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
}

}

Containers::String fileProblem(const Containers::StringView libraryFile) {
    const std::string path = libraryFile;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if(error) return {};
    std::ifstream file{path, std::ios::binary};
    const std::uint64_t needed = neededSize(file, size);
    if(needed <= size) return {};
    return Containers::String{"its library has " + std::to_string(size) + " bytes of at least " +
        std::to_string(needed) + ": it is still being written, or not all of it was copied"};
}

Containers::String withReadableSymbols(const Containers::StringView message) {
    const std::string text = message;
    std::string readable;
    for(std::size_t at = 0; at != text.size();) {
        const auto end =
            std::size_t(std::find_if_not(text.begin() + std::ptrdiff_t(at), text.end(), isSymbolPart) - text.begin());
        if(end == at) {
            readable += text[at++];
            continue;
        }
        const std::string word = text.substr(at, end - at);
        int status = -1;
        std::unique_ptr<char, decltype(&std::free)> name{nullptr, &std::free};
        if(word.rfind("_Z", 0) == 0) name.reset(abi::__cxa_demangle(word.c_str(), nullptr, nullptr, &status));
        readable += name ? name.get() : word;
        at = end;
    }
    return Containers::String{readable};
}

}
