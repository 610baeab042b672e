#include "Picture.h"

#include <set>

#include <png.h>

namespace QuorvaneEngine::Test {

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

std::size_t Picture::colors() const { return std::set<unsigned>{pixels.begin(), pixels.end()}.size(); }

double Picture::difference(const Picture& other) const {
    if(width != other.width || height != other.height || isEmpty()) return 1.0;
    std::size_t different = 0;
    for(std::size_t i = 0; i != pixels.size(); ++i) different += pixels[i] != other.pixels[i];
    return double(different) / double(pixels.size());
}

}
