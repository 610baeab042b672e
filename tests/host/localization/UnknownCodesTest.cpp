#include "UnknownCodes.h"

#include <string>

#include <gtest/gtest.h>

#include "LanguageLookup.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

std::string described(UnknownCodes& codes) {
    Containers::Array<FileNotice> notices;
    codes.describe(notices);
    std::string lines;
    for(const FileNotice& notice: notices) lines += copied(notice.file) + ": " + copied(notice.reason) + '\n';
    return lines;
}

}

TEST(UnknownCodes, NameTheFirstFileAndTheNearestLanguage) {
    UnknownCodes codes;
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
}

}
