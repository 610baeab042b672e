#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QuorvaneEngine::Test {

/** A PNG file, read; empty where it cannot be read. */
struct Picture {
    explicit Picture(const std::string& path);

    bool isEmpty() const { return pixels.empty(); }

    /** How many different colours there are. */
    std::size_t colors() const;

    /** The share of pixels in which two pictures of one size differ, 1 for different sizes. */
    double difference(const Picture& other) const;

    unsigned width = 0;
    unsigned height = 0;

    /** As 0xrrggbb, rows from top to bottom. */
    std::vector<unsigned> pixels;
};

}
