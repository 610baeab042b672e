#include "app/UserFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

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

/** Lets the owner of a file read it, beside whoever may. */
void makeReadable(const Containers::String& file) {
    std::error_code error;
    std::filesystem::permissions(
        file.data(), std::filesystem::perms::owner_read, std::filesystem::perm_options::add, error);
}

}

UserFile::UserFile(const Containers::StringView folder, const Containers::StringView name): _folder{folder} {
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

bool UserFile::replace(const rapidjson::Value& value) const {
    Containers::String text;
    Containers::String error;
    FileSystem& disk = FileSystem::disk();
    // One that was left behind may have rights that keep everybody from writing it.
    const Containers::String written = _path + ".new";
    disk.removeFile(written);
    if(!JsonWriter::write(value, {1}, text, error) || disk.writeFile(written, text, _path)) return false;
    makeReadable(written);
    return !disk.renameFile(written, _path);
}

void UserFile::write(const char* const function, const rapidjson::Value& value) const {
    if(!isKept() || (Path::make(_folder) && replace(value))) return;
    Warning{} << function << Warning::nospace << "(): cannot write" << _path;
}

}
