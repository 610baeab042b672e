#pragma once

#include <vector>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What the user asked for on the command line of the editor. */
struct CommandLine {
    /** The project's folder, empty for none. */
    Containers::String project;

    /** Where to write a picture of the window before ending; empty to go on. */
    Containers::String screenshot;

    /** Of the window, in pixels. */
    Int width = 1600;
    Int height = 1000;

    /** Whether that was asked for. */
    bool hasSize = false;

    /** Frames to draw before the picture is taken. */
    Int frames = 12;

    /** The title of the view that the picture shows in front; empty for the one that the layout has there. */
    Containers::String view;

    /** The folder of modules, empty for the one that belongs to the program. */
    Containers::String modules;

    /** Folders of further modules, which come before those of @ref modules . */
    std::vector<Containers::String> moreModules;

    /** "dark" or "light"; empty for what the user has chosen before. */
    Containers::String theme;

    /** The name and the folder of a view to write in place of anything else; both empty for none. */
    Containers::String newView;
    Containers::String newViewFolder;

    /** Pixels per pixel at scale 1, in place of what the desktop wants; 0 for that. */
    float scale = 0.0f;
};

/** Reads a command line. Help goes to standard output, what is wrong with the line to error output.
    @param exitCode     how to end when there is no answer: 0 after help
    @return nothing when the program should end */
QUORVANE_API Containers::Optional<CommandLine> parseCommandLine(int argc, const char* const* argv, int& exitCode);

}
