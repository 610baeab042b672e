#include "ThumbnailCells.h"

#include <set>
#include <tuple>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Magnum::Range2D;
using Magnum::Range2Di;
using Magnum::Vector2i;
using Magnum::Vector3i;

constexpr Vector2i Grid{32, 32};
constexpr Vector2i Size{128, 128};

TEST(ThumbnailCells, ASliceIsFilledRowByRowAndThenTheNextOne) {
    const struct {
        UnsignedInt index;
        Vector3i cell;
    } cases[]{
        {0, {0, 0, 0}},
        {1, {1, 0, 0}},
        {31, {31, 0, 0}},
        {32, {0, 1, 0}},
        {33, {1, 1, 0}},
        {1023, {31, 31, 0}},
        {1024, {0, 0, 1}},
        {1025, {1, 0, 1}},
        {2047, {31, 31, 1}},
        {2048, {0, 0, 2}},
        {2147483647, {31, 31, 2097151}},
    };
    for(const auto& [index, cell]: cases) EXPECT_EQ(thumbnailCell(index, Grid), cell) << index;
}

TEST(ThumbnailCells, NoTwoIndicesShareACell) {
    std::set<std::tuple<Int, Int, Int>> cells;
    for(UnsignedInt index = 0; index != 3 * 1024; ++index) {
        const Vector3i cell = thumbnailCell(index, Grid);
        EXPECT_TRUE(cell.x() >= 0 && cell.x() < 32 && cell.y() >= 0 && cell.y() < 32) << index;
        cells.emplace(cell.x(), cell.y(), cell.z());
    }
    EXPECT_EQ(cells.size(), 3u * 1024);
}

TEST(ThumbnailCells, APictureIsCentredInItsCellWithItsAspectRatioKept) {
    const struct {
        Vector2i picture;
        Range2Di rectangle;
    } cases[]{
        {{128, 128}, {{0, 0}, {128, 128}}},
        {{1, 1}, {{0, 0}, {128, 128}}},
        {{4096, 4096}, {{0, 0}, {128, 128}}},
        {{256, 128}, {{0, 32}, {128, 96}}},
        {{64, 256}, {{48, 0}, {80, 128}}},
        // A third of 128 is 42.67, and half of the 86 that are left is 43.
        {{100, 300}, {{43, 0}, {85, 128}}},
        // Two thirds of 128 are 85.33, and half of the 43 that are left is 21.5.
        {{3, 2}, {{0, 21}, {128, 106}}},
        {{127, 128}, {{0, 0}, {127, 128}}},
        // Too flat and too narrow for a pixel.
        {{16384, 1}, {{0, 64}, {128, 64}}},
        {{1, 16384}, {{64, 0}, {64, 128}}},
        {{1, 128}, {{63, 0}, {64, 128}}},
        {{1, 129}, {{64, 0}, {64, 128}}},
    };
    for(const auto& [picture, rectangle]: cases)
        EXPECT_EQ(thumbnailRectangle({0, 0, 0}, Size, picture), rectangle) << picture.x() << " x " << picture.y();
}

TEST(ThumbnailCells, ARectangleLiesInItsCellWhateverTheSlice) {
    EXPECT_EQ(thumbnailRectangle({3, 7, 0}, Size, {256, 128}), (Range2Di{{384, 928}, {512, 992}}));
    EXPECT_EQ(thumbnailRectangle({31, 31, 5}, Size, {10, 10}), (Range2Di{{3968, 3968}, {4096, 4096}}));
}

TEST(ThumbnailCells, WhatHasNoPixelsHasAnEmptyRectangle) {
    for(const Vector2i picture: {Vector2i{0, 0}, {0, 5}, {5, 0}, {-5, 5}, {5, -5}, {-5, -5}})
        EXPECT_EQ(thumbnailRectangle({1, 2, 0}, Size, picture), (Range2Di{{128, 256}, {128, 256}}))
            << picture.x() << " x " << picture.y();
}

TEST(ThumbnailCells, NoPictureLeavesItsCell) {
    for(Int width = 1; width < 20000; width = width * 3 / 2 + 1)
        for(Int height = 1; height < 20000; height = height * 3 / 2 + 1) {
            const Range2Di rectangle = thumbnailRectangle({1, 1, 0}, Size, {width, height});
            EXPECT_TRUE(rectangle.left() >= 128 && rectangle.left() <= rectangle.right() && rectangle.right() <= 256 &&
                rectangle.bottom() >= 128 && rectangle.bottom() <= rectangle.top() && rectangle.top() <= 256)
                << width << " x " << height;
            EXPECT_TRUE(rectangle.sizeX() == 128 || rectangle.sizeY() == 128) << width << " x " << height;
        }
}

TEST(ThumbnailCells, CoordinatesCoverTheWholeCell) {
    EXPECT_EQ(thumbnailCoordinates({0, 0, 0}, Grid), (Range2D{{0.0f, 0.0f}, {0.03125f, 0.03125f}}));
    EXPECT_EQ(thumbnailCoordinates({3, 16, 2}, Grid), (Range2D{{0.09375f, 0.5f}, {0.125f, 0.53125f}}));
    EXPECT_EQ(thumbnailCoordinates({31, 31, 0}, Grid), (Range2D{{0.96875f, 0.96875f}, {1.0f, 1.0f}}));
}

}
}
