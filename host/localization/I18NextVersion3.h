#pragma once

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class Catalogue;

/** Adds a notice, one for the whole file, where a catalogue has plural forms as version 3 of i18next JSON names them: `key_plural`
    beside `key`, and the complete sets `key_0`, `key_1`, ... of languages with other forms. As lists are numbered in the same way,
    sets are only taken for forms in a file where one of them holds `{{count}}`. Nothing else changes. */
QUORVANE_API void noticeVersion3(Catalogue& catalogue);

/** Whether the text under a key is such a form.
    @param catalogue    after @ref noticeVersion3()
    @param key          canonical, of a text that the catalogue has */
QUORVANE_API bool isVersion3Form(const Catalogue& catalogue, Containers::StringView key);

}
