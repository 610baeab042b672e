#include "ProjectStorage.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <Corrade/Utility/Debug.h>

#include <rapidjson/document.h>

#include "../localization/Fingerprint.h"
#include "FileSet.h"
#include "JsonReader.h"
#include "JsonWriter.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view ProjectName{"project.json"};
constexpr std::string_view TranslationsFolder{"localization"};
constexpr std::string_view Suffix{".json"};

/** So that each term, each language and each resource has a line of its own. */
constexpr UnsignedInt ProjectLevels = 3;
constexpr UnsignedInt TranslationsLevels = 1;

std::string_view view(Containers::StringView text) { return {text.data(), text.size()}; }

Containers::String string(std::string_view text) { return {text.data(), text.size()}; }

template <class... T> Containers::String joined(const T&... parts) {
    std::string text;
    (text.append(parts), ...);
    return string(text);
}

bool warn(const char* function, const FileError& error) {
    const Containers::String message = joined(function, view(error.path), ": ", view(error.reason));
    Corrade::Utility::Warning{} << message;
    return false;
}

constexpr const char* Open = "ProjectStorage::open(): ";
constexpr const char* Save = "ProjectStorage::save(): ";

/** A project's folder by its absolute path, without "/" at the end. */
bool absoluteFolder(const Containers::StringView folder, Containers::String& path, FileError& error) {
    std::error_code failure;
    std::filesystem::path absolute;
    // The system would take the name up to the NUL for the whole.
    if(view(folder).find('\0') == std::string_view::npos)
        absolute = std::filesystem::absolute(view(folder), failure).lexically_normal();
    if(failure || absolute.empty()) {
        error = {folder, "is no folder's name"};
        return false;
    }
    std::string name = absolute.generic_string();
    if(name.size() > 1 && name.ends_with('/')) name.pop_back();
    path = string(name);
    return true;
}

/** @param name     of the file in its folder
    @param known    learns of it */
bool readObject(FileSystem& files, KnownFiles& known, const Containers::StringView folder,
    const Containers::StringView name, rapidjson::Document& document, FileError& error) {
    const Containers::String path = joined(view(folder), "/", view(name));
    const FileStamp stamp = known.stampOf(name);
    Containers::String bytes;
    if(const int failure = files.readFile(path, bytes)) {
        error = {path, systemReason("read", failure)};
        return false;
    }
    known.noteRead(name, stamp, bytes);
    JsonError jsonError;
    if(JsonReader::readObject(bytes, document, jsonError)) return true;
    error.path = joined(view(path), ":", std::to_string(jsonError.line), ":", std::to_string(jsonError.column));
    error.reason = jsonError.reason;
    return false;
}

/** The member of an object with a key, which is added as an empty object where it is missing. */
rapidjson::Value& memberOf(rapidjson::Value& object, rapidjson::Document& document, const char* key) {
    if(!object.HasMember(key))
        object.AddMember(rapidjson::StringRef(key), rapidjson::Value{rapidjson::kObjectType}, document.GetAllocator());
    return object[key];
}

const rapidjson::Value* memberOf(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    return found == object.MemberEnd() || !found->value.IsObject() ? nullptr : &found->value;
}

/** Puts what a file of translations holds at its place in the document.
    @return why it cannot be put there, null where it can */
const char* insert(rapidjson::Document& document, std::string_view code, rapidjson::Value& translations) {
    rapidjson::Value& localization = memberOf(document, document, "localization");
    if(!localization.IsObject()) return "\"/localization\" of project.json is no object to hold this";
    rapidjson::Value& all = memberOf(localization, document, "translations");
    if(!all.IsObject()) return "\"/localization/translations\" of project.json is no object to hold this";
    rapidjson::Value name{code.data(), rapidjson::SizeType(code.size()), document.GetAllocator()};
    if(all.HasMember(name)) return "project.json holds translations into this language, too";
    all.AddMember(name, translations, document.GetAllocator());
    return nullptr;
}

