#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QuorvaneEngine::Test {

/** A rectangle of pixels, from the top left corner of a picture; the right and the bottom are behind the last one. */
struct Area {
    unsigned left;
    unsigned top;
    unsigned right;
    unsigned bottom;

    bool isEmpty() const { return left >= right || top >= bottom; }
    unsigned width() const { return right - left; }
    unsigned height() const { return bottom - top; }
};

/** Rows of pixels. */
struct Picture {
    /** A PNG file, read; empty where it cannot be read. */
    explicit Picture(const std::string& path);

    /** @param pixels   one for each of @p width times @p height */
    Picture(unsigned width, unsigned height, std::vector<unsigned> pixels);

    bool isEmpty() const { return pixels.empty(); }

    Area all() const { return {0, 0, width, height}; }

    /** How many different colours there are. */
    std::size_t colors() const;

    /** The share of pixels in which two pictures of one size differ, 1 for different sizes. */
    double difference(const Picture& other) const;

    /** Whether a pixel has a colour, but for a rounding. */
    bool has(unsigned x, unsigned y, unsigned color) const;

    /** What stands in groups of rows that have a colour, from top to bottom, each as wide as the colour goes.
        @param least    pixels of the colour that a row must have */
    std::vector<Area> groups(unsigned color, const Area& within, unsigned least) const;

    /** Where a row of pixels has a colour without a gap, from left to right.
        @param least    pixels that a run must have */
    std::vector<Area> runs(unsigned color, unsigned y, unsigned least) const;

    unsigned width = 0;
    unsigned height = 0;

    /** As 0xrrggbb, rows from top to bottom. */
    std::vector<unsigned> pixels;
};

}
