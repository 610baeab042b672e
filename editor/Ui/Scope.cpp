#include "Ui/Scope.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include <Corrade/Utility/Debug.h>

#include "ImGuiText.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

constexpr std::size_t PathGrowth = 64;

/** Cuts the first non-empty part off a name; null when there is none left. */
Containers::StringView nextPart(Containers::StringView& name) {
    const char* begin = name.begin();
    while(begin != name.end() && *begin == '/') ++begin;
    const char* const end = std::find(begin, name.end(), '/');
    const Containers::StringView part{begin, std::size_t(end - begin)};
    name = {end, std::size_t(name.end() - end)};
    return part;
}

/** The ID of a part is that of the library, which forgets what stands before "###". A key of the document may hold that, and
    must not be taken for another one. */
ImGuiID partId(const Containers::StringView part) {
    return part.contains("###") ? ImHashData(part.data(), part.size(), ImGui::GetCurrentWindow()->IDStack.back())
                                : getId(part);
}

}

void Ui::pushScope(const Containers::StringView name, unsigned* const id) {
    Containers::StringView rest = name;
    Containers::StringView part = nextPart(rest);
    if(part.isEmpty()) {
        Corrade::Utility::Error{} << "Ui::pushScope(): the name has no part";
        std::abort();
    }
    for(; !part.isEmpty(); part = nextPart(rest)) {
        const ImGuiID partsId = partId(part);
        // The last part stays.
        if(id) *id = partsId;
        ImGui::PushOverrideID(partsId);
    }

    std::size_t size = std::strlen(path.data());
    if(name[0] != '/') path[size++] = '/';
    const std::size_t needed = size + name.size() + 1;
    if(needed > path.size()) {
        // A growable array would keep the address of its deleter, which is gone when the view that grew it is unloaded.
        Containers::Array<char> larger{Corrade::ValueInit, std::max(needed, path.size() + PathGrowth)};
        std::memcpy(larger.data(), path.data(), size);
        path = std::move(larger);
    }
    std::memcpy(path.data() + size, name.data(), name.size());
    path[size + name.size()] = '\0';
}

void Ui::pushScope(const unsigned long index, unsigned* const id) {
    char digits[std::numeric_limits<unsigned long>::digits10 + 1];
    const char* const end = std::to_chars(digits, digits + sizeof(digits), index).ptr;
    pushScope(Containers::StringView{digits, std::size_t(end - digits)}, id);
}

void Ui::popScope() {
    if(path[0] == '\0') {
        Corrade::Utility::Error{} << "Ui::popScope(): push/pop mismatch";
        std::abort();
    }
    if(char* const slash = std::strrchr(path.data(), '/')) *slash = '\0';
    ImGui::PopID();
}

Containers::StringView Ui::scopePath() const { return path.data(); }

void Ui::showPathTooltip() {
    if(!ImGui::IsItemHovered() || !pathKeyPressed() || _tooltipFrame == ImGui::GetFrameCount()) return;
    _tooltipFrame = ImGui::GetFrameCount();
    setTooltip(scopePath());
}

Scope::Scope(Ui* const ui, const Containers::StringView name): ui{ui} {
    Containers::StringView rest = name;
    while(!nextPart(rest).isEmpty()) ++depth;
    ui->pushScope(name, &id);
}

Scope::~Scope() {
    ui->showPathTooltip();
    for(unsigned i = 0; i != depth; ++i) ui->popScope();
}

}
