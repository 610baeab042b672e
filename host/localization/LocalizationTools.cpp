#include "QuorvaneEditor/LocalizationTools.h"

#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "../document/FileSystem.h"
#include "Export.h"
#include "Gathering.h"
#include "Import.h"
#include "LastRun.h"
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

/** Tells what came of a run, and keeps it for who wants to see more. */
void finish(const Containers::StringView function, QuorvaneEditor& editor, LocalizationRun&& run) {
    for(const Containers::String& refusal: run.refusals) warn(function, refusal);
    if(run.refusals.isEmpty()) run.report.print(function);
    setLastRun(editor, std::move(run));
}

template <class Write>
void exportWith(const Containers::StringView function, QuorvaneEditor& editor,
    const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt defaultLanguage,
    const Containers::StringView path, const LocalizationFormat format, Write&& write) {
    const Containers::String target = absolutePath(function, path, defaultLanguage, format);
    if(target.isEmpty()) return;
    LocalizationRun run{LocalizationRun::Kind::Export, target, {}, {}};
    FileError error;
    if(!write(Export{editor.project(), FileSystem::disk(), languages, defaultLanguage}, target, run.report, error))
        Containers::arrayAppend(run.refusals, Corrade::Utility::format("{}: {}", error.path, error.reason));
    finish(function, editor, std::move(run));
}

}

void gatherStrings(QuorvaneEditor& editor) {
    LocalizationRun run{LocalizationRun::Kind::Gathering, {}, {}, {}};
    gatherTerms(editor, run);
    finish("LocalizationTools::gatherStrings()"_s, editor, std::move(run));
}

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
    LocalizationRun run{LocalizationRun::Kind::Import, source, {}, {}};
    Import import{editor, defaultLanguage};
    if(import.read(FileSystem::disk(), source) && import.compare(run.report)) run.group = import.apply(languages);
    for(const Containers::String& refusal: import.refusals()) Containers::arrayAppend(run.refusals, refusal);
    finish(function, editor, std::move(run));
}

}
