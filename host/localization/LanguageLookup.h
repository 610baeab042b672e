#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The index of the language with exactly this code (BCP 47) in @ref AllLanguages, -1 where the table has none. */
QUORVANE_API Int findLanguage(Containers::StringView code);

/** The languages of a project that are in @ref AllLanguages , in its order. */
QUORVANE_API Containers::Array<UnsignedInt> languagesOf(ProjectFile& project);

/** The index of the language that somebody most likely means by the name of a file or folder, to be suggested and never to be taken
    unasked; -1 where it resembles none, as `readme` does. Of the table's languages it is

    -   the one with that English name, whatever the case and what stands between the words: `chinese_simplified`;
    -   the one with that code, written in another way: `zh_cn`, `EN`, `enGB`, `ptbr`, `uz@Latn`, `sr@latin`;
    -   what CLDR calls another name of it: `iw`, `tl`, `eng`, `ger`, `en-UK`;
    -   where the code is no language but a country, the language that most people there read: `cz`, `jp-JP`, `us`;
    -   the nearest one in the same language and script: `zh-Hans-CN`, `fr-GP`.

    Takes about 50 microseconds: for what is shown to a user, not for every file. */
QUORVANE_API Int nearestLanguage(Containers::StringView name);

/** Of some languages, the one that is most likely meant by what is nearest to a language: this one; or what CLDR takes for the same, as
    `pt` for `pt-BR` and `zh-Hans` for `zh-CN`; or, where @p language is of no country, the first in its language and script, as
    `en-GB` for `en`. -1 where none is.
    @param language     index into @ref AllLanguages , as @p some are */
QUORVANE_API Int sameLanguage(UnsignedInt language, Containers::ArrayView<const UnsignedInt> some);

}
