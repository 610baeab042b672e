#include "modules/LoadNote.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Debug.h>

#include "document/FileSystem.h"
#include "document/TextLines.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::Warning;

constexpr std::string_view Format{"quorvane-loading 1"};
constexpr std::string_view Name{"loading-"};

/** Bytes; no path is longer. */
constexpr std::size_t LargestFile = 8192;

Containers::String string(const std::string_view text) { return {text.data(), text.size()}; }

template <class T> bool readNumber(const std::string_view text, T& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size() && number >= 0;
}

bool readLibrary(const Containers::StringView text, LoadNote::Library& library) {
    const std::vector<std::string_view> lines = linesOf({text.data(), text.size()});
    if(lines.size() != 4 || lines[0] != Format || lines[3].empty()) return false;
    library.file = string(lines[3]);
    return readNumber(lines[1], library.size) && readNumber(lines[2], library.changed);
}

bool isAlive(const std::string_view number) {
    pid_t process = 0;
    return readNumber(number, process) && process && !(::kill(process, 0) && errno == ESRCH);
}

/** @return whether there is something to be told */
bool takeOne(const std::string& path, const std::string_view process, LoadNote::Library& library) {
    const int file = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    // Who is at work holds the lock.
    bool isLeft = file != -1 && ::flock(file, LOCK_EX | LOCK_NB) == 0;
    Containers::String text;
    const int error = isLeft ? FileSystem::disk().readFile(string(path), text, LargestFile) : 0;
    // Between making and locking it there is a moment.
    isLeft = isLeft && (error || !text.isEmpty() || !isAlive(process));
    const bool isKnown = isLeft && !error && readLibrary(text, library);
    if(isLeft) ::unlink(path.c_str());
    if(file != -1) ::close(file);
    if(isLeft && !isKnown && (error || !text.isEmpty()))
        Warning{} << "LoadNote::takeLeft():" << path.c_str() << Warning::nospace << ": is no note of a module";
    return isKnown;
}

}

LoadNote::Library LoadNote::Library::of(const Containers::StringView file) {
    std::error_code error;
    const std::filesystem::path path =
        std::filesystem::absolute(std::string{file.data(), file.size()}, error).lexically_normal();
    Library library;
    library.file = error ? Containers::String{file} : string(path.string());
    FileStamp stamp;
    if(FileSystem::disk().stampOf(library.file, stamp) == 0) {
        library.size = stamp.size;
        library.changed = stamp.changed;
    }
    return library;
}

void LoadNote::begin(const Containers::StringView file) {
    if(_depth++ || _folder.isEmpty()) return;
    const Library library = Library::of(file);
    const std::string folder{_folder.data(), _folder.size()};
    const std::string path = folder + "/" + std::string{Name} + std::to_string(::getpid());
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    // One of this name is of a program that is gone, and nobody has looked for it since.
    ::unlink(path.c_str());
    _lock = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    int error = _lock == -1 ? errno : 0;
    if(!error) {
        ::flock(_lock, LOCK_EX);
        std::string text{Format};
        for(const std::string& line: {std::to_string(library.size), std::to_string(library.changed),
                std::string{library.file.data(), library.file.size()}})
            text.append("\n").append(line);
        text += '\n';
        const ssize_t written = ::write(_lock, text.data(), text.size());
        if(written != ssize_t(text.size())) error = written < 0 ? errno : ENOSPC;
    }
    if(error && !std::exchange(_hasFailed, true))
        Warning{} << "LoadNote::begin():" << path.c_str() << Warning::nospace << ":" << systemReason("written", error)
                  << Warning::nospace << "; a module that the editor dies with is not named at the next start";
}

void LoadNote::end() {
    if(--_depth || _lock == -1) return;
    const std::string path =
        std::string{_folder.data(), _folder.size()} + "/" + std::string{Name} + std::to_string(::getpid());
    ::unlink(path.c_str());
    ::close(std::exchange(_lock, -1));
}

std::vector<LoadNote::Library> LoadNote::takeLeft(const Containers::StringView folder) {
    std::vector<Library> libraries;
    Containers::Array<Containers::String> names;
    if(folder.isEmpty() || FileSystem::disk().listFolder(folder, names)) return libraries;
    for(const Containers::String& name: names) {
        const std::string_view all{name.data(), name.size()};
        if(!all.starts_with(Name)) continue;
        Library library;
        const std::string path = std::string{folder.data(), folder.size()}.append("/").append(all);
        if(takeOne(path, all.substr(Name.size()), library)) libraries.push_back(std::move(library));
    }
    return libraries;
}

}
