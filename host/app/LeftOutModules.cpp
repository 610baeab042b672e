#include "app/LeftOutModules.h"

#include <utility>

#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>

#include "document/JsonReader.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {

namespace {

const rapidjson::Value* memberOf(const rapidjson::Value& object, const char* const name) {
    if(!object.IsObject()) return nullptr;
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

bool readLibrary(const rapidjson::Value& entry, LoadNote::Library& library) {
    const rapidjson::Value* const file = memberOf(entry, "file");
    const rapidjson::Value* const size = memberOf(entry, "size");
    const rapidjson::Value* const changed = memberOf(entry, "changed");
    if(!file || !file->IsString() || !size || !size->IsUint64() || !changed || !changed->IsInt64()) return false;
    library.file = {file->GetString(), file->GetStringLength()};
    library.size = size->GetUint64();
    library.changed = changed->GetInt64();
    return true;
}

bool isVersion(const rapidjson::Value& document) {
    const rapidjson::Value* const version = memberOf(document, "version");
    return version && version->IsInt() && version->GetInt() == LeftOutModules::Version;
}

constexpr const char* DeathReason = "the editor died while it was loading this module";

}

LeftOutModules::LeftOutModules(const Containers::StringView folder, ModuleLoader& modules)
    : _file{folder, "left-out-modules.json"}, _modules{&modules} {
    std::vector<Entry> entries = read();
    const std::vector<LoadNote::Library> left = LoadNote::takeLeft(folder);
    for(const LoadNote::Library& library: left) put(entries, library, false);
    if(!left.empty()) write(entries);
    for(const ModuleLoader::Module& module: modules.modules()) {
        const LoadNote::Library library = LoadNote::Library::of(module.file);
        for(const Entry& entry: entries) {
            if(entry.library != library) continue;
            modules.leaveOut(module.name, DeathReason);
            if(entry.isAnswered) continue;
            _suspects.push_back(module.name);
            Corrade::Utility::Warning{} << "LeftOutModules::LeftOutModules():" << library.file
                                        << Corrade::Utility::Warning::nospace << ":" << DeathReason;
        }
    }
}

std::vector<LeftOutModules::Entry> LeftOutModules::read() {
    std::vector<Entry> entries;
    rapidjson::Document document;
    JsonError error;
    const UserFile::Found found = _file.read(document, error);
    _isForeign = false;
    if(found == UserFile::Found::Nothing) return entries;
    if(found == UserFile::Found::Document) {
        const rapidjson::Value* const list = memberOf(document, "modules");
        _isForeign = document.IsObject() && !isVersion(document);
        if(!_isForeign && list && list->IsArray()) {
            for(const rapidjson::Value& value: list->GetArray()) take(value, entries);
            return entries;
        }
        error = {1, 1, _isForeign ? "the list of modules is of another version" : "there is no list of modules"};
    }
    _file.warn("LeftOutModules::read", error);
    return entries;
}

void LeftOutModules::take(const rapidjson::Value& value, std::vector<Entry>& entries) {
    Entry entry;
    if(!readLibrary(value, entry.library) || entry.library != LoadNote::Library::of(entry.library.file)) return;
    const rapidjson::Value* const answered = memberOf(value, "answered");
    entry.isAnswered = answered && answered->IsTrue();
    entries.push_back(std::move(entry));
}

void LeftOutModules::put(std::vector<Entry>& entries, const LoadNote::Library& library, const bool isAnswered) {
    remove(entries, library);
    // It was changed since by who wants to try again.
    if(library == LoadNote::Library::of(library.file)) entries.push_back({library, isAnswered});
}

void LeftOutModules::remove(std::vector<Entry>& entries, const LoadNote::Library& library) {
    std::erase_if(entries, [&](const Entry& entry) { return entry.library.file == library.file; });
}

void LeftOutModules::write(const std::vector<Entry>& entries) const {
    if(_isForeign) return;
    rapidjson::Document document{rapidjson::kObjectType};
    rapidjson::Document::AllocatorType& allocator = document.GetAllocator();
    rapidjson::Value list{rapidjson::kArrayType};
    for(const Entry& entry: entries) {
        const LoadNote::Library& library = entry.library;
        if(!JsonReader::isUtf8(library.file)) continue;
        rapidjson::Value value{rapidjson::kObjectType};
        value.AddMember(
            "file", rapidjson::Value{library.file.data(), rapidjson::SizeType(library.file.size())}, allocator);
        value.AddMember("size", library.size, allocator);
        value.AddMember("changed", library.changed, allocator);
        value.AddMember("answered", entry.isAnswered, allocator);
        list.PushBack(value, allocator);
    }
    document.AddMember("version", Version, allocator);
    document.AddMember("modules", list, allocator);
    _file.write("LeftOutModules::write", document);
}

Containers::StringView LeftOutModules::suspect() const {
    return _suspects.empty() ? Containers::StringView{} : Containers::StringView{_suspects.front()};
}

Containers::StringView LeftOutModules::fileOf(const Containers::StringView module) const {
    for(const ModuleLoader::Module& found: _modules->modules())
        if(found.name == module) return found.file;
    return {};
}

void LeftOutModules::leaveOut(const Containers::StringView module) {
    change(module, [](std::vector<Entry>& entries, const LoadNote::Library& library) { put(entries, library, true); });
}

void LeftOutModules::putOff(const Containers::StringView module) {
    // The name may view the entry that goes away.
    const Containers::String name{module};
    std::erase_if(_suspects, [&](const Containers::String& suspect) { return suspect == name; });
}

void LeftOutModules::forget(const Containers::StringView module) { change(module, remove); }

void LeftOutModules::change(
    const Containers::StringView module, void (*const how)(std::vector<Entry>&, const LoadNote::Library&)) {
    // The name may view the entry that goes away.
    const Containers::String name{module};
    putOff(name);
    if(!_file.isKept()) return;
    // With what another editor has put there meanwhile.
    std::vector<Entry> entries = read();
    const std::vector<Entry> before = entries;
    how(entries, LoadNote::Library::of(fileOf(name)));
    if(!(entries == before)) write(entries);
}

}
