#pragma once

#include "QuorvaneEditor/Host.h"

/** @file
    Hands files and folders to the desktop, from a thread of its own: the desktop's opener may stay until the user closes what it opened. How it went
    is not reported. Paths may hold anything. */

namespace QuorvaneEngine::DesktopOpener {

/** Shows a folder in the desktop's file browser. */
QUORVANE_API void showFolder(Containers::StringView path);

/** Opens a file or folder with the program that the user has for it. */
QUORVANE_API void open(Containers::StringView path);

}
