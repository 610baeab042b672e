#pragma once

#include <vector>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What of a text is not for readers, but for the application and what shows its texts: placeholders and nestings (see
    @ref Placeholders ), HTML tags, HTML entities, and a backslash with what it escapes. Goes through the text once, in time in
    proportion to it. */
class QUORVANE_API TextMarkup {
public:
    /** @param text     must outlive this object */
    explicit TextMarkup(Containers::StringView text);
    ~TextMarkup();

    /** The end of the markup that begins at a position, or goes on there; the position itself where none does.
        @param position     not less than in the call before */
    std::size_t end(std::size_t position);

private:
    struct Range {
        std::size_t begin, end;
    };

    void addRange(Containers::StringView text);
    std::size_t endOfTag(std::size_t position) const;
    std::size_t endOfEntity(std::size_t position) const;
    std::size_t endOfEscape(std::size_t position) const;

    Containers::StringView _text;
    /** Of placeholders and nestings, by their beginnings; two of them may overlap. */
    std::vector<Range> _ranges;
    /** The first range that ends behind the position. */
    std::size_t _next = 0;
};

}
