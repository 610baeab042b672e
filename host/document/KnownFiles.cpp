#include "KnownFiles.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Format.h>

#include "ProjectStorage.h"

namespace QuorvaneEngine {

namespace {

constexpr std::string_view ProjectName{"project.json"};
constexpr std::string_view TranslationsFolder{"localization/"};
constexpr std::string_view Suffix{".json"};

/** In nanoseconds; some disks tell the time of a change in steps of two seconds. */
constexpr std::int64_t Second = 1'000'000'000;
constexpr std::int64_t CoarsestClock = 2 * Second;

std::string_view view(const Containers::StringView text) { return {text.data(), text.size()}; }
Containers::String string(const std::string_view text) { return {text.data(), text.size()}; }

std::uint64_t hashOf(const Containers::StringView bytes) { return std::hash<std::string_view>{}(view(bytes)); }

/** Whether a file in the folder of translations belongs to the project. */
bool isOfTranslations(const std::string_view name) {
    return name.ends_with(Suffix) &&
        ProjectStorage::isLanguageCode(string(name.substr(0, name.size() - Suffix.size())));
}

/** Whether an error of looking at a file says that there is none. */
bool isAbsent(const int error) { return error == ENOENT || error == ENOTDIR; }

}

KnownFiles::KnownFiles(FileSystem& files, const Containers::StringView folder, const Clock clock)
    : _files{&files}, _folder{folder}, _clock{clock}, _translations{placeOf("localization")} {}

std::int64_t KnownFiles::systemTime() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

bool KnownFiles::isYoung(const FileStamp& stamp) const {
    return stamp.changed % Second == 0 && std::abs(_clock() - stamp.changed) < CoarsestClock;
}

Containers::String KnownFiles::placeOf(const Containers::StringView path) const {
    return string(std::string{view(_folder)}.append("/").append(view(path)));
}

FileStamp KnownFiles::stampOf(const Containers::StringView path) const {
    FileStamp stamp;
    _files->stampOf(placeOf(path), stamp);
    return stamp;
}

void KnownFiles::set(const Containers::StringView path, const FileStamp& stamp, const Containers::StringView bytes) {
    noteRemoved(path);
    _known.push_back({Containers::String{path}, placeOf(path), stamp, bytes.size(), hashOf(bytes), isYoung(stamp)});
}

/** Knows a file that cannot be read by its stamp alone: it is the same until that changes. */
void KnownFiles::setUnread(const Containers::StringView path, const FileStamp& stamp) {
    noteRemoved(path);
    _known.push_back({Containers::String{path}, placeOf(path), stamp, ~std::size_t{}, 0, false});
}

void KnownFiles::noteRead(
    const Containers::StringView path, const FileStamp& stamp, const Containers::StringView bytes) {
    set(path, stamp, bytes);
}

void KnownFiles::noteWritten(const Containers::StringView path, const Containers::StringView bytes) {
    set(path, {}, bytes);
}

void KnownFiles::noteRemoved(const Containers::StringView path) {
    std::erase_if(_known, [path](const File& file) { return file.path == path; });
}

KnownFiles::Look KnownFiles::look(File& file) const {
    FileStamp stamp;
    const int error = _files->stampOf(file.place, stamp);
    if(isAbsent(error)) return Look::Missing;
    // What cannot be looked at, as on a disk of a network that does not answer, may be as it was.
    if(error || (stamp == file.stamp && !file.isYoung)) return Look::Same;
    Containers::String bytes;
    if(_files->readFile(file.place, bytes) || bytes.size() != file.size || hashOf(bytes) != file.hash)
        return Look::Changed;
    file.stamp = stamp;
    file.isYoung = isYoung(stamp);
    return Look::Same;
}

std::vector<Containers::String> KnownFiles::added() {
    FileStamp stamp;
    std::vector<Containers::String> paths;
    if(_files->stampOf(_translations, stamp) || stamp == _translationsStamp) return paths;
    Containers::Array<Containers::String> names;
    if(_files->listFolder(_translations, names)) return paths;
    for(const Containers::String& name: names) {
        if(!isOfTranslations(view(name))) continue;
        const Containers::String path = string(std::string{TranslationsFolder}.append(view(name)));
        const auto isSame = [&path](const File& file) { return file.path == path; };
        // A link that leads nowhere is no file.
        FileStamp ofFile;
        if(_files->stampOf(placeOf(path), ofFile) == 0 && std::none_of(_known.begin(), _known.end(), isSame))
            paths.push_back(path);
    }
    if(paths.empty()) _translationsStamp = stamp;
    return paths;
}

DiskState KnownFiles::look(Containers::String* const changed) {
    const Containers::String* first = nullptr;
    const Containers::String* missing = nullptr;
    std::size_t differences = 0;
    bool isGone = false;
    for(File& file: _known) {
        const Look found = look(file);
        differences += found != Look::Same;
        if(found == Look::Changed && !first) first = &file.place;
        if(found != Look::Missing) continue;
        if(view(file.path) == ProjectName) isGone = true;
        else if(!missing) missing = &file.place;
    }
    if(!first && !isGone) first = missing;
    std::vector<Containers::String> more = added();
    differences += more.size();
    if(!first) {
        if(more.empty()) return isGone ? DiskState::Gone : DiskState::Same;
        more[0] = placeOf(more[0]);
        first = &more[0];
    }
    if(changed) {
        *changed = *first;
        if(differences > 1) *changed = Corrade::Utility::format("{} and {} more", *changed, differences - 1);
    }
    return DiskState::Changed;
}

bool KnownFiles::isMissing(const Containers::StringView path) const {
    FileStamp stamp;
    for(const File& file: _known)
        if(file.path == path) return isAbsent(_files->stampOf(file.place, stamp));
    return false;
}

bool KnownFiles::isForeign(const Containers::StringView path) {
    for(File& file: _known)
        if(file.path == path) return look(file) == Look::Changed;
    FileStamp stamp;
    return _files->stampOf(placeOf(path), stamp) == 0;
}

std::vector<KnownFiles::Difference> KnownFiles::learn() {
    std::vector<Difference> differences;
    for(File& file: _known) {
        const Look found = look(file);
        if(found != Look::Same) differences.push_back({file.path, found == Look::Changed});
    }
    for(Containers::String& path: added()) differences.push_back({std::move(path), true});
    learn(differences);
    return differences;
}

std::vector<KnownFiles::Difference> KnownFiles::learn(const std::vector<Containers::String>& paths) {
    std::vector<Difference> differences;
    for(const Containers::String& path: paths) {
        const auto known =
            std::find_if(_known.begin(), _known.end(), [&path](const File& file) { return file.path == path; });
        FileStamp stamp;
        if(known != _known.end()) {
            const Look found = look(*known);
            if(found != Look::Same) differences.push_back({path, found == Look::Changed});
        } else if(_files->stampOf(placeOf(path), stamp) == 0) differences.push_back({path, true});
    }
    learn(differences);
    return differences;
}

void KnownFiles::learn(const std::vector<Difference>& differences) {
    for(const Difference& difference: differences) {
        const FileStamp stamp = stampOf(difference.path);
        Containers::String bytes;
        if(!difference.isThere) noteRemoved(difference.path);
        else if(_files->readFile(placeOf(difference.path), bytes) == 0) set(difference.path, stamp, bytes);
        else setUnread(difference.path, stamp);
    }
}

}
