#include "TermFiles.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "../document/FileSystem.h"
#include "ArchiveReader.h"
#include "TermFilePath.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

namespace Path = Corrade::Utility::Path;
using Corrade::Utility::format;

/** Whether a path, with all links followed, lies in a folder. */
bool isInside(const Containers::StringView folder, const Containers::StringView path) {
    std::error_code error;
    const std::string base = std::filesystem::canonical(std::string{folder.data(), folder.size()}, error).string();
    if(error) return true;
    const std::string real = std::filesystem::canonical(std::string{path.data(), path.size()}, error).string();
    // What is not there is said when it is read.
    return error ||
        (real.compare(0, base.size(), base) == 0 &&
            (real.size() == base.size() || base.back() == '/' || real[base.size()] == '/'));
}

class Finding {
public:
    Finding(FileSystem& fileSystem, const Containers::StringView path, Containers::Array<TermFile>& files,
        Containers::Array<Containers::String>& passedOver, Containers::Array<Containers::String>& refusals)
        : _fileSystem{fileSystem}, _path{path}, _files{files}, _passedOver{passedOver}, _refusals{refusals} {}

    void run() {
        Containers::Array<Containers::String> names;
        const int result = _fileSystem.listFolder(_path, names);
        if(result == 0) readFolder(names);
        else if(result == ENOTDIR) readArchive();
        else refuse(_path, systemReason("read"_s, result));
        if(_refusals.isEmpty() && _files.isEmpty())
            refuse(_path, "holds no terms: there is no <language code>/translation.json and no <language code>.json"_s);

        std::stable_sort(
            _files.begin(), _files.end(), [](const TermFile& a, const TermFile& b) { return a.language < b.language; });
        for(std::size_t i = 1; i < _files.size(); ++i)
            if(_files[i].language == _files[i - 1].language)
                refuse(_files[i].name, format("holds the language of {}, too", _files[i - 1].name));
    }

private:
    void refuse(const Containers::StringView name, const Containers::StringView reason) {
        Containers::arrayAppend(_refusals, format("{}: {}", name, reason));
    }

    void readFolder(const Containers::ArrayView<const Containers::String> names) {
        for(const Containers::String& name: names) {
            if(name.hasPrefix('.')) continue;
            if(name.hasSuffix(".json"_s)) {
                readFile(name);
                continue;
            }
            const Containers::String folder = Path::join(_path, name);
            Containers::Array<Containers::String> inner;
            const int result = _fileSystem.listFolder(folder, inner);
            // Only a folder of a language is missed where it cannot be read.
            TermFilePath parsed;
            if(result != 0 && result != ENOTDIR &&
                TermFilePath::parse(TermFilePath::make(name, DefaultNamespace), false, parsed) && parsed.language != -1)
                refuse(folder, systemReason("read"_s, result));
            for(const Containers::String& file: inner)
                if(file.hasSuffix(".json"_s) && !file.hasPrefix('.')) readFile(name + "/"_s + file);
        }
    }

    void readFile(const Containers::String& relative) {
        TermFilePath parsed;
        if(!isTermFile(relative, false, parsed)) return;
        const Containers::String path = Path::join(_path, relative);
        if(!isInside(_path, path)) {
            refuse(path, "is a link that leads out of the folder"_s);
            return;
        }
        TermFile file{path, UnsignedInt(parsed.language), {}};
        if(const int result = _fileSystem.readFile(path, file.bytes)) {
            refuse(path, systemReason("read"_s, result));
            return;
        }
        _totalSize += file.bytes.size();
        if(file.bytes.size() > ArchiveReader::MaxFileSize) refuse(path, "is larger than 64 MiB"_s);
        else if(_totalSize > ArchiveReader::MaxTotalSize)
            refuse(path, "makes more than 512 MiB with those before it"_s);
        else Containers::arrayAppend(_files, std::move(file));
    }

    void readArchive() {
        Containers::String bytes;
        if(const int result = _fileSystem.readFile(_path, bytes)) {
            refuse(_path, systemReason("read"_s, result));
            return;
        }
        ArchiveReader archive;
        ArchiveRefusal refusal;
        if(!archive.open(bytes, refusal)) {
            refuse(refusal);
            return;
        }
        for(std::size_t i = 0; i != archive.entries().size(); ++i) {
            const Containers::String& name = archive.entries()[i].name;
            TermFilePath parsed;
            if(!isTermFile(name, true, parsed)) continue;
            TermFile file{Path::join(_path, name), UnsignedInt(parsed.language), {}};
            if(!archive.read(i, file.bytes, refusal)) {
                refuse(refusal);
                return;
            }
            Containers::arrayAppend(_files, std::move(file));
        }
    }

    void refuse(const ArchiveRefusal& refusal) {
        refuse(refusal.entry.isEmpty() ? _path : Path::join(_path, refusal.entry), refusal.reason);
    }

    bool isTermFile(const Containers::String& relative, const bool isEnclosed, TermFilePath& parsed) {
        if(!TermFilePath::parse(relative, isEnclosed, parsed)) return false;
        if(parsed.language == -1) {
            Containers::arrayAppend(_passedOver, format("{}: no language has the code {}", relative, parsed.code));
            return false;
        }
        if(parsed.nameSpace != DefaultNamespace) {
            Containers::arrayAppend(_passedOver,
                format("{}: only the namespace {} is read, not {}", relative, DefaultNamespace, parsed.nameSpace));
            return false;
        }
        return true;
    }

    FileSystem& _fileSystem;
    Containers::String _path;
    Containers::Array<TermFile>& _files;
    Containers::Array<Containers::String>& _passedOver;
    Containers::Array<Containers::String>& _refusals;
    std::size_t _totalSize = 0;
};

}

bool readTermFiles(FileSystem& fileSystem, const Containers::StringView path, Containers::Array<TermFile>& files,
    Containers::Array<Containers::String>& passedOver, Containers::Array<Containers::String>& refusals) {
    Finding{fileSystem, path, files, passedOver, refusals}.run();
    return refusals.isEmpty();
}

}