/** Texts of the default language are those of its terms; what stands among the translations is read by nobody. */
void warnOfDefaultLanguage(const Containers::StringView folder, const rapidjson::Document& document) {
    const rapidjson::Value* const localization = memberOf(document, "localization");
    const rapidjson::Value* const all = localization ? memberOf(*localization, "translations") : nullptr;
    const rapidjson::Value* const languages = memberOf(document, "languages");
    if(!all || !languages) return;
    for(const auto& language: languages->GetObject()) {
        if(!language.value.IsObject()) continue;
        const auto isDefault = language.value.FindMember("isDefault");
        if(isDefault == language.value.MemberEnd() || !isDefault->value.IsTrue()) continue;
        const rapidjson::Value* const texts = memberOf(*all, language.name.GetString());
        if(!texts || texts->ObjectEmpty()) return;
        warn(Open,
            {joined(view(folder), "/", TranslationsFolder, "/", language.name.GetString(), Suffix),
                "is of the default language, whose texts are those of the terms in project.json: it is passed over"});
        return;
    }
}

/** @param count    number of files that were read */
bool readTranslations(FileSystem& files, KnownFiles& known, Containers::StringView folder,
    rapidjson::Document& document, std::size_t& count, FileError& error) {
    const Containers::String parent = joined(view(folder), "/", TranslationsFolder);
    Containers::Array<Containers::String> names;
    const int failure = files.listFolder(parent, names);
    if(failure == ENOENT) return true;
    if(failure) {
        error = {parent, systemReason("read", failure)};
        return false;
    }
    for(const Containers::String& file: names) {
        const std::string_view name = view(file);
        if(name.starts_with('.') || !name.ends_with(Suffix)) continue;
        const Containers::String path = joined(view(parent), "/", name);
        const std::string_view code = name.substr(0, name.size() - Suffix.size());
        if(!ProjectStorage::isLanguageCode(string(code))) {
            error = {path, "is not named by a language code"};
            return false;
        }
        rapidjson::Document translations{&document.GetAllocator()};
        if(!readObject(files, known, folder, joined(TranslationsFolder, "/", name), translations, error)) return false;
        if(const char* const reason = insert(document, code, translations)) {
            error = {path, reason};
            return false;
        }
        ++count;
    }
    return true;
}

}

struct ProjectStorage::File {
    Containers::String path;
    Containers::String bytes;
};

bool ProjectStorage::Fingerprint::operator==(const Fingerprint& other) const {
    return path == other.path && size == other.size && hash == other.hash;
}

ProjectStorage::ProjectStorage(FileSystem& files): _files{&files}, _known{files, {}} {}

ProjectStorage::~ProjectStorage() = default;

bool ProjectStorage::isLanguageCode(const Containers::StringView text) {
    constexpr std::size_t MaxSize = 35;
    if(text.isEmpty() || text.size() > MaxSize) return false;
    std::size_t subtagSize = 0;
    bool isFirst = true;
    for(const char character: view(text)) {
        const auto byte = static_cast<unsigned char>(character);
        if(character == '-') {
            if(subtagSize < (isFirst ? 2 : 1)) return false;
            subtagSize = 0;
            isFirst = false;
        } else if(byte < 0x80 && (isFirst ? std::isalpha(byte) : std::isalnum(byte))) {
            if(++subtagSize > 8) return false;
        } else return false;
    }
    return subtagSize >= (isFirst ? 2 : 1);
}

bool ProjectStorage::hasLock(const Containers::StringView folder) const {
    return (_lock && _lock->isTaken(folder)) || (_nextLock && _nextLock->isTaken(folder));
}

bool ProjectStorage::lock(const Containers::StringView folder) {
    Containers::String path;
    FileError error;
    return absoluteFolder(folder, path, error) && take(path, ProjectLock::Making::No, error) ? true : warn(Open, error);
}

bool ProjectStorage::tryLock(const Containers::StringView folder, FileError& refusal) {
    Containers::String path;
    FileError ignored;
    if(!absoluteFolder(folder, path, ignored)) return true;
    FileStamp stamp;
    const bool isProject = path == _folder || _files->stampOf(joined(view(path), "/", ProjectName), stamp) == 0;
    return take(path, isProject ? ProjectLock::Making::Yes : ProjectLock::Making::No, refusal);
}

bool ProjectStorage::take(const Containers::String& path, const ProjectLock::Making making, FileError& error) {
    if(hasLock(path)) return true;
    Containers::Pointer<ProjectLock> lock{Corrade::InPlaceInit, *_files};
    if(!lock->take(path, making, error)) return false;
    Containers::Pointer<ProjectLock>& place = path == _folder ? _lock : _nextLock;
    // One that was lost takes nothing with it that is told from now on.
    place = nullptr;
    lock->announce();
    place = std::move(lock);
    return true;
}

