#pragma once

#include <cstdint>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class TermCheck;

/** The dialog that stands before everything else while terms are checked, so that nobody changes them. */
class QUORVANE_API CheckPopup {
public:
    enum class Request : std::uint8_t {
        None,
        /** The dialog is there: from the next frame on nobody gets at the project. */
        Start,
        Cancel
    };

    /** Opens it as soon as no other popup is open. */
    void open() { _isAsked = true; }

    /** Asks no more. What runs is still shown until it has ended. */
    void close() { _isAsked = false; }

    /** Draws it while it is wanted, or while the checks run. */
    Request draw(const TermCheck& check);

private:
    bool _isAsked = false;
};

}
