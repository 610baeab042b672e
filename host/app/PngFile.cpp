#include "app/PngFile.h"

#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <png.h>

namespace QuorvaneEngine {

bool writePng(Containers::StringView path, UnsignedInt width, UnsignedInt height,
    Containers::ArrayView<const unsigned char> pixels) {
    std::vector<unsigned char> rows(std::size_t(width) * height * 3);
    for(std::size_t i = 0, count = std::size_t(width) * height; i != count; ++i)
        for(std::size_t channel = 0; channel != 3; ++channel) rows[i * 3 + channel] = pixels[i * 4 + channel];

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGB;
    const Containers::String file{path};
    // A negative stride begins with the last row.
    if(png_image_write_to_file(&image, file.data(), 0, rows.data(), -png_int_32(width) * 3, nullptr)) return true;
    Corrade::Utility::Warning{} << "writePng(): cannot write" << file << Corrade::Utility::Debug::nospace << ":"
                                << static_cast<const char*>(image.message);
    return false;
}

}
