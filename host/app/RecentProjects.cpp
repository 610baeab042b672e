#include "app/RecentProjects.h"

#include <algorithm>

#include <rapidjson/document.h>

#include "document/JsonReader.h"

namespace QuorvaneEngine {

namespace {

std::vector<Containers::String> foldersIn(const rapidjson::Document& list) {
    std::vector<Containers::String> folders;
    for(const rapidjson::Value& folder: list.GetArray())
        if(folder.IsString() && folder.GetStringLength() && folders.size() != RecentProjects::MaxCount)
            folders.emplace_back(folder.GetString(), folder.GetStringLength());
    return folders;
}

}

RecentProjects::RecentProjects(Containers::StringView folder): _file{folder, "recent-projects.json"} { read(); }

void RecentProjects::read() {
    rapidjson::Document document;
    JsonError error;
    const UserFile::Found found = _file.read(document, error);
    if(found == UserFile::Found::Nothing) return;
    if(found == UserFile::Found::Document) {
        if(document.IsArray()) {
            _projects = foldersIn(document);
            return;
        }
        error = {1, 1, "the list is no array"};
    }
    _file.warn("RecentProjects::read", error);
}

void RecentProjects::add(Containers::StringView project) {
    if(!_file.isKept() || project.isEmpty() || !JsonReader::isUtf8(project)) return;
    const Containers::String first = project;
    read();
    _projects.erase(std::remove(_projects.begin(), _projects.end(), first), _projects.end());
    _projects.insert(_projects.begin(), first);
    if(_projects.size() > MaxCount) _projects.resize(MaxCount);
    write();
}

void RecentProjects::write() const {
    rapidjson::Document document{rapidjson::kArrayType};
    for(const Containers::String& project: _projects)
        document.PushBack(
            rapidjson::Value{project.data(), rapidjson::SizeType(project.size())}, document.GetAllocator());
    _file.write("RecentProjects::add", document);
}

}
