#include "Corrade/Utility/Path.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/Containers/Pair.h"
#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringIterable.h"
#include "Corrade/Utility/Debug.h"

namespace Corrade::Utility::Path {

using namespace Containers::Literals;
using Containers::Array;
using Containers::Optional;
using Containers::Pair;
using Containers::String;
using Containers::StringView;

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Views need not end with a zero byte, the system's functions want one.
String terminated(StringView text) { return String::nullTerminatedView(text); }

File open(StringView filename, const char* mode) { return File(std::fopen(terminated(filename).data(), mode)); }

// The second half of every message: number and text of the last error.
void printError(Error& error, int number) {
    error << "error" << number << "(" << Debug::nospace << std::strerror(number) << Debug::nospace << ")";
}

bool isDirectory(std::FILE* file) {
    struct stat status;
    return fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode);
}

// False where the message has been printed: "Utility::Path::<function>(): can't <what> <name>: error ...".
template <class T> T failed(StringView function, StringView what, StringView name, T result) {
    const int number = errno;
    Error error;
    error << "Utility::Path::" << Debug::nospace << function << Debug::nospace << "(): can't" << what << name
          << Debug::nospace << ":";
    printError(error, number);
    return result;
}

bool writeWith(StringView function, const char* mode, StringView filename, Containers::ArrayView<const void> data) {
    const File file = open(filename, mode);
    if(!file) return failed(function, "open", filename, false);
    std::fwrite(data.data(), 1, data.size(), file.get());
    return true;
}

// Reads until the end, whatever the size says: files of /proc claim to be empty. A zero byte is added behind the text.
Optional<Array<char>> readTerminated(StringView filename) {
    const File file = open(filename, "rb");
    if(!file) return failed("read", "open", filename, Optional<Array<char>>{});
    if(isDirectory(file.get())) {
        Error{} << "Utility::Path::read():" << filename << "is a directory";
        return {};
    }
    struct stat status;
    const std::size_t expected = fstat(fileno(file.get()), &status) == 0 ? std::size_t(status.st_size) : 0;
    Array<char> out;
    Containers::arrayReserve(out, expected + 1);
    for(;;) {
        const std::size_t before = out.size();
        // Exactly the expected size first, then whole pages: mostly one allocation, and one read that finds the end.
        const std::size_t room = std::max<std::size_t>(Containers::arrayCapacity(out) - before, before ? 4096 : 1);
        const auto part = Containers::arrayAppend(out, NoInit, room);
        const std::size_t count = std::fread(part.data(), 1, room, file.get());
        if(count == room) continue;
        Containers::arrayRemoveSuffix(out, room - count);
        break;
    }
    Containers::arrayAppend(out, '\0');
    return Containers::optional(std::move(out));
}

} // namespace

StringView fromNativeSeparators(StringView path) { return path; }

StringView toNativeSeparators(StringView path) { return path; }

Pair<StringView, StringView> split(StringView path) {
    const StringView slash = path.findLastOr('/', path.begin());
    const StringView withSlash = path.prefix(slash.end());
    const bool root = withSlash == "/"_s || withSlash == "//"_s;
    return {root ? withSlash : path.prefix(slash.begin()), path.suffix(slash.end())};
}

StringView path(StringView filename) { return split(filename).first(); }

StringView filename(StringView path) { return split(path).second(); }

Pair<StringView, StringView> splitExtension(StringView path) {
    const StringView name = filename(path);
    const StringView dot = name.trimmedPrefix("."_s).findLastOr('.', name.end());
    return {path.prefix(dot.begin()), path.suffix(dot.begin())};
}

String join(StringView path, StringView filename) {
    if(path.isEmpty() || filename.hasPrefix('/')) return filename;
    return path + (path.hasSuffix('/') ? ""_s : "/"_s) + filename;
}

String join(const Containers::StringIterable& paths) {
    String out;
    for(StringView path: paths) out = join(out, path);
    return out;
}

bool exists(StringView filename) { return access(terminated(filename).data(), F_OK) == 0; }

