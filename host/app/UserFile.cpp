#include "app/UserFile.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "document/FileSystem.h"
#include "document/JsonReader.h"
#include "document/JsonWriter.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::Warning;
namespace Path = Corrade::Utility::Path;

/** Bytes; nobody has settings that need more. */
constexpr std::size_t LargestFile = 1024 * 1024;

/** The file that a name leads to, be it there or not. */
Containers::String targetOf(const Containers::String& path) {
    std::error_code error;
    const std::filesystem::path name{path.data()};
    if(!std::filesystem::is_symlink(name, error)) return path;
    std::filesystem::path target = std::filesystem::canonical(name, error);
    if(error) target = std::filesystem::read_symlink(name, error);
    // One that is relative is so to where the link lies.
    return error ? path : Containers::String{(name.parent_path() / target).c_str()};
}

/** Lets the owner of a file read it, beside whoever may. */
void makeReadable(const Containers::String& file) {
    std::error_code error;
    std::filesystem::permissions(
        file.data(), std::filesystem::perms::owner_read, std::filesystem::perm_options::add, error);
}

}

UserFile::UserFile(const Containers::StringView folder, const Containers::StringView name, const Links links)
    : _folder{folder}, _links{links} {
    if(!folder.isEmpty()) _path = Path::join(folder, name);
}

UserFile::Found UserFile::read(rapidjson::Document& document, JsonError& error) const {
    if(!isKept()) return Found::Nothing;
    Containers::String text;
    const int failure = FileSystem::disk().readFile(_path, text, LargestFile);
    if(failure == ENOENT) return Found::Nothing;
    error = {1, 1, "the file cannot be read"};
    return !failure && JsonReader::read(text, document, error) ? Found::Document : Found::Error;
}

void UserFile::warn(const char* const function, const JsonError& error) const {
    Warning{} << function << Warning::nospace << "():" << _path << Warning::nospace << ":" << Warning::nospace
              << error.line << Warning::nospace << ":" << Warning::nospace << error.column << Warning::nospace << ":"
              << error.reason;
}

Containers::String UserFile::replace(const rapidjson::Value& value) const {
    Containers::String text;
    Containers::String problem;
    if(!JsonWriter::write(value, {1}, text, problem)) return "cannot be written: " + problem;
    FileSystem& disk = FileSystem::disk();
    if(_links == Links::Refuse && disk.isLink(_path)) return "is a link, and nothing is written to where it leads";
    std::error_code failure;
    std::filesystem::create_directories(_folder.data(), failure);
    const Containers::String file = targetOf(_path);
    // Another program may write at the same time.
    const Containers::String written = file + ("." + std::to_string(::getpid()) + ".new").c_str();
    // One that was left behind may have rights that keep everybody from writing it.
    disk.removeFile(written);
    int error = disk.writeFile(written, text, file);
    if(!error) {
        makeReadable(written);
        error = disk.syncFile(written);
    }
    if(!error) error = disk.renameFile(written, file);
    if(!error) return {};
    disk.removeFile(written);
    return systemReason("written", error);
}

void UserFile::write(const char* const function, const rapidjson::Value& value) const {
    if(!isKept()) return;
    const Containers::String reason = replace(value);
    if(!reason.isEmpty())
        Warning{} << function << Warning::nospace << "():" << _path << Warning::nospace << ":" << reason;
}

}
