#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What can be shown where text goes to. */
struct Terminal {
    /** Whether it is a terminal, and no file or pipe. */
    bool isTerminal = false;

    /** In columns. What is no terminal has a fixed width, so that the same data give the same bytes. */
    UnsignedInt width = 100;

    /** Whether colours are wanted: on a terminal that has them, unless the user said no (https://no-color.org). */
    bool hasColors = false;

    /** Whether characters beyond ASCII can be shown, by the locale of the environment. */
    bool isUtf8 = false;

    /** Of an open file descriptor. */
    static Terminal of(int descriptor);
};

}
