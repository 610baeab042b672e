#include "Utils/FileTree.h"

#include <cerrno>
#include <vector>

#include <sys/stat.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

namespace QuorvaneEngine {

namespace {

using namespace Corrade::Containers::Literals;
using Corrade::Containers::Array;
using Corrade::Containers::Optional;
using Corrade::Containers::String;
using Corrade::Containers::StringView;
using Corrade::Utility::Debug;
using Corrade::Utility::Error;
using Corrade::Utility::Warning;
namespace Path = Corrade::Utility::Path;

/** What tells a folder from all others; nothing there has the default. */
struct Identity {
    bool operator==(const Identity& other) const { return device == other.device && number == other.number; }

    dev_t device = 0;
    ino_t number = 0;
};

/** What a path leads to. */
struct Target {
    explicit Target(const StringView path): isThere{stat(String::nullTerminatedView(path).data(), &status) == 0} {
        if(!isThere) error = errno;
    }

    bool isFolder() const { return isThere && S_ISDIR(status.st_mode); }
    bool isFile() const { return isThere && S_ISREG(status.st_mode); }
    bool isSame(const Target& other) const { return isThere && other.isThere && identity() == other.identity(); }
    Identity identity() const { return {status.st_dev, status.st_ino}; }

    /** Whether there is nothing, in contrast to something that cannot be looked at. */
    bool isNowhere() const { return error == ENOENT || error == ELOOP; }

    struct stat status {};
    bool isThere;
    int error = 0;
};

bool isLink(const StringView path) {
    struct stat status {};
    return lstat(String::nullTerminatedView(path).data(), &status) == 0 && S_ISLNK(status.st_mode);
}

/** One that is to be copied. */
struct Entry {
    /** Below the folder that is copied. */
    String path;

    /** The folder that it lies in, which for the first one is itself. */
    std::size_t parent;

    /** Of a folder, and of the one that it is copied to. */
    Identity source, destination;
};

/** Whether a folder is one of those that it was reached through, or of those that these are copied to.
    @param side     which of the two */
bool leadsBack(
    const std::vector<Entry>& entries, std::size_t index, const Target& target, Identity Entry::*const side) {
    while(index) {
        index = entries[index].parent;
        if(entries[index].*side == target.identity()) return true;
    }
    return false;
}

/** Nothing for what can be copied, and for what fails with a message of its own. */
StringView reasonToSkip(const std::vector<Entry>& entries, const std::size_t index, const StringView source,
    const Target& target, const StringView destination, const StringView root) {
    if(!target.isThere) return target.isNowhere() && isLink(source) ? "the link leads nowhere"_s : StringView{};
    if(target.isFolder()) {
        if(target.isSame(Target{root}) || leadsBack(entries, index, target, &Entry::destination))
            return "it is where the copy goes";
        return leadsBack(entries, index, target, &Entry::source) ? "it leads back to a folder that it lies in"_s
                                                                 : StringView{};
    }
    if(!target.isFile()) return "it is neither file nor folder";
    return target.isSame(Target{destination}) ? "it is the file that would be written"_s : StringView{};
}

/** Makes the folder, and adds what is in it to what is to be copied. */
void openFolder(std::vector<Entry>& entries, const std::size_t index, const StringView source, const Target& target,
    const StringView destination) {
    Path::make(destination);
    entries[index].source = target.identity();
    entries[index].destination = Target{destination}.identity();
    const Optional<Array<String>> names = Path::list(source, Path::ListFlag::SkipDotAndDotDot);
    if(!names) return;
    for(const StringView name: *names) entries.push_back({Path::join(entries[index].path, name), index, {}, {}});
}

/** Without the slashes and dots at its end, with which the path of a link is one of the folder. */
StringView withoutDots(StringView path) {
    while(path.hasSuffix('/') || path.hasSuffix("/."_s)) path = path.exceptSuffix(1);
    return path;
}

}

bool copyRecursive(const StringView from, const StringView to) {
    std::vector<Entry> entries{{{}, 0, {}, {}}};
    for(std::size_t i = 0; i != entries.size(); ++i) {
        const String source = Path::join(from, entries[i].path);
        const String destination = Path::join(to, entries[i].path);
        const Target target{source};
        const StringView reason = reasonToSkip(entries, i, source, target, destination, to);
        if(!reason.isEmpty()) {
            Warning{} << "copyRecursive(): skipped" << source << Warning::nospace << ":" << reason;
        } else if(target.isFolder()) {
            openFolder(entries, i, source, target, destination);
        } else {
            Debug{} << "Copying" << source << "to" << destination;
            if(!Path::copy(source, destination)) return false;
        }
    }
    return true;
}

bool deleteRecursive(const StringView path) {
    const StringView named = withoutDots(path);
    if(isLink(named)) return Path::remove(named);
    if(!Path::isDirectory(path)) return Path::remove(path);
    const Optional<Array<String>> names = Path::list(path, Path::ListFlag::SkipDotAndDotDot);
    if(!names) {
        Error{} << "Unable to delete:" << path;
        return false;
    }
    for(const StringView name: *names) {
        const String child = Path::join(path, name);
        if(!deleteRecursive(child)) Error{} << "Unable to delete:" << child;
    }
    // The system removes no folder under the name ".".
    return Path::remove(named);
}

}
