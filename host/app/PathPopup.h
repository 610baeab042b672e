#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/PathField.h"

namespace QuorvaneEngine {

/** The dialog in which the user types the path of a folder. It waits for the end of any other popup, and stands before everything
    else until it is closed. */
class QUORVANE_API PathPopup {
public:
    /** What it says, in NUL-terminated texts that live as long as the program. */
    struct Form {
        const char* name;
        const char* icon;
        const char* heading;
        const char* text;
        /** The button for what Enter does, too. */
        const char* accept;
    };

    enum class Request : std::uint8_t {
        None,
        Accept, /**< take the path */
        Choose, /**< choose a folder in the desktop's dialog */
        Other, /**< do what was offered beside a reason */
        Cancel
    };

    /** Asks for a path.
        @param form         must outlive this object
        @param path         proposed
        @param hasDialog    whether a folder can be chosen in a dialog of the desktop's */
    void open(const Form& form, Containers::StringView path, bool hasDialog);

    void close() { _form = nullptr; }
    bool isOpen() const { return _form; }

    /** Shows why a path cannot be taken.
        @param offer    what can be done instead: NUL-terminated, lives as long as the program; null for nothing */
    void refuse(Containers::String reason, const char* offer = nullptr);

    /** As the disk knows it. */
    Containers::String path() const { return _field.path(); }

    /** Where the user chose a path elsewhere. */
    void setPath(Containers::StringView path);

    /** @return what the user asks for */
    Request draw();

private:
    Request drawForm();

    const Form* _form = nullptr;
    /** The one that the library shows, which may end a frame later. */
    const Form* _shown = nullptr;
    PathField _field{"Folder"};
    Containers::String _reason;
    const char* _offer = nullptr;
    bool _hasDialog = false;
};

}
