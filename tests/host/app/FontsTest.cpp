#include "app/Fonts.h"

#include <cstdlib>
#include <initializer_list>
#include <sstream>
#include <string>

#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <icons_font_awesome_6.h>
#include <imgui.h>

#include "fonts/LetterSet.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

/** A GUI context without any display, whose font draws on demand. */
class FontsTest: public testing::Test {
protected:
    FontsTest() {
        ImGui::CreateContext();
        ImGui::GetIO().IniFilename = nullptr;
        ImGui::GetIO().BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
        ImGui::GetIO().DisplaySize = {640.0f, 480.0f};
    }
    ~FontsTest() override { ImGui::DestroyContext(); }

    static bool hasLetter(ImWchar letter) {
        ImFontBaked* const baked = ImGui::GetFont()->GetFontBaked(Fonts::Size);
        return baked->FindGlyphNoFallback(letter) != nullptr;
    }
};

TEST_F(FontsTest, TheSampleLanguagesAndOtherMajorScriptsHaveTheirLetters) {
    struct Text {
        const char* language;
        std::u32string letters;
    };
    const Text texts[]{
        {"en", U"Aaz0129!?“”—…"},
        {"de", U"äöüÄÖÜßẞ„“"},
        {"fr", U"éèêàâçœŒŸ«»"},
        {"pt-BR", U"ãõáéíóúâêôç"},
        {"ja", U"灯台守のランプを点ける、カタカナ。「」"},
        {"ru", U"АБВЯабвяёЁ"},
        {"ar", U"ابتثجحخدذرزسشصضطظعغفقكلمنهويءآأؤإئةى؟،"},
        {"he", U"אבגדהוזחט"},
        {"el", U"ΑΒΓαβγς"},
        {"hi", U"अआइकखग"},
        {"th", U"กขคง"},
        {"ko", U"등대지기"},
        {"zh", U"灯塔守护"},
        {"ka", U"აბგ"},
        {"hy", U"ԱԲԳ"},
        {"vi", U"ạảấầ"},
        {"pl", U"ąćęłńóśźż"},
        {"tr", U"ğıİşĞŞ"},
    };
    Fonts::load(QUORVANE_ICON_FONT);
    ImGui::NewFrame();
    for(const Text& text: texts)
        for(char32_t letter: text.letters)
            EXPECT_TRUE(hasLetter(letter)) << text.language << " U+" << std::hex << std::uint32_t(letter);
    ImGui::EndFrame();
}

TEST_F(FontsTest, IconsAreThere) {
    Fonts::load(QUORVANE_ICON_FONT);
    ImGui::NewFrame();
    for(ImWchar icon: {0xf002, 0xf005, 0xf0c7, 0xf07c}) EXPECT_TRUE(hasLetter(icon)) << std::hex << icon;
    ImGui::EndFrame();
}

TEST_F(FontsTest, TheLettersThatAreToldAreThoseThatAreDrawn) {
    LetterSet letters;
    Fonts::load(QUORVANE_ICON_FONT, &letters);
    ImGui::NewFrame();
    for(const char32_t letter: std::u32string{U"üßéяαظשกあ灯한—“\U0010fffd"})
        EXPECT_EQ(letters.has(letter), hasLetter(letter)) << std::hex << std::uint32_t(letter);
    ImGui::EndFrame();
}

TEST_F(FontsTest, WithoutFontsTheLettersAreThoseOfTheLibrarysOwn) {
    const TestFolder folder;
    folder.write("fonts.conf", "<?xml version=\"1.0\"?>\n<fontconfig></fontconfig>\n");
    setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);
    LetterSet letters;
    {
        const Corrade::Utility::Warning redirect{nullptr};
        Fonts::load(QUORVANE_ICON_FONT, &letters);
    }
    ImGui::NewFrame();
    int drawn = 0;
    for(char32_t letter = 0xa1; letter != 0x3000; ++letter) {
        EXPECT_EQ(letters.has(letter), hasLetter(letter)) << std::hex << std::uint32_t(letter);
        drawn += letters.has(letter);
    }
    EXPECT_GT(drawn, 90);
    EXPECT_FALSE(letters.has(U'灯'));
    EXPECT_FALSE(letters.has(0xf002)) << "an icon";
    ImGui::EndFrame();
}

TEST_F(FontsTest, AnIconFontThatIsNotThereIsAWarning) {
    std::ostringstream out;
    {
        Corrade::Utility::Warning redirect{&out};
        Fonts::load("/nowhere/icons.otf");
    }
    EXPECT_EQ(out.str(), "Fonts::load(): cannot read the icon font /nowhere/icons.otf\n");
    ImGui::NewFrame();
    EXPECT_TRUE(hasLetter('A'));
    ImGui::EndFrame();
}

}
}
