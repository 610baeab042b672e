#include "app/PngFile.h"

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <png.h>

namespace QuorvaneEngine {
namespace {

TEST(PngFile, PixelsComeBackFromTopToBottomWithoutTransparency) {
    const std::string path = testing::TempDir() + "picture.png";
    /* 2 wide and 3 high; the first row of the data is the lowest */
    const unsigned char pixels[]{1, 2, 3, 0, 4, 5, 6, 255, 7, 8, 9, 77, 10, 11, 12, 0, 13, 14, 15, 0, 16, 17, 18, 0};
    ASSERT_TRUE(writePng(path.c_str(), 2, 3, pixels));

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str()));
    EXPECT_EQ(image.width, 2u);
    EXPECT_EQ(image.height, 3u);
    EXPECT_EQ(image.format, png_uint_32(PNG_FORMAT_RGB));
    std::vector<unsigned char> read(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, read.data(), 0, nullptr));
    EXPECT_EQ(read, (std::vector<unsigned char>{13, 14, 15, 16, 17, 18, 7, 8, 9, 10, 11, 12, 1, 2, 3, 4, 5, 6}));
    std::remove(path.c_str());
}

TEST(PngFile, AFileThatCannotBeWrittenIsAWarningWithItsReason) {
    std::ostringstream out;
    Corrade::Utility::Warning redirect{&out};
    const unsigned char pixel[4]{};
    EXPECT_FALSE(writePng("/nowhere/picture.png", 1, 1, pixel));
    EXPECT_EQ(out.str(), "writePng(): cannot write /nowhere/picture.png: No such file or directory\n");
}

}
}
