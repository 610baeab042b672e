#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Formats for the exchange of terms. */
enum class LocalizationFormat : Int {
    I18Next = 0 /**< i18next JSON v4 */
};

/** Gathers, exports and imports the terms of the open project. Languages are indices into @ref AllLanguages. Every call finishes
    its work before it returns; what goes wrong is told as a warning that names file, place and reason, and then nothing is
    changed, neither in the project nor on disk. */
namespace LocalizationTools {

/** Makes a term for every text of an object that has none yet, as one undo step. A second call changes nothing. */
QUORVANE_API void gatherStrings(QuorvaneEditor& editor);

/** Writes `<path>/<language code>/translation.json` for every language.
    @param path     folder; made where it is missing */
QUORVANE_API void exportTerms(QuorvaneEditor& editor, Containers::ArrayView<const UnsignedInt> languages,
    UnsignedInt defaultLanguage, Containers::StringView path, LocalizationFormat format);

/** Writes the same files into a ZIP archive.
    @param path     the archive, or a folder in which it is made as `localization.zip` */
QUORVANE_API void exportTermsCompressed(QuorvaneEditor& editor, Containers::ArrayView<const UnsignedInt> languages,
    UnsignedInt defaultLanguage, Containers::StringView path, LocalizationFormat format);

/** Reads terms from a folder or a ZIP archive into the project, as one undo step.
    @param languages    the languages known so far; those that the import brings are appended. Not kept. */
QUORVANE_API void importTerms(QuorvaneEditor& editor, Containers::Array<UnsignedInt>& languages,
    UnsignedInt defaultLanguage, Containers::StringView path, LocalizationFormat format);

}

}
