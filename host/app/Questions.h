#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What the user wants done with unsaved changes. */
enum class Answer : std::uint8_t { None, Save, Discard, Cancel };

/** The host's own dialogs, which stand before everything else until they are answered. A dialog waits for
    the end of any other popup. */
class QUORVANE_API Questions {
public:
    /** Asks what to do with unsaved changes. */
    void askForUnsaved() { _asksForUnsaved = true; }

    /** Says why a project could not be opened. */
    void showFailure(Containers::StringView text) { _failure = text; }
    Containers::StringView failure() const { return _failure; }

    void showAbout() { _showsAbout = true; }

    /** @return the answer to the question for unsaved changes, in the frame in which it is given */
    Answer draw();

private:
    Answer drawUnsaved();
    void drawFailure();
    void drawAbout();

    bool _asksForUnsaved = false;
    bool _showsAbout = false;
    Containers::String _failure;
};

}
