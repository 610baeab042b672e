#include "app/RecentProjects.h"

#include <algorithm>
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

/** Bytes; nobody has paths that need more. */
constexpr std::size_t LargestFile = 1024 * 1024;

std::vector<Containers::String> foldersIn(const rapidjson::Document& list) {
    std::vector<Containers::String> folders;
    for(const rapidjson::Value& folder: list.GetArray())
        if(folder.IsString() && folder.GetStringLength() && folders.size() != RecentProjects::MaxCount)
            folders.emplace_back(folder.GetString(), folder.GetStringLength());
    return folders;
}

/** Lets the owner of a file read it, beside whoever may. */
void makeReadable(const Containers::String& file) {
    std::error_code error;
    std::filesystem::permissions(
        file.data(), std::filesystem::perms::owner_read, std::filesystem::perm_options::add, error);
}

}

RecentProjects::RecentProjects(Containers::StringView folder): _folder{folder} {
    if(_folder.isEmpty()) return;
    _file = Path::join(_folder, "recent-projects.json");
    read();
}

void RecentProjects::read() {
    Containers::String text;
    const int failure = FileSystem::disk().readFile(_file, text, LargestFile);
    if(failure == ENOENT) return;
    rapidjson::Document document;
    JsonError error{1, 1, "the file cannot be read"};
    if(!failure && JsonReader::read(text, document, error)) {
        if(document.IsArray()) {
            _projects = foldersIn(document);
            return;
        }
        error = {1, 1, "the list is no array"};
    }
    Warning{} << "RecentProjects::read():" << _file << Warning::nospace << ":" << Warning::nospace << error.line
              << Warning::nospace << ":" << Warning::nospace << error.column << Warning::nospace << ":" << error.reason;
}

void RecentProjects::add(Containers::StringView project) {
    if(_file.isEmpty() || project.isEmpty() || !JsonReader::isUtf8(project)) return;
    const Containers::String first = project;
    read();
    _projects.erase(std::remove(_projects.begin(), _projects.end(), first), _projects.end());
    _projects.insert(_projects.begin(), first);
    if(_projects.size() > MaxCount) _projects.resize(MaxCount);
    if(!Path::make(_folder) || !write()) Warning{} << "RecentProjects::add(): cannot write" << _file;
}

bool RecentProjects::write() const {
    rapidjson::Document document{rapidjson::kArrayType};
    for(const Containers::String& project: _projects)
        document.PushBack(
            rapidjson::Value{project.data(), rapidjson::SizeType(project.size())}, document.GetAllocator());
    Containers::String text;
    Containers::String error;
    FileSystem& disk = FileSystem::disk();
    // Nobody ever finds half a file. One that was left behind may have rights that keep everybody from writing it.
    const Containers::String written = _file + ".new";
    disk.removeFile(written);
    if(!JsonWriter::write(document, {1}, text, error) || disk.writeFile(written, text, _file)) return false;
    makeReadable(written);
    return !disk.renameFile(written, _file);
}

}
