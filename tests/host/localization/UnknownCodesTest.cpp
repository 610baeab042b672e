#include "UnknownCodes.h"

#include <string>

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string described(UnknownCodes& codes, const Containers::ArrayView<const UnsignedInt> taken = {}) {
    Containers::Array<FileNotice> notices;
    codes.describe(taken, notices);
    std::string lines;
    for(const FileNotice& notice: notices) lines += copied(notice.file) + ": " + copied(notice.reason) + '\n';
    return lines;
}

}

TEST(UnknownCodes, NameTheFirstFileAndTheNearestLanguage) {
    UnknownCodes codes{{}};
    EXPECT_TRUE(codes.isEmpty());
    codes.add("zz", "zz.json");
    EXPECT_FALSE(codes.hasLanguages());
    codes.add("en-XA", "en-XA/a.json");
    codes.add("en-XA", "en-XA/b.json");
    EXPECT_FALSE(codes.hasLanguages());
    codes.add("enGB", "enGB/a.json");
    codes.add("en\nGB", "en\nGB/a.json");
    for(const char* const file: {"b", "c"}) codes.add("enGB", file);
    EXPECT_TRUE(codes.hasLanguages());
    EXPECT_FALSE(codes.isEmpty());
    EXPECT_EQ(described(codes),
        "zz.json: no language has the code zz\n"
        "en-XA/a.json: made-up texts of an export are not read (1 more file)\n"
        "enGB/a.json: no language has the code enGB (2 more files); the nearest is en-GB: rename it, or map it with "
        "--map enGB=en-GB\n"
        "en\\nGB/a.json: no language has the code en\\nGB\n");
    codes.clear();
    EXPECT_TRUE(codes.isEmpty());
    EXPECT_EQ(described(codes), "");
}

TEST(UnknownCodes, AreMeantForLanguagesOfTheProjectRatherThanForOthers) {
    const UnsignedInt known[]{
        UnsignedInt(findLanguage("de")), UnsignedInt(findLanguage("zh-Hans")), UnsignedInt(findLanguage("en-GB"))};
    UnknownCodes codes{known};
    for(const char* const code: {"zh_CN", "english", "en_US", "fr_FR"}) codes.add(code, code);
    EXPECT_EQ(described(codes),
        "zh_CN: no language has the code zh_CN; the nearest is zh-Hans: rename it, or map it with --map zh_CN=zh-Hans\n"
        "english: no language has the code english; the nearest is en-GB: rename it, or map it with --map "
        "english=en-GB\n"
        "en_US: no language has the code en_US; the nearest is en-US: rename it, or map it with --map en_US=en-US\n"
        "fr_FR: no language has the code fr_FR; the nearest is fr-FR: rename it, or map it with --map fr_FR=fr-FR\n");
}

TEST(UnknownCodes, AreNotMeantForALanguageThatHasFiles) {
    UnknownCodes codes{{}};
    for(const char* const code: {"enGB", "ptBR"}) codes.add(code, code);
    const UnsignedInt taken[]{UnsignedInt(findLanguage("en-GB"))};
    EXPECT_EQ(described(codes, taken),
        "enGB: no language has the code enGB; the nearest is en-GB, of which there are other files\n"
        "ptBR: no language has the code ptBR; the nearest is pt-BR: rename it, or map it with --map ptBR=pt-BR\n");
    EXPECT_TRUE(codes.hasLanguages());
}

}