/** The lock follows the project that is open. */
void ProjectStorage::keepLock() {
    if(_nextLock && _nextLock->isTaken(_folder)) _lock = std::move(_nextLock);
    else if(!isLocked()) _lock = nullptr;
    _nextLock = nullptr;
}

/** Who only reads waits for nobody, but does not meddle with what another program is about to save. */
bool ProjectStorage::recover(const Containers::StringView folder, FileError& error) const {
    Containers::Array<Containers::String> names;
    const Containers::String stage = joined(view(folder), "/", FileSet::ProjectStage.folder);
    ProjectLock taken{*_files};
    return (_files->listFolder(stage, names) == ENOENT || hasLock(folder) ||
               taken.take(folder, ProjectLock::Making::No, error)) &&
        FileSet::recover(*_files, folder, error);
}

bool ProjectStorage::open(const Containers::StringView folder, rapidjson::Document& document) {
    FileError error;
    Containers::String newFolder;
    if(!absoluteFolder(folder, newFolder, error)) return warn(Open, error);

    rapidjson::Document read{&document.GetAllocator()};
    std::size_t translationCount = 0;
    std::vector<File> files;
    KnownFiles known{*_files, newFolder};
    if(!recover(newFolder, error) || !readObject(*_files, known, newFolder, string(ProjectName), read, error) ||
        !readTranslations(*_files, known, newFolder, read, translationCount, error) || !write(read, files, error)) {
        _nextLock = nullptr;
        return warn(Open, error);
    }

    warnOfDefaultLanguage(newFolder, read);
    static_cast<rapidjson::Value&>(document).Swap(read);
    _folder = newFolder;
    _known = std::move(known);
    keepLock();
    _saved = fingerprints(files);
    _savedState = stateOf(_saved);
    // Translations in the project's own file will get files of theirs by the next save, which has to write all of them then.
    if(files.size() != translationCount + 1) _saved.clear();
    return true;
}

bool ProjectStorage::save(const rapidjson::Document& document) {
    if(_folder.isEmpty()) {
        Corrade::Utility::Warning{} << "ProjectStorage::save(): the project has no folder";
        return false;
    }

    FileError error;
    std::vector<File> files;
    if(!write(document, files, error)) {
        error.path = joined(view(_folder), "/", view(error.path));
        return warn(Save, error);
    }

    const bool isGone = _known.isMissing(string(ProjectName)) && _known.look() == DiskState::Gone;
    if(isGone) {
        _saved.clear();
        // Where it cannot be made, the files cannot, and that is told.
        _files->makeFolder(_folder);
    }
    std::vector<Fingerprint> current = fingerprints(files);
    if(isSaved(current)) return true;
    ProjectLock taken{*_files};
    ProjectLock& lock = _lock ? *_lock : taken;
    if(!lock.takeForSaving(_folder, error) || !finishEarlier(error) || !put(files, current, error))
        return warn(Save, error);
    // Files that are gone with it are missed no longer.
    if(isGone) _known.learn();
    _saved = std::move(current);
    _savedState = stateOf(_saved);
    return true;
}

bool ProjectStorage::put(const std::vector<File>& files, const std::vector<Fingerprint>& current, FileError& error) {
    FileSet set{*_files, _folder};
    std::vector<const File*> written;
    std::vector<Containers::StringView> removed;
    for(std::size_t i = 0; i != files.size(); ++i)
        if(std::find(_saved.begin(), _saved.end(), current[i]) == _saved.end()) written.push_back(&files[i]);
    for(const Fingerprint& old: _saved) {
        const auto isSame = [&old](const Fingerprint& file) { return file.path == old.path; };
        if(std::none_of(current.begin(), current.end(), isSame)) removed.emplace_back(old.path);
    }
    for(const File* const file: written) {
        if(!mayReplace(file->path, error)) return false;
        set.write(file->path, file->bytes);
    }
    for(const Containers::StringView path: removed) {
        if(!mayReplace(path, error)) return false;
        set.remove(path);
    }
    if(!set.commit(error)) return false;
    for(const File* const file: written) _known.noteWritten(file->path, file->bytes);
    for(const Containers::StringView path: removed) _known.noteRemoved(path);
    return true;
}

