#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The term that the view was asked to show: wanted until it is found in the table, and then marked for a while, which fades. */
class TermMark {
public:
    /** How long a mark lasts in seconds, and how long it fades at its end. */
    static constexpr double Duration = 2.0;
    static constexpr double FadeDuration = 1.0;

    /** Wants a term in place of the one before.
        @param token    its key as a reference token of a JSON Pointer (RFC 6901); copied */
    void want(Containers::StringView token);

    bool isWanted() const { return _isWanted; }

    /** The token of the term that is wanted or marked. */
    Containers::StringView token() const { return _token; }

    /** Ends the search for the term.
        @param isThere  whether it was found and is to be marked
        @param now      in seconds */
    void settle(bool isThere, double now);

    /** How strongly a term is to be marked, from 0 for not at all to 1.
        @param now      in seconds */
    float strength(Containers::StringView token, double now) const;

private:
    Containers::String _token;
    double _end = 0.0;
    bool _isWanted = false;
};

}
