#include "fonts/FontFinder.h"

#include <memory>

#include <Corrade/Containers/GrowableArray.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include "fonts/LetterSet.h"

namespace QuorvaneEngine {

namespace {

/* Families for the text itself, the first that is installed. */
constexpr const char* TextFamilies[]{"Noto Sans", "DejaVu Sans", "sans-serif"};

/* One or more languages for each script in wide use. Japanese stands before the other languages of Han letters, because where
   they disagree the first font wins. */
constexpr const char* Languages[]{"en", "de", "fr", "pt-br", "pl", "tr", "vi", "ru", "uk", "el", "ja", "zh-cn", "zh-tw",
    "ko", "ar", "fa", "ur", "he", "hi", "mr", "bn", "pa", "gu", "or", "ta", "te", "kn", "ml", "si", "th", "lo", "km",
    "my", "bo", "ka", "hy", "am", "chr", "iu", "mn-cn"};

/* Arrows, signs and shapes that game texts are fond of. */
constexpr FcChar32 Symbols[]{0x2190, 0x2191, 0x2192, 0x2193, 0x2212, 0x2260, 0x2264, 0x2265, 0x221e, 0x25a0, 0x25b2,
    0x25b6, 0x25cf, 0x2605, 0x2606, 0x2660, 0x2665, 0x266a, 0x2713, 0x2717, 0x20bf};

struct Destroy {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcCharSet* letters) const { FcCharSetDestroy(letters); }
};

using Config = std::unique_ptr<FcConfig, Destroy>;
using Pattern = std::unique_ptr<FcPattern, Destroy>;
using Letters = std::unique_ptr<FcCharSet, Destroy>;

/** The font that fits best. @p language and @p letters may be null. */
Pattern match(FcConfig* config, const char* family, const char* language, const FcCharSet* letters) {
    const Pattern wish{FcPatternCreate()};
    FcPatternAddString(wish.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddString(wish.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
    if(language) FcPatternAddString(wish.get(), FC_LANG, reinterpret_cast<const FcChar8*>(language));
    if(letters) FcPatternAddCharSet(wish.get(), FC_CHARSET, letters);
    FcPatternAddInteger(wish.get(), FC_WEIGHT, FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wish.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(wish.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(wish.get(), FC_COLOR, FcFalse);
    FcPatternAddBool(wish.get(), FC_VARIABLE, FcFalse);
    FcConfigSubstitute(config, wish.get(), FcMatchPattern);
    FcDefaultSubstitute(wish.get());
    FcResult result{};
    return Pattern{FcFontMatch(config, wish.get(), &result)};
}

Containers::StringView text(const Pattern& pattern, const char* property) {
    FcChar8* value = nullptr;
    if(!pattern || FcPatternGetString(pattern.get(), property, 0, &value) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(value);
}

/** @ref FontFile::height of a face; 0 where the file cannot be read. */
float faceHeight(const char* path, UnsignedInt index) {
    FT_Library library = nullptr;
    if(FT_Init_FreeType(&library)) return 0.0f;
    FT_Face face = nullptr;
    float height = 0.0f;
    if(!FT_New_Face(library, path, FT_Long(index), &face) && face->units_per_EM)
        height = float(face->ascender - face->descender) / float(face->units_per_EM);
    // The faces go with the library.
    FT_Done_FreeType(library);
    return height;
}

void addLetters(const FcCharSet* const from, LetterSet& letters) {
    FcChar32 map[FC_CHARSET_MAP_SIZE];
    FcChar32 next = 0;
    for(FcChar32 page = FcCharSetFirstPage(from, map, &next); page != FC_CHARSET_DONE;
        page = FcCharSetNextPage(from, map, &next))
        for(FcChar32 bit = 0; bit != FC_CHARSET_MAP_SIZE * 32; ++bit)
            if(map[bit / 32] >> (bit % 32) & 1) letters.add(page + bit);
}

/** The fonts found so far, and all letters that they have. */
struct Collection {
    Containers::Array<FontFile> files;
    Letters covered{FcCharSetCreate()};

    void add(const Pattern& font) {
        const Containers::StringView path = text(font, FC_FILE);
        FcCharSet* letters = nullptr;
        if(path.isEmpty() || FcPatternGetCharSet(font.get(), FC_CHARSET, 0, &letters) != FcResultMatch) return;
        int face = 0;
        FcPatternGetInteger(font.get(), FC_INDEX, 0, &face);
        // The upper half numbers the instance of a variable font.
        const UnsignedInt index = UnsignedInt(face) & 0xffffu;
        const float height = faceHeight(path.data(), index);
        if(height <= 0.0f) return;
        arrayAppend(files, FontFile{path, index, height});
        covered.reset(FcCharSetUnion(covered.get(), letters));
    }

    /** Adds a font for the letters that are missing, if there is one that has any of them. */
    void complete(FcConfig* config, const char* language, const FcCharSet* needed) {
        if(!needed || FcCharSetIsSubset(needed, covered.get())) return;
        const Letters missing{FcCharSetSubtract(needed, covered.get())};
        const Pattern font = match(config, TextFamilies[0], language, missing.get());
        FcCharSet* letters = nullptr;
        if(font && FcPatternGetCharSet(font.get(), FC_CHARSET, 0, &letters) == FcResultMatch &&
            FcCharSetIntersectCount(missing.get(), letters))
            add(font);
    }
};

}

Containers::Array<FontFile> findTextFonts(LetterSet* const letters) {
    const Config config{FcInitLoadConfigAndFonts()};
    if(!config) return {};

    Collection found;
    for(const char* family: TextFamilies) {
        const Pattern font = match(config.get(), family, "en", nullptr);
        // A family that is not installed is answered with another one; the last is generic and takes what comes.
        if(text(font, FC_FAMILY) != family && family != TextFamilies[2]) continue;
        found.add(font);
        break;
    }
    for(const char* language: Languages)
        found.complete(config.get(), language, FcLangGetCharSet(reinterpret_cast<const FcChar8*>(language)));

    const Letters symbols{FcCharSetCreate()};
    for(FcChar32 symbol: Symbols) FcCharSetAddChar(symbols.get(), symbol);
    found.complete(config.get(), nullptr, symbols.get());
    if(letters) addLetters(found.covered.get(), *letters);
    return std::move(found.files);
}

}
