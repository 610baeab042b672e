#include "app/Fonts.h"

#include <climits>
#include <map>
#include <string>
#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>

#include "app/MappedFile.h"

namespace QuorvaneEngine::Fonts {

namespace {

/* Icons are as wide as high, stand on the text's base line and reach as far below as above its capitals. */
constexpr float IconSize = Size * 0.76f;
constexpr float IconDrop = 1.0f;
constexpr float IconAdvance = Size;

/** The bytes of a font, for as long as the process runs, because the GUI reads letters when they are first drawn. A collection has
    several faces, and fonts of Chinese and Japanese are large: read as a whole they would take half of the time of a start. */
Containers::ArrayView<const char> fontBytes(const Containers::StringView path) {
    static std::map<std::string, MappedFile> files;
    const std::string name{path.data(), path.size()};
    return files.try_emplace(name, path).first->second.bytes();
}

/** The GUI takes what is shorter for a mistake of its caller. */
constexpr std::size_t SmallestFont = 128;

ImFont* addFont(const Containers::StringView path, const float size, ImFontConfig& config) {
    const Containers::ArrayView<const char> bytes = fontBytes(path);
    if(bytes.size() < SmallestFont || bytes.size() > std::size_t(INT_MAX)) return nullptr;
    config.FontDataOwnedByAtlas = false;
    return ImGui::GetIO().Fonts->AddFontFromMemoryTTF(
        const_cast<char*>(bytes.data()), int(bytes.size()), size, &config);
}

/** Adds the letters of what was loaded, which is less than what was found when a file cannot be read. */
void addLoadedLetters(ImFont& font, LetterSet& letters) {
    constexpr ImWchar FirstNonAscii = 0x80;
    constexpr ImWchar FirstPrivate = 0xe000;
    constexpr ImWchar LastPrivate = 0xf8ff;
    for(ImWchar letter = FirstNonAscii; letter != IM_UNICODE_CODEPOINT_MAX; ++letter)
        // Where the icons are.
        if((letter < FirstPrivate || letter > LastPrivate) && font.IsGlyphInFont(letter)) letters.add(letter);
}

}

Search::Search()
    : _found{std::async(std::launch::async | std::launch::deferred, [] {
          Found found;
          found.files = findTextFonts(&found.letters);
          return found;
      })} {}

void load(const Containers::StringView iconFont, LetterSet* const letters) {
    Search search;
    load(search, iconFont, letters);
}

void load(Search& search, const Containers::StringView iconFont, LetterSet* const letters) {
    ImFontAtlas& atlas = *ImGui::GetIO().Fonts;
    ImGui::GetStyle().FontSizeBase = Size;
    Search::Found found = search.take();
    const Containers::Array<FontFile>& files = found.files;

    const auto add = [&](const FontFile& file, bool merge) {
        ImFontConfig config;
        config.FontNo = file.face;
        config.MergeMode = merge;
        // One em is as large in every font; the library would make their lines equally high.
        const float size = Size * file.height / files.front().height;
        return addFont(file.path, size, config) != nullptr;
    };

    const bool readable = !files.isEmpty() && add(files.front(), false);
    if(!readable) {
        Corrade::Utility::Warning{}
            << "Fonts::load(): no font found on this machine, taking the GUI's own, which has few letters";
        ImFontConfig config;
        // Without a size of its own it takes no other font in.
        config.SizePixels = Size;
        atlas.AddFontDefaultVector(&config);
    }

    // Before the fallbacks: their private-use letters are not ours.
    ImFontConfig config;
    config.MergeMode = true;
    config.PixelSnapH = true;
    config.GlyphMinAdvanceX = IconAdvance;
    config.GlyphOffset.y = IconDrop;
    if(!addFont(iconFont, IconSize, config))
        Corrade::Utility::Warning{} << "Fonts::load(): cannot read the icon font" << iconFont;

    bool areAllReadable = readable;
    for(std::size_t i = 1; i < files.size(); ++i) areAllReadable &= add(files[i], true);
    if(!letters) return;
    if(areAllReadable) *letters = std::move(found.letters);
    else addLoadedLetters(*atlas.Fonts.back(), *letters);
}

}
