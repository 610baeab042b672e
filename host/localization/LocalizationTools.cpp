#include "QuorvaneEditor/LocalizationTools.h"

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "../document/FileSystem.h"
#include "Export.h"
#include "Gathering.h"
#include "Import.h"
#include "LocalizationReport.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/QuorvaneEditor.h"

namespace QuorvaneEngine::LocalizationTools {

using namespace Containers::Literals;

namespace {

using Corrade::Utility::Debug;
using Corrade::Utility::Warning;

void warn(const Containers::StringView function, const Containers::StringView message) {
    Warning{} << function << Debug::nospace << ":" << message;
}

/** The path as an absolute one; empty, with a warning, where the arguments are nothing to work with. */
Containers::String absolutePath(const Containers::StringView function, const Containers::StringView path,
    const UnsignedInt defaultLanguage, const LocalizationFormat format) {
    if(path.isEmpty()) warn(function, "the path is empty"_s);
    else if(path.contains('\0')) warn(function, "the path has a zero byte"_s);
    else if(format != LocalizationFormat::I18Next)
        warn(function, Corrade::Utility::format("{}: the format {} is not known", path, Int(format)));
    else if(defaultLanguage >= LanguageCount)
        warn(function, Corrade::Utility::format("{}: the default language {} is not known", path, defaultLanguage));
    else if(path.hasPrefix('/')) return path;
    else if(const auto current = Corrade::Utility::Path::currentDirectory())
        return Corrade::Utility::Path::join(*current, path);
    return {};
}

template <class Write>
void exportWith(const Containers::StringView function, QuorvaneEditor& editor,
    const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt defaultLanguage,
    const Containers::StringView path, const LocalizationFormat format, Write&& write) {
    const Containers::String target = absolutePath(function, path, defaultLanguage, format);
    if(target.isEmpty()) return;
    LocalizationReport report;
    FileError error;
    if(write(Export{editor.project(), FileSystem::disk(), languages, defaultLanguage}, target, report, error))
        report.print(function);
    else warn(function, Corrade::Utility::format("{}: {}", error.path, error.reason));
}

}

void gatherStrings(QuorvaneEditor& editor) { gatherTerms(editor); }

void exportTerms(QuorvaneEditor& editor, const Containers::ArrayView<const UnsignedInt> languages,
    const UnsignedInt defaultLanguage, const Containers::StringView path, const LocalizationFormat format) {
    exportWith("LocalizationTools::exportTerms()"_s, editor, languages, defaultLanguage, path, format,
        [](const Export& request, const Containers::StringView target, LocalizationReport& report, FileError& error) {
            return request.toFolder(target, report, error);
        });
}

void exportTermsCompressed(QuorvaneEditor& editor, const Containers::ArrayView<const UnsignedInt> languages,
    const UnsignedInt defaultLanguage, const Containers::StringView path, const LocalizationFormat format) {
    exportWith("LocalizationTools::exportTermsCompressed()"_s, editor, languages, defaultLanguage, path, format,
        [](const Export& request, const Containers::StringView target, LocalizationReport& report, FileError& error) {
            return request.toArchive(target, report, error);
        });
}

void importTerms(QuorvaneEditor& editor, Containers::Array<UnsignedInt>& languages, const UnsignedInt defaultLanguage,
    const Containers::StringView path, const LocalizationFormat format) {
    constexpr Containers::StringView function = "LocalizationTools::importTerms()"_s;
    const Containers::String source = absolutePath(function, path, defaultLanguage, format);
    if(source.isEmpty()) return;
    Import import{editor, defaultLanguage};
    LocalizationReport report;
    if(!import.read(FileSystem::disk(), source) || !import.compare(report)) {
        for(const Containers::String& refusal: import.refusals()) warn(function, refusal);
        return;
    }
    import.apply(languages);
    report.print(function);
}

}
