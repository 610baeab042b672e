#pragma once

#include <Corrade/Containers/String.h>

/** @file
    What the user's desktop offers: a place for the program's own data, and programs that open things.

    The calls that open something run the desktop's opener, `open` on macOS and `xdg-open` elsewhere, through the shell. They block until it
    has ended, which may be as late as the program that it starts, and report nothing. Any thread may call them.

    @attention The text is part of a shell command. In a URL, which is not quoted, blanks, quotes, ";", "&", "(", "<", "$" and others are the
    shell's. In a path, which stands between double quotes, a double quote, "$", "`" and "\" are: pass it through
    @ref escapedForDoubleQuotes() unless it is known to have none. */

namespace QuorvaneEngine {

/** The folder for this program's data of this user, which need not exist: `~/Library/Application Support/QuorvaneEngine` on macOS, and elsewhere
    `QuorvaneEngine` in `$XDG_DATA_HOME`, where that is an absolute path, or in `~/.local/share` (XDG Base Directory Specification).
    With forward slashes. Empty, with a message to the error output, where the user has no home. */
Corrade::Containers::String appDirectory();

/** Opens a URL in the user's browser. The URL is not quoted: an "&" in it ends the command there. */
void openBrowser(Corrade::Containers::StringView url);

/** Shows a file or folder in the desktop's file browser. The path is quoted, and nothing in it is escaped. */
void openWithSystemFilebrowser(Corrade::Containers::StringView path);

/** Opens a file with the program that the user has for such files. The path is quoted, and nothing in it is escaped. */
void openWithSystemDefault(Corrade::Containers::StringView path);

/** Text that a shell takes literally, except its zero bytes, between double quotes. */
Corrade::Containers::String escapedForDoubleQuotes(Corrade::Containers::StringView text);

}
