#include "Export.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "../document/FileSystem.h"
#include "../document/FolderLock.h"
#include "ArchiveReader.h"
#include "ArchiveWriter.h"
#include "ExportFiles.h"
#include "LinkTarget.h"
#include "LocalizationReport.h"
#include "OtherFiles.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "StagedFiles.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;
using Corrade::Utility::format;

bool fail(FileError& error, const Containers::StringView path, const Containers::StringView reason) {
    error.path = path;
    error.reason = reason;
    return false;
}

/** @param place    folder or archive of the files */
bool makeFiles(const Export& request, const Containers::StringView place, const ReadExportFile& read,
    std::vector<ExportFile>& files, LocalizationReport& report, FileError& error) {
    if(!makeExportFiles(request.project.document(), request.defaultLanguage, request.languages,
           request.options.isPseudo, read, files, report, request.progress))
        return false;
    for(const ExportFile& file: files)
        if(!file.refusal.path.isEmpty())
            return fail(error, Path::join(place, file.refusal.path), file.refusal.reason + ", and is not replaced"_s);
    return true;
}

/** Ends what an earlier export left undone; one that writes nothing only looks. */
bool finishEarlier(const Export& request, const Containers::StringView folder, FolderLock& lock,
    LocalizationReport& report, FileError& error) {
    if(request.options.isDryRun) return checkStaged(request.fileSystem, folder, error);
    if(!lockExport(request.fileSystem, folder, lock, error)) return false;
    Containers::Array<Containers::String> names;
    const bool isLeft = request.fileSystem.listFolder(Path::join(folder, StageFolder), names) == 0;
    if(!finishStaged(request.fileSystem, folder, error)) return false;
    if(isLeft)
        report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, {},
            "was left by an export that was cut short, and is put in order"_s, StageFolder);
    return true;
}

/** Lets files that are links be written where they lead, so that they stay links.
    @return false where one leads to a place that no export may write to */
bool followLinks(
    const Export& request, const Containers::StringView folder, std::vector<ExportFile>& files, FileError& error) {
    for(ExportFile& file: files) {
        const Containers::String path = Path::join(folder, file.path);
        const Containers::StringView parent = Path::path(path);
        const bool isLink = request.fileSystem.isLink(path);
        if(!file.isChanged || (!isLink && !request.fileSystem.isLink(parent))) continue;
        // What is in a folder behind a link may not be there yet.
        const Containers::String below = linkTargetBelow(folder, isLink ? Containers::StringView{path} : parent);
        if(below.isEmpty()) {
            const bool isNowhere = linkTarget(isLink ? Containers::StringView{path} : parent).isEmpty();
            return fail(error, isLink ? Containers::StringView{path} : parent,
                isNowhere ? "is a link that leads nowhere"_s : "is a link that leads out of the folder"_s);
        }
        const Containers::String target = isLink ? below : Path::join(below, Path::filename(path));
        const bool isTaken = std::any_of(files.begin(), files.end(),
            [&](const ExportFile& other) { return &other != &file && other.path == target; });
        if(isTaken || target.count('/') > 1 || !target.hasSuffix(".json"_s))
            return fail(error, path,
                isTaken ? format("is a link to {}, which the export writes itself", target)
                        : format("is a link to {}, where an export does not write", target));
        file.path = target;
    }
    return true;
}

Containers::String reasonOf(const ArchiveRefusal& refusal) {
    return format("{}: {}, and the archive is not replaced", refusal.entry, refusal.reason);
}

/** Puts together what an archive is to hold: what is there already keeps its place and, where it is not ours, its bytes.
    @param archive  empty where there is none yet */
bool addFiles(ArchiveReader& archive, std::vector<ExportFile>& files, Containers::Array<StagedFile>& packed,
    ArchiveRefusal& refusal) {
    const auto add = [&](ExportFile& file) {
        Containers::arrayAppend(packed, StagedFile{std::move(file.path), std::move(file.bytes)});
    };
    for(std::size_t i = 0; i != archive.entries().size(); ++i) {
        const Containers::String& name = archive.entries()[i].name;
        if(name.isEmpty()) continue;
        const auto ours =
            std::find_if(files.begin(), files.end(), [&](const ExportFile& file) { return file.path == name; });
        if(ours != files.end()) {
            add(*ours);
            files.erase(ours);
            continue;
        }
        StagedFile kept{name, {}};
        if(!archive.read(i, kept.bytes, refusal)) return false;
        Containers::arrayAppend(packed, std::move(kept));
    }
    for(ExportFile& file: files) add(file);
    return true;
}

}

