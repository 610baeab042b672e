#include "app/Fonts.h"

#include <utility>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>

#include "fonts/FontFinder.h"
#include "fonts/LetterSet.h"

namespace QuorvaneEngine::Fonts {

namespace {

/* Icons are as wide as high, stand on the text's base line and reach as far below as above its capitals. */
constexpr float IconSize = Size * 0.76f;
constexpr float IconDrop = 1.0f;
constexpr float IconAdvance = Size;

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

void load(Containers::StringView iconFont, LetterSet* const letters) {
    ImFontAtlas& atlas = *ImGui::GetIO().Fonts;
    ImGui::GetStyle().FontSizeBase = Size;
    LetterSet found;
    const Containers::Array<FontFile> files = findTextFonts(&found);

    const auto add = [&](const FontFile& file, bool merge) {
        ImFontConfig config;
        config.FontNo = file.face;
        config.MergeMode = merge;
        // A file that is gone since it was found is not worth ending the program.
        config.Flags |= ImFontFlags_NoLoadError;
        // One em is as large in every font; the library would make their lines equally high.
        const float size = Size * file.height / files.front().height;
        return atlas.AddFontFromFileTTF(file.path.data(), size, &config) != nullptr;
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
    config.Flags |= ImFontFlags_NoLoadError;
    const Containers::String path{iconFont};
    if(!atlas.AddFontFromFileTTF(path.data(), IconSize, &config))
        Corrade::Utility::Warning{} << "Fonts::load(): cannot read the icon font" << path;

    bool areAllReadable = readable;
    for(std::size_t i = 1; i < files.size(); ++i) areAllReadable &= add(files[i], true);
    if(!letters) return;
    if(areAllReadable) *letters = std::move(found);
    else addLoadedLetters(*atlas.Fonts.back(), *letters);
}

}
