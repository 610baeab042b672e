#include "fonts/FontFinder.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include <Corrade/Containers/Array.h>
#include <gtest/gtest.h>

#include "fonts/LetterSet.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {
namespace {

std::string hexadecimal(const char32_t letter) {
    char text[16];
    std::snprintf(text, sizeof(text), "%x", unsigned(letter));
    return text;
}

/** Of what a command of the shell prints. */
std::string firstLine(const std::string& command) {
    std::string line;
    FILE* const pipe = popen(command.c_str(), "r");
    for(int byte; pipe && (byte = std::fgetc(pipe)) != EOF && byte != '\n';) line += char(byte);
    if(pipe) pclose(pipe);
    return line;
}

TEST(FontFinder, TheFirstIsTheTextFont) {
    const Containers::Array<FontFile> files = findTextFonts();
    ASSERT_FALSE(files.isEmpty());
    EXPECT_NE(std::string{files.front().path.data()}.find("Sans"), std::string::npos);
}

TEST(FontFinder, EveryFaceIsNamedOnce) {
    std::set<std::string> seen;
    for(const FontFile& file: findTextFonts())
        EXPECT_TRUE(seen.insert(std::string{file.path.data()} + "#" + std::to_string(file.face)).second)
            << file.path.data();
}

TEST(FontFinder, HeightsAreThoseOfLinesInEms) {
    for(const FontFile& file: findTextFonts()) {
        EXPECT_GT(file.height, 0.8f) << file.path.data();
        EXPECT_LT(file.height, 3.0f) << file.path.data();
    }
}

/* Whether a letter of a script has a font, where the machine has one for it at all. */
TEST(FontFinder, EveryMajorScriptHasAFontWhereTheMachineHasOne) {
    struct Script {
        const char* name;
        const char* language;
        char32_t letter;
    };
    static constexpr Script Scripts[]{{"Latin", "en", U'A'}, {"Cyrillic", "ru", U'Ж'}, {"Greek", "el", U'Ω'},
        {"Arabic", "ar", U'ع'}, {"Hebrew", "he", U'ש'}, {"Thai", "th", U'ก'}, {"Devanagari", "hi", U'अ'},
        {"Japanese", "ja", U'カ'}, {"Chinese", "zh-cn", U'语'}, {"Korean", "ko", U'한'}};
    LetterSet letters;
    findTextFonts(&letters);
    std::string missing;
    for(const Script& script: Scripts) {
        if(letters.has(script.letter)) continue;
        const std::string query = "fc-list ':charset=" + hexadecimal(script.letter) + "' file";
        EXPECT_EQ(firstLine(query), "") << script.name << " has a font that was not found";
        missing += (missing.empty() ? "" : ", ") + std::string{script.name};
    }
    if(!missing.empty()) GTEST_SKIP() << "this machine has no font for " << missing;
}

TEST(FontFinder, WithoutAnyFontThereIsNone) {
    const TestFolder folder;
    folder.write("fonts.conf", "<?xml version=\"1.0\"?>\n<fontconfig></fontconfig>\n");
    setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);
    LetterSet letters;
    EXPECT_TRUE(findTextFonts(&letters).isEmpty());
    EXPECT_FALSE(letters.has('A'));
}

}
}
