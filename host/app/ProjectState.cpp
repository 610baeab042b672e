#include "app/ProjectState.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Path.h>

#include "document/FileSystem.h"

namespace QuorvaneEngine {

namespace {

namespace Path = Corrade::Utility::Path;

constexpr std::uint64_t Begin = 0xcbf29ce484222325;
constexpr std::uint64_t Factor = 0x100000001b3;

void mix(std::uint64_t& state, const std::uint64_t value) { state = (state ^ value) * Factor; }

void mix(std::uint64_t& state, FileSystem& files, const Containers::StringView path) {
    for(const char byte: path) mix(state, std::uint8_t(byte));
    FileStamp stamp;
    const int error = files.stampOf(path, stamp);
    for(const std::uint64_t value: {stamp.device, stamp.file, stamp.size, std::uint64_t(stamp.changed),
            std::uint64_t(stamp.touched), std::uint64_t(error)})
        mix(state, value);
}

}

std::uint64_t projectState(FileSystem& files, const Containers::StringView folder) {
    std::uint64_t state = Begin;
    mix(state, files, Path::join(folder, "project.json"));
    const Containers::String translations = Path::join(folder, "localization");
    Containers::Array<Containers::String> names;
    files.listFolder(translations, names);
    for(const Containers::String& name: names) mix(state, files, Path::join(translations, name));
    return state ? state : 1;
}

}
