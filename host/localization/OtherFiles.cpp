#include "OtherFiles.h"

#include <algorithm>

#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "LanguageLookup.h"
#include "LocalizationReport.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermFilePath.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

namespace Path = Corrade::Utility::Path;

}

void OtherFiles::notice(FileSystem& fileSystem, const Containers::StringView folder, LocalizationReport& report) const {
    Containers::Array<Containers::String> names;
    if(fileSystem.listFolder(folder, names) != 0) return;
    for(const Containers::String& name: names) {
        if(name.hasSuffix(".json"_s)) noticeFile(name, false, report);
        if(findLanguage(name) == -1) continue;
        Containers::Array<Containers::String> inner;
        if(fileSystem.listFolder(Path::join(folder, name), inner) != 0) continue;
        for(const Containers::String& file: inner) noticeFile(format("{}/{}", name, file), false, report);
    }
}

void OtherFiles::notice(
    const Containers::ArrayView<const Containers::String> entries, LocalizationReport& report) const {
    Containers::StringView first;
    std::size_t count = 0;
    for(const Containers::String& entry: entries) {
        if(entry.isEmpty() || isWritten(entry) || noticeFile(entry, true, report)) continue;
        if(++count == 1) first = entry;
    }
    if(count == 0) return;
    const Containers::StringView reason = "is not of this export, and stays in the archive"_s;
    report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {},
        count == 1 ? Containers::String{reason}
                   : format("{} ({} more file{})", reason, count - 1, count == 2 ? "" : "s"),
        first);
}

bool OtherFiles::isWritten(const Containers::StringView path) const {
    return std::any_of(_files.begin(), _files.end(), [path](const ExportFile& file) { return file.path == path; });
}

/** A project that names no languages may have any. */
bool OtherFiles::hasLanguage(const Containers::StringView code) const {
    const rapidjson::Value* const languages = memberOf(&_root, "languages"_s);
    return !languages || !languages->IsObject() || languages->ObjectEmpty() || memberOf(languages, code);
}

/** Whether a file is one to be told of. */
bool OtherFiles::noticeFile(
    const Containers::StringView path, const bool isEnclosed, LocalizationReport& report) const {
    TermFilePath parsed;
    if(isWritten(path) || !TermFilePath::parse(path, isEnclosed, {}, parsed) || parsed.language == -1) return false;
    const Containers::StringView code = AllLanguages[parsed.language].code;
    const Containers::String place = TermFilePath::make(code, parsed.nameSpace);
    const Containers::String end = place.exceptPrefix(code.size());
    const bool hasNamespace =
        std::any_of(_files.begin(), _files.end(), [&end](const ExportFile& file) { return file.path.hasSuffix(end); });
    Containers::String reason;
    if(!hasLanguage(code)) reason = format("the project does not have the language {}", code);
    else if(!hasNamespace) reason = format("the project has no texts for the namespace {}", parsed.nameSpace);
    else if(path != place) reason = format("an export writes {}", place);
    else return false;
    report.add(UnsignedInt(parsed.language), TermOutcome::Notice, {}, reason + "; this file stays as it is"_s, path);
    return true;
}

}
