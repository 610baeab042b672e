#pragma once

#include <Corrade/Containers/StringView.h>

/** @file
    State that outlives a frame and is shared by all instances of the view in a process. A module that is loaded again starts with
    the initial values. */

namespace QuorvaneEngine::ViewState {

/** The selected tab: 0 Terms, 1 Languages, 2 none. */
extern int currentTab;

/** The popup that is wanted: 0 none, 1 import, 2 export. */
extern int currentMode;

/** The project revision at which the filters were last rebuilt. */
extern int lastSearch;

/** The row of the filtered languages that the context menu was opened on. */
extern int toRemovoveIndex;

/** Height of the language table in the previous frame, in pixels. */
extern float lastTableHeight;

/** The format of the exchange: 0 is i18next. */
extern int currentFormat;

/** Whether terms go into, or come from, a ZIP archive. */
extern bool enableZipCompression;

/** Titles of the popup by mode. */
extern const Corrade::Containers::StringView importExportPopupNames[3];

/** Whether the popup has been opened and not closed. */
extern bool isOpen;

/** Height of the popup's content in the previous frame, in pixels. */
extern float lastFramePopupHeight;

/** The path of the exchange, NUL-terminated; kept across openings. */
extern char pathBuffer[256];

}