bool ProjectStorage::finishEarlier(FileError& error) {
    bool isFound = false;
    Journal journal;
    if(!FileSet::findJournal(*_files, _folder, FileSet::ProjectStage, isFound, journal, error)) return false;
    if(!isFound) return true;
    if(!FileSet::recover(*_files, _folder, error)) return false;
    // These files hold what a save has put there, before or after it; what became of others is not its doing.
    std::vector<Containers::String> paths;
    for(const Journal::Entry& entry: journal.entries) paths.push_back(entry.path);
    keep(_known.learn(paths));
    return true;
}

bool ProjectStorage::mayReplace(const Containers::StringView path, FileError& error) {
    if(!_known.isForeign(path)) return true;
    error = {joined(view(_folder), "/", view(path)),
        "was changed by another program since it was read, and is not written over"};
    return false;
}

void ProjectStorage::keepDocument() { keep(_known.learn()); }

void ProjectStorage::keep(const std::vector<KnownFiles::Difference>& differences) {
    for(const KnownFiles::Difference& difference: differences) {
        std::erase_if(_saved, [&](const Fingerprint& saved) { return saved.path == difference.path; });
        // No content has this, so the file will be written, or removed.
        if(difference.isThere) _saved.push_back({difference.path, 0, 0});
    }
}

bool ProjectStorage::isSaved(const rapidjson::Document& document) const {
    FileError error;
    std::vector<File> files;
    if(!write(document, files, error)) return false;
    return isSaved(fingerprints(files));
}

bool ProjectStorage::isSaved(const std::vector<Fingerprint>& current) const {
    return std::is_permutation(current.begin(), current.end(), _saved.begin(), _saved.end());
}

void ProjectStorage::setSaved(const rapidjson::Document& document) {
    FileError error;
    std::vector<File> files;
    _saved.clear();
    if(write(document, files, error)) _saved = fingerprints(files);
}

void ProjectStorage::makeEditorFolder() {
    FileError error;
    ProjectLock taken{*_files};
    if(isLocked() || taken.take(_folder, ProjectLock::Making::No, error))
        FileSet::makeEditorFolder(*_files, _folder, error);
}

bool ProjectStorage::write(const rapidjson::Document& document, std::vector<File>& files, FileError& error) {
    if(!document.IsObject()) {
        error = {string(ProjectName), "the root is no object"};
        return false;
    }

    std::vector<const rapidjson::Value*> elsewhere;
    const auto append = [&files, &error](const Containers::String& path, const rapidjson::Value& value,
                            const JsonWriter::Layout& layout) {
        Containers::String bytes;
        if(!JsonWriter::write(value, layout, bytes, error.reason)) {
            error.path = path;
            return false;
        }
        files.push_back({path, std::move(bytes)});
        return true;
    };

    const rapidjson::Value* const localization = memberOf(document, "localization");
    if(const rapidjson::Value* const all = localization ? memberOf(*localization, "translations") : nullptr) {
        for(const auto& member: all->GetObject()) {
            const std::string_view code{member.name.GetString(), member.name.GetStringLength()};
            if(!member.value.IsObject() || !isLanguageCode(string(code))) continue;
            if(!append(joined(TranslationsFolder, "/", code, Suffix), member.value, {TranslationsLevels, true, {}}))
                return false;
            elsewhere.push_back(&member.value);
        }
        if(!elsewhere.empty() && elsewhere.size() == all->MemberCount()) elsewhere = {all};
    }
    return append(string(ProjectName), document,
        {ProjectLevels, false, Containers::arrayView(elsewhere.data(), elsewhere.size())});
}

Containers::String ProjectStorage::stateOf(const std::vector<Fingerprint>& files) {
    // In whatever order the document has the languages.
    std::vector<std::string> names;
    names.reserve(files.size());
    for(const Fingerprint& file: files)
        names.push_back(
            std::string{view(file.path)} + ' ' + std::to_string(file.size) + ' ' + std::to_string(file.hash));
    std::sort(names.begin(), names.end());
    std::string all;
    for(const std::string& name: names) all.append(name).append("\n");
    return fingerprint(string(all));
}

std::vector<ProjectStorage::Fingerprint> ProjectStorage::fingerprints(const std::vector<File>& files) {
    std::vector<Fingerprint> all;
    all.reserve(files.size());
    for(const File& file: files)
        all.push_back({file.path, file.bytes.size(), std::hash<std::string_view>{}(view(file.bytes))});
    return all;
}

}
