#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The rows of the term table: what a frame needs of the terms that match a search, and where each row lies.

    Keys and texts are copies, because views into the project document die with its next change. They are kept in one buffer, so
    that 100,000 terms cost a handful of allocations. Rows lie where drawing all of them one below the other would put them;
    their heights are measured when the rows, the font or the width of the text column changed, so a frame costs what it shows. */
class TermRows {
public:
    /** What the heights of rows depend on, besides the font; all in pixels. */
    struct Geometry {
        /** Width at which texts are wrapped. */
        float wrapWidth;

        /** Padding of a cell, above and below its content. */
        float padding;

        /** What the GUI library adds below an item, before it rounds down to whole pixels. */
        float spacing;

        /** Height of a check box, which every row with a key holds. */
        float boxHeight;

        bool operator==(const Geometry&) const = default;
    };

    /** Rows that follow each other; empty when @ref end is not above @ref begin. */
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    TermRows();
    ~TermRows();

    /** Takes over the terms whose key or `sourceText` contains the search text without regard to case, in document order. What
        had been measured is kept for rows that stay what they were.
        @param project  read during the call only
        @param search   empty for all terms */
    void rebuild(ProjectFile& project, Containers::StringView search);

    std::size_t size() const { return _rows.size(); }

    /** The term's key, NUL-terminated. Views stay valid until the next @ref rebuild(). */
    Containers::StringView key(std::size_t row) const;

    /** Whether the key can be a label of the GUI library as it stands: it is not empty, shows as a whole and is short. */
    bool isLabel(std::size_t row) const { return _rows[row].isLabel; }

    /** A number for the ID stack, the same for the same key. */
    int id(std::size_t row) const { return _rows[row].id; }

    /** The key as a reference token of a JSON Pointer (RFC 6901): "~" and "/" escaped. Empty for the empty key alone. */
    Containers::StringView token(std::size_t row) const;

    /** The row of the term with a reference token, @ref size() where none has it. */
    std::size_t find(Containers::StringView token) const;

    /** The source text that is shown, NUL-terminated. */
    Containers::StringView text(std::size_t row) const;

    bool isTranslatable(std::size_t row) const { return _rows[row].translatable; }

    /** Measures the rows where something changed: themselves, the current font or the geometry. Needs a GUI frame. */
    void layOut(const Geometry& geometry);

    /** Height in pixels of the text with nothing but its own line breaks. */
    float naturalHeight(std::size_t row) const { return _rows[row].naturalHeight; }

    /** Height in pixels of the text as it is wrapped. */
    float wrappedHeight(std::size_t row) const { return _rows[row].wrappedHeight; }

    /** Distance in pixels from the top of the first row to the top of a row; to the bottom of the last one for @ref size(). */
    float top(std::size_t row) const { return _tops[row]; }

    /** The rows that touch the pixels from @p from to @p to below the top of the first one; needs a layout. The nearest row where
        the pixels lie outside of all; empty where there are no rows. */
    Range rowsBetween(float from, float to) const;

    /** Byte positions in a long text at which its wrapped lines begin; empty for any other text, which is drawn as a whole. */
    Containers::ArrayView<const UnsignedInt> lineStarts(std::size_t row) const;

    /** From this size in bytes on, a text is long: only those of its lines are drawn that show. */
    static constexpr std::size_t LongText = 2048;

private:
    struct Slice {
        UnsignedInt offset;
        UnsignedInt size;
    };

    struct Row {
        Slice key;
        Slice token;
        Slice text;
        Slice lines;

        /** Negative when not measured yet. */
        float naturalWidth;
        float naturalHeight;
        float wrappedHeight;

        int id;
        bool isLabel;
        bool translatable;
    };

    Containers::StringView view(Slice slice) const;
    Slice store(Containers::StringView text);
    Slice storeToken(Slice key);
    void append(Containers::StringView key, Containers::StringView text, bool translatable);
    void measure(Row& row);
    void breakLongText(Row& row);
    bool fontChanged();

    Containers::Array<char> _buffer;
    Containers::Array<Row> _rows;
    Containers::Array<float> _tops;
    Containers::Array<UnsignedInt> _lineStarts;

    const void* _font = nullptr;
    const void* _fontBaked = nullptr;
    float _fontSize = 0.0f;
    Geometry _geometry{};
    bool _laidOut = false;
};

}
