#include "Picture.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

#include <png.h>

namespace QuorvaneEngine::Test {

namespace {

bool isAlike(const unsigned a, const unsigned b) {
    for(const int shift: {0, 8, 16})
        if(std::abs(int(a >> shift & 0xff) - int(b >> shift & 0xff)) > 1) return false;
    return true;
}

}

Picture::Picture(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if(!png_image_begin_read_from_file(&image, path.c_str())) return;
    image.format = PNG_FORMAT_RGB;
    std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(image));
    if(!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr)) return;
    width = image.width;
    height = image.height;
    for(std::size_t i = 0; i + 2 < bytes.size(); i += 3)
        pixels.push_back(unsigned(bytes[i]) << 16 | unsigned(bytes[i + 1]) << 8 | bytes[i + 2]);
}

Picture::Picture(const unsigned width, const unsigned height, std::vector<unsigned> pixels)
    : width{width}, height{height}, pixels{std::move(pixels)} {}

std::size_t Picture::colors() const { return std::set<unsigned>{pixels.begin(), pixels.end()}.size(); }

double Picture::difference(const Picture& other) const {
    if(width != other.width || height != other.height || isEmpty()) return 1.0;
    std::size_t different = 0;
    for(std::size_t i = 0; i != pixels.size(); ++i) different += pixels[i] != other.pixels[i];
    return double(different) / double(pixels.size());
}

bool Picture::has(const unsigned x, const unsigned y, const unsigned color) const {
    return isAlike(pixels[std::size_t(y) * width + x], color);
}

std::vector<Area> Picture::groups(const unsigned color, const Area& within, const unsigned least) const {
    std::vector<Area> groups;
    for(unsigned y = within.top; y != std::min(within.bottom, height); ++y) {
        unsigned count = 0;
        Area row{width, y, 0, y + 1};
        for(unsigned x = within.left; x != std::min(within.right, width); ++x) {
            if(!has(x, y, color)) continue;
            ++count;
            row.left = std::min(row.left, x);
            row.right = x + 1;
        }
        if(count < least) continue;
        if(groups.empty() || groups.back().bottom != y) groups.push_back(row);
        Area& group = groups.back();
        group = {std::min(group.left, row.left), group.top, std::max(group.right, row.right), y + 1};
    }
    return groups;
}

std::vector<Area> Picture::runs(const unsigned color, const unsigned y, const unsigned least) const {
    std::vector<Area> runs;
    for(unsigned x = 0; x != width;) {
        unsigned end = x;
        while(end != width && has(end, y, color)) ++end;
        if(end - x >= least) runs.push_back({x, y, end, y + 1});
        x = std::max(end, x + 1);
    }
    return runs;
}

}
