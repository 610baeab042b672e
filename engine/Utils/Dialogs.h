#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>

/** @file
    The desktop's own file dialogs and notifications. Each call blocks until the user has answered and the process behind the
    dialog has ended. A cancelled dialog, a closed one and one that could not be shown all give an empty answer. Paths are handed
    on as they are given, and returned with forward slashes.

    The dialog is a program of its own (zenity, matedialog, qarma or kdialog, found on PATH when the first dialog is wanted). While it
    runs, the process takes SIGCHLD by default. */

namespace QuorvaneEngine {

/** What stands beside a notification's text, in the order of the dialog library's own icons. */
enum class NotificationIcon : std::uint8_t { Info = 0, Warning = 1, Error = 2, Question = 3 };

/** Whether there is a program that shows dialogs. Where there is none, every call prints a warning and answers as if cancelled. */
bool areDialogsAvailable();

/** Lets the user choose files.
    @param defaultPath  where the dialog starts: the nearest ancestor that exists, or wherever the desktop likes
    @param filters      pairs of a description and a pattern, such as "ZIP Archive", "*.zip"
    @param multiselect  whether more than one file may be chosen
    @return the chosen files, in the dialog's order; the name of a file that holds a line break comes in pieces */
Corrade::Containers::Array<Corrade::Containers::String> openFileDialog(Corrade::Containers::StringView title,
    Corrade::Containers::StringView defaultPath, const Corrade::Containers::StringIterable& filters, bool multiselect);

/** Lets the user name a file to write. Parameters as in @ref openFileDialog(); the name of a file that does not exist yet is not
    filled in, its folder is opened. */
Corrade::Containers::String saveFileDialog(Corrade::Containers::StringView title,
    Corrade::Containers::StringView defaultPath, const Corrade::Containers::StringIterable& filters);

/** Lets the user choose a folder.
    @param defaultPath  where the dialog starts, handed on as it is */
Corrade::Containers::String openFolderDialog(
    Corrade::Containers::StringView title, Corrade::Containers::StringView defaultPath);

/** Shows a message beside the user's other windows. Blocks until the desktop has taken it. */
void notification(
    Corrade::Containers::StringView title, Corrade::Containers::StringView message, NotificationIcon icon);

}
