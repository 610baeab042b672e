#include "app/FontFinder.h"

#include <set>
#include <string>

#include <Corrade/Containers/Array.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

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

}
}
