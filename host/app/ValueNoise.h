#pragma once

#include <cmath>
#include <cstdint>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A number from 0 to 1 that belongs to a point of a grid: the same for the same arguments, and none that anybody would foresee. */
inline float gridValue(UnsignedInt seed, Int x, Int y) {
    std::uint32_t hash = seed * 0x9e3779b1u + std::uint32_t(x) * 0x85ebca77u + std::uint32_t(y) * 0xc2b2ae3du;
    for(const int shift: {15, 13, 16}) hash = (hash ^ hash >> shift) * 0x27d4eb2fu;
    return float(hash >> 8) / float(0xffffffu);
}

/** Smooth value noise (Perlin 1985 named its kin): grid values with smooth steps between them, octaves of half the size and half the
    weight added. From 0 to 1.
    @param octaves  at least 1 */
inline float valueNoise(UnsignedInt seed, Int octaves, float x, float y) {
    float sum = 0.0f;
    float weights = 0.0f;
    float weight = 1.0f;
    for(Int octave = 0; octave != octaves; ++octave) {
        const float left = std::floor(x);
        const float bottom = std::floor(y);
        const auto smooth = [](float t) { return t * t * (3.0f - 2.0f * t); };
        const float u = smooth(x - left);
        const float v = smooth(y - bottom);
        const auto at = [&](Int dx, Int dy) {
            return gridValue(seed + UnsignedInt(octave), Int(left) + dx, Int(bottom) + dy);
        };
        const float lower = at(0, 0) + (at(1, 0) - at(0, 0)) * u;
        const float upper = at(0, 1) + (at(1, 1) - at(0, 1)) * u;
        sum += (lower + (upper - lower) * v) * weight;
        weights += weight;
        weight *= 0.5f;
        x *= 2.0f;
        y *= 2.0f;
    }
    return sum / weights;
}

}
