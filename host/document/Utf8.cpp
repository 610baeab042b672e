#include "Utf8.h"

#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace QuorvaneEngine {

namespace {

bool isForeign(const char character) { return static_cast<unsigned char>(character) >= 0x80; }

bool isTail(const char character) { return (static_cast<unsigned char>(character) & 0xc0) == 0x80; }

bool isPlainAscii(const char character) {
    return static_cast<unsigned char>(character) - 0x20u < 0x60u && character != '"' && character != '\\';
}

const char* skipOneByOne(const char* at, const char* const end) {
    while(at != end && (isForeign(*at) || isPlainAscii(*at))) {
        const std::size_t size = utf8SequenceSize(at, end);
        if(!size) break;
        at += size;
    }
    return at;
}

#ifdef __SSE2__

/** Sixteen bytes at a time, a bit for each. */
class Block {
public:
    static constexpr std::ptrdiff_t Size = 16;

    explicit Block(const char* const at): _bytes{_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))} {}

    unsigned equal(const int byte) const { return bits(_mm_cmpeq_epi8(_bytes, all(byte))); }

    /** Compares as the processor does, with sign: 0x80 is the least, and ASCII is greater than all that is not. */
    unsigned less(const int byte) const { return bits(_mm_cmplt_epi8(_bytes, all(byte))); }

    unsigned foreign() const { return bits(_bytes); }

    /** What stands for itself in no JSON string. */
    unsigned special() const {
        const __m128i isQuoted = _mm_or_si128(_mm_cmpeq_epi8(_bytes, all('"')), _mm_cmpeq_epi8(_bytes, all('\\')));
        // An unsigned comparison with 0x1f.
        return bits(_mm_or_si128(isQuoted, _mm_cmpeq_epi8(_mm_min_epu8(_bytes, all(0x1f)), _bytes)));
    }

private:
    static __m128i all(const int byte) { return _mm_set1_epi8(char(byte)); }
    static unsigned bits(const __m128i bytes) { return unsigned(_mm_movemask_epi8(bytes)); }

    __m128i _bytes;
};

/** The leads of the block before, at its last byte, whose next byte has a range of its own, and how many tails have to follow. */
struct Carried {
    unsigned tails = 0, e0 = 0, ed = 0, f0 = 0, f4 = 0;
};

/** @param counted  the bytes of the block that are to be looked at */
bool isWellFormed(const Block& block, const unsigned foreign, const unsigned counted, Carried& carried) {
    const unsigned tails = block.less(0xc0) & counted;
    const unsigned leads = foreign & counted & ~tails;
    const unsigned leads34 = leads & ~block.less(0xe0);
    unsigned expected = carried.tails | leads << 1 | leads34 << 2;
    unsigned wrong = leads & (block.equal(0xc0) | block.equal(0xc1));
    Carried next;
    if(leads34 || carried.tails) {
        const unsigned leads4 = leads & ~block.less(0xf0);
        const unsigned belowA0 = block.less(0xa0), below90 = block.less(0x90);
        const unsigned e0 = block.equal(0xe0) << 1, ed = block.equal(0xed) << 1;
        const unsigned f0 = block.equal(0xf0) << 1, f4 = block.equal(0xf4) << 1;
        expected |= leads4 << 3;
        wrong |= (((e0 | carried.e0) & belowA0) | ((ed | carried.ed) & ~belowA0) | ((f0 | carried.f0) & below90) |
                     ((f4 | carried.f4) & ~below90)) &
            counted;
        wrong |= leads4 & ~block.less(0xf5);
        next = {0, e0 >> Block::Size, ed >> Block::Size, f0 >> Block::Size, f4 >> Block::Size};
    }
    next.tails = expected >> Block::Size;
    carried = next;
    // Behind the last byte that counts no tail may be missing.
    const unsigned within = counted == 0xffff ? 0xffff : ~0u;
    return !wrong && (expected & within) == tails;
}

#endif

}

std::size_t utf8SequenceSize(const char* const at, const char* const end) {
    const auto byte = [at](const std::size_t i) { return static_cast<unsigned char>(at[i]); };
    const unsigned char first = byte(0);
    const std::size_t left = std::size_t(end - at);
    if(first < 0x80) return 1;
    if(first < 0xe0) return first >= 0xc2 && left >= 2 && isTail(at[1]) ? 2 : 0;
    if(first < 0xf0) {
        if(left < 3 || !isTail(at[1]) || !isTail(at[2])) return 0;
        return (first == 0xe0 && byte(1) < 0xa0) || (first == 0xed && byte(1) > 0x9f) ? 0 : 3;
    }
    if(first > 0xf4 || left < 4 || !isTail(at[1]) || !isTail(at[2]) || !isTail(at[3])) return 0;
    return (first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) > 0x8f) ? 0 : 4;
}

const char* skipPlainText(const char* at, const char* const end) {
#ifdef __SSE2__
    const char* const begin = at;
    Carried carried;
    for(; end - at >= Block::Size; at += Block::Size) {
        const Block block{at};
        const unsigned special = block.special(), foreign = block.foreign();
        // The bits below the first special one.
        const unsigned counted = special ? (special & -special) - 1 : 0xffff;
        const bool isAscii = !(foreign & counted) && !carried.tails;
        if(!isAscii && !isWellFormed(block, foreign, counted, carried)) break;
        if(special) return at + __builtin_ctz(special);
    }
    // A sequence may go on from the block before.
    for(int i = 0; i != 4 && at != begin && isForeign(at[-1]); ++i)
        if(!isTail(*--at)) break;
#endif
    return skipOneByOne(at, end);
}

}