bool isDirectory(StringView path) {
    struct stat status;
    return stat(terminated(path).data(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool make(StringView path) {
    path = path.trimmedSuffix("/"_s);
    if(path.isEmpty()) return true;
    const StringView parent = Path::path(path);
    if(!parent.isEmpty() && !exists(parent) && !make(parent)) return false;
    if(mkdir(terminated(path).data(), 0777) == 0) return true;
    if(errno != EEXIST) return failed("make", "create", path, false);
    if(isDirectory(path)) return true;
    Error{} << "Utility::Path::make():" << path << "exists but is not a directory";
    return false;
}

bool remove(StringView path) {
    return std::remove(terminated(path).data()) == 0 || failed("remove", "remove", path, false);
}

bool move(StringView from, StringView to) {
    if(std::rename(terminated(from).data(), terminated(to).data()) == 0) return true;
    const int number = errno;
    Error error;
    error << "Utility::Path::move(): can't move" << from << "to" << to << Debug::nospace << ":";
    printError(error, number);
    return false;
}

bool copy(StringView from, StringView to) {
    const auto cannotOpen = [](StringView name, StringView purpose) {
        const int number = errno;
        Error error;
        error << "Utility::Path::copy(): can't open" << name << purpose;
        printError(error, number);
        return false;
    };
    const File in = open(from, "rb");
    if(!in) return cannotOpen(from, "for reading:");
    if(isDirectory(in.get())) {
        Error{} << "Utility::Path::copy(): can't read from" << from << "which is a directory";
        return false;
    }
    const File out = open(to, "wb");
    if(!out) return cannotOpen(to, "for writing:");
    const Array<char> buffer(NoInit, 128 * 1024);
    while(const std::size_t count = std::fread(const_cast<char*>(buffer.data()), 1, buffer.size(), in.get()))
        std::fwrite(buffer.data(), 1, count, out.get());
    return true;
}

Optional<String> libraryLocation(const void* address) {
    Dl_info info{};
    if(!dladdr(address, &info)) {
        Error{} << "Utility::Path::libraryLocation(): can't get library location";
        return {};
    }
    return String(info.dli_fname);
}

Optional<String> executableLocation() {
    char path[4096];
    const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
    if(size == -1) return failed("executableLocation", "read", "/proc/self/exe", Optional<String>{});
    return String(path, std::size_t(size));
}

Optional<String> currentDirectory() {
    const std::unique_ptr<char, void (*)(void*)> path(getcwd(nullptr, 0), std::free);
    if(path) return String(path.get());
    const int number = errno;
    Error error;
    error << "Utility::Path::currentDirectory():";
    printError(error, number);
    return {};
}

Optional<String> homeDirectory() {
    if(const char* home = std::getenv("HOME")) return String(home);
    Error{} << "Utility::Path::homeDirectory(): $HOME not available";
    return {};
}

Optional<String> configurationDirectory(StringView name) {
    String lowercase = name;
    for(char& c: lowercase) {
        if(c >= 'A' && c <= 'Z') c = char(c + ('a' - 'A'));
    }
    if(const char* configuration = std::getenv("XDG_CONFIG_HOME")) return join(configuration, lowercase);
    if(const char* home = std::getenv("HOME")) return join({home, ".config"_s, lowercase});
    Error{} << "Utility::Path::configurationDirectory(): neither $XDG_CONFIG_HOME nor $HOME available";
    return {};
}

Optional<String> temporaryDirectory() { return String("/tmp"_s); }

Optional<Array<String>> list(StringView path, ListFlags flags) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(terminated(path).data()), closedir);
    if(!directory) return failed("list", "list", path, Optional<Array<String>>{});

    Array<String> out;
    while(const dirent* entry = readdir(directory.get())) {
        const StringView name = entry->d_name;
        if(flags >= ListFlag::SkipDotAndDotDot && (name == "."_s || name == ".."_s)) continue;
        if(flags & (ListFlag::SkipFiles | ListFlag::SkipDirectories | ListFlag::SkipSpecial)) {
            struct stat status;
            // A link that leads nowhere is none of these kinds.
            if(fstatat(dirfd(directory.get()), entry->d_name, &status, 0) == 0) {
                const ListFlag kind = S_ISDIR(status.st_mode) ? ListFlag::SkipDirectories
                    : S_ISREG(status.st_mode)                 ? ListFlag::SkipFiles
                                                              : ListFlag::SkipSpecial;
                if(flags >= kind) continue;
            }
        }
        Containers::arrayAppend(out, name);
    }
    if(flags >= ListFlag::SortAscending) std::sort(out.begin(), out.end());
    else if(flags >= ListFlag::SortDescending)
        std::sort(out.begin(), out.end(), [](StringView a, StringView b) { return a > b; });
    return Containers::optional(std::move(out));
}

Optional<std::size_t> size(StringView filename) {
    const File file = open(filename, "rb");
    if(!file) return failed("size", "open", filename, Optional<std::size_t>{});
    if(isDirectory(file.get())) {
        Error{} << "Utility::Path::size():" << filename << "is a directory";
        return {};
    }
    if(lseek(fileno(file.get()), 0, SEEK_END) != -1) return std::size_t(lseek(fileno(file.get()), 0, SEEK_END));
    Error{} << "Utility::Path::size():" << filename << "is not seekable";
    return {};
}

Optional<std::int64_t> lastModification(StringView filename) {
    struct stat status;
    if(stat(terminated(filename).data(), &status) != 0)
        return failed("lastModification", "stat", filename, Optional<std::int64_t>{});
    return std::int64_t(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

Optional<Array<char>> read(StringView filename) {
    Optional<Array<char>> out = readTerminated(filename);
    if(out) Containers::arrayRemoveSuffix(*out);
    return out;
}

Optional<String> readString(StringView filename) {
    Optional<Array<char>> text = readTerminated(filename);
    if(!text) return {};
    const std::size_t size = text->size() - 1;
    const auto deleter = text->deleter();
    return String(text->release(), size, deleter);
}

bool write(StringView filename, Containers::ArrayView<const void> data) {
    return writeWith("write", "wb", filename, data);
}

bool append(StringView filename, Containers::ArrayView<const void> data) {
    return writeWith("append", "ab", filename, data);
}

} // namespace Corrade::Utility::Path