bool Export::toFolder(const Containers::StringView folder, LocalizationReport& report, FileError& error) const {
    const Containers::StringView path = folderName(folder);
    FolderLock lock;
    if(!finishEarlier(*this, path, lock, report, error)) return false;
    std::vector<ExportFile> files;
    const auto read = [&](const Containers::StringView name, Containers::String& bytes) {
        const Containers::String file = Path::join(path, name);
        const int result = fileSystem.readFile(file, bytes);
        if(result == EISDIR) return fail(error, file, "is a folder where a file is needed"_s);
        // What is a file instead of a folder is said when the folder is made.
        return result == 0 || result == ENOENT || result == ENOTDIR ||
            fail(error, file, systemReason("read"_s, result));
    };
    if(!makeFiles(*this, path, read, files, report, error)) return false;
    OtherFiles{project.document(), files}.notice(fileSystem, path, report);
    if(!followLinks(*this, path, files, error)) return false;
    if(options.isDryRun) return true;

    Containers::Array<StagedFile> changed;
    for(ExportFile& file: files)
        if(file.isChanged) Containers::arrayAppend(changed, StagedFile{std::move(file.path), std::move(file.bytes)});
    return putInPlace(fileSystem, path, changed, lock, error);
}

bool Export::toArchive(const Containers::StringView path, LocalizationReport& report, FileError& error) const {
    Containers::String target{path};
    Containers::Array<Containers::String> inFolder;
    if(const Containers::StringView folder = folderName(path);
        folder.size() != path.size() || fileSystem.listFolder(path, inFolder) == 0)
        target = Path::join(folder, "localization.zip"_s);
    if(fileSystem.isLink(target)) {
        const Containers::String real = linkTarget(target);
        if(real.isEmpty()) return fail(error, target, "is a link that leads nowhere"_s);
        target = real;
    }

    FolderLock lock;
    if(!finishEarlier(*this, Path::path(target), lock, report, error)) return false;
    Containers::String existing;
    const int result = fileSystem.readFile(target, existing);
    if(result == EISDIR) return fail(error, target, "is a folder where a file is needed"_s);
    // What is a file instead of a folder is said when the folder is made.
    if(result != 0 && result != ENOENT && result != ENOTDIR) return fail(error, target, systemReason("read"_s, result));
    ArchiveReader archive;
    ArchiveRefusal refusal;
    const bool isArchive = result == 0 && archive.open(existing, refusal);
    if(result == 0 && !isArchive) return fail(error, target, "is a file, but no ZIP archive that could be replaced"_s);

    std::vector<ExportFile> files;
    const auto read = [&](const Containers::StringView name, Containers::String& bytes) {
        for(std::size_t i = 0; isArchive && i != archive.entries().size(); ++i)
            if(archive.entries()[i].name == name && !archive.read(i, bytes, refusal))
                return fail(error, target, reasonOf(refusal));
        return true;
    };
    if(!makeFiles(*this, target, read, files, report, error)) return false;
    Containers::Array<Containers::String> names;
    for(std::size_t i = 0; isArchive && i != archive.entries().size(); ++i)
        arrayAppend(names, archive.entries()[i].name);
    OtherFiles{project.document(), files}.notice(names, report);
    bool isChanged = !isArchive;
    for(const ExportFile& file: files) isChanged = isChanged || file.isChanged;
    if(!isChanged) return true;

    Containers::Array<StagedFile> packed;
    if(!addFiles(archive, files, packed, refusal)) return fail(error, target, reasonOf(refusal));
    if(options.isDryRun) return true;

    StagedFile file;
    Containers::String reason;
    if(!writeArchive(packed, file.bytes, reason)) return fail(error, target, reason);
    file.path = Path::filename(target);
    return putInPlace(fileSystem, Path::path(target), Containers::arrayView(&file, 1), lock, error);
}

}
