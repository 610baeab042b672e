#include "app/WindowMemory.h"

#include <algorithm>

#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "app/UserFile.h"
#include "document/JsonReader.h"

namespace QuorvaneEngine {

namespace {

constexpr Int Version = 1;

/** So much of a window has to show that it can be taken with the mouse. */
constexpr Int SmallestPart = 100;

struct Member {
    const char* name;
    Int ScreenArea::*value;
    Int smallest, largest;
};
constexpr Int Far = 1000000;
constexpr Member Members[]{
    {"x", &ScreenArea::x, -Far, Far},
    {"y", &ScreenArea::y, -Far, Far},
    {"width", &ScreenArea::width, WindowMemory::SmallestSide, WindowMemory::LargestSide},
    {"height", &ScreenArea::height, WindowMemory::SmallestSide, WindowMemory::LargestSide},
};

UserFile fileOf(const Containers::StringView folder) {
    return UserFile{Corrade::Utility::Path::join(folder, ".editor"), "window.json", UserFile::Links::Refuse};
}

/** @return what is wrong with the document; null where it is one */
const char* take(const rapidjson::Document& document, WindowPlace& place) {
    if(!document.IsObject()) return "the window's place is no object";
    const auto version = document.FindMember("version");
    if(version == document.MemberEnd() || !version->value.IsInt() || version->value.GetInt() != Version)
        return "the window's place is of another version";
    for(const Member& member: Members) {
        const auto found = document.FindMember(member.name);
        if(found == document.MemberEnd() || !found->value.IsInt() || found->value.GetInt() < member.smallest ||
            found->value.GetInt() > member.largest)
            return "the window's place is none";
        place.area.*member.value = found->value.GetInt();
    }
    const auto maximized = document.FindMember("maximized");
    if(maximized == document.MemberEnd() || !maximized->value.IsBool()) return "the window's place is none";
    place.isMaximized = maximized->value.GetBool();
    return nullptr;
}

/** How much two stretches have in common. */
Int common(Int begin, Int size, Int otherBegin, Int otherSize) {
    return std::min(begin + size, otherBegin + otherSize) - std::max(begin, otherBegin);
}

/** Whether a window's upper edge can be taken with the mouse. */
bool isReachable(const ScreenArea& window, const Containers::ArrayView<const ScreenArea> screens) {
    return std::any_of(screens.begin(), screens.end(), [&](const ScreenArea& screen) {
        return common(window.x, window.width, screen.x, screen.width) >= SmallestPart && window.y >= screen.y &&
            window.y <= screen.y + screen.height - SmallestPart;
    });
}

}

WindowMemory::Found WindowMemory::load(
    const Containers::StringView folder, const Containers::ArrayView<const ScreenArea> screens, WindowPlace& place) {
    const UserFile file = fileOf(folder);
    rapidjson::Document document;
    JsonError error;
    const UserFile::Found found = file.read(document, error);
    if(found == UserFile::Found::Nothing) return Found::Nothing;
    WindowPlace kept;
    const char* const reason = found == UserFile::Found::Document ? take(document, kept) : nullptr;
    if(reason || found != UserFile::Found::Document) {
        if(reason) error = {1, 1, reason};
        file.warn("WindowMemory::load", error);
        return Found::Other;
    }
    if(!isReachable(kept.area, screens)) return Found::Nothing;
    place = kept;
    return Found::Place;
}

bool WindowMemory::enter(
    const Containers::StringView folder, const Containers::ArrayView<const ScreenArea> screens, WindowPlace& current) {
    if(folder == _folder) return false;
    if(isPending()) write();
    _folder = folder;
    WindowPlace place;
    const Found found = folder.isEmpty() ? Found::Nothing : load(folder, screens, place);
    _isForeign = found == Found::Other;
    const bool isMoved = _restores && found == Found::Place;
    if(isMoved) current = place;
    _place = _seen = current;
    return isMoved;
}

bool WindowMemory::notice(const WindowPlace& current, const double now) {
    if(_folder.isEmpty()) return false;
    // As some desktops say of a window that is not shown.
    if(current.area.width < SmallestSide || current.area.height < SmallestSide) return false;
    // Position, size and state of a window change one after the other, and what is between counts for nothing.
    if(current != _seen) {
        _seen = current;
        _changed = now;
    }
    return isPending() && now - _changed >= Quiet;
}

WindowPlace WindowMemory::next() const {
    // What a maximized window returns to is known from before.
    return {_seen.isMaximized ? _place.area : _seen.area, _seen.isMaximized};
}

void WindowMemory::write() {
    _place = next();
    if(_isForeign || !_isOurs) return;
    rapidjson::Document document{rapidjson::kObjectType};
    auto& allocator = document.GetAllocator();
    document.AddMember("version", Version, allocator);
    for(const Member& member: Members)
        document.AddMember(rapidjson::StringRef(member.name), _place.area.*member.value, allocator);
    document.AddMember("maximized", _place.isMaximized, allocator);
    fileOf(_folder).write("WindowMemory::write", document);
}

}
