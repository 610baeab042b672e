#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What a new view is made from. */
struct NewView {
    /** A C++ identifier that neither the language nor CMake reserves, of 200 letters at most: the name of the module, the title of its
        view, the beginning of its class's name. */
    Containers::String name;

    /** Is made where it is missing, with those above it; one that is there has to be empty. */
    Containers::String folder;

    /** The folder of the files to fill in. */
    Containers::String templates;

    /** Where the editor is installed, for what is said of building the view; empty where it is not. */
    Containers::String prefix;

    /** How the editor is called, for what is said of seeing the view; empty where it is found by its name. */
    Containers::String program;
};

/** Writes the project of a small view plug-in, and how it is built and seen to standard output. What is in the way of it goes to the
    error output; then nothing is written.
    @return whether everything is written */
QUORVANE_API bool writeNewView(const NewView& view);

}
