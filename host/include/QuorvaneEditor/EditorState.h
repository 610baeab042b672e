#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The views that the editor knows, by title, each with its open flag.

    A title keeps its identifier for the life of the editor, so a module that is loaded again finds its window, dock place and
    open flag as they were. */
class QUORVANE_API EditorState {
public:
    EditorState();
    ~EditorState();
    EditorState(const EditorState&) = delete;
    EditorState& operator=(const EditorState&) = delete;

    /** The identifier of the view with this title: a new one, open, for a title not seen before. */
    UnsignedInt registerView(Containers::StringView title);

    /** The open flag of a view; the window's close button clears it. The reference stays valid as long as the state lives.
        An identifier that @ref registerView() never returned is a broken precondition. */
    bool& isViewOpen(UnsignedInt view);

    /** The title of a view, NUL-terminated. The precondition of @ref isViewOpen() holds. */
    Containers::StringView viewTitle(UnsignedInt view) const;

    /** Identifiers are 0 to this number less one. */
    UnsignedInt viewCount() const;

private:
    struct View;

    View& view(UnsignedInt view, const char* function) const;

    Containers::Array<Containers::Pointer<View>> _views;
};

}
