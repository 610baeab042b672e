#pragma once

#include <cstddef>
#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Tells one state of a file from another without reading it. Equal ones are as good as sure to be of one content. */
struct FileStamp {
    /** Which file it is, of all that the program can see. */
    std::uint64_t device = 0;
    std::uint64_t file = 0;

    /** In bytes. */
    std::uint64_t size = 0;

    /** When the contents were changed last, in nanoseconds since 1970; whoever writes the file may say otherwise. */
    std::int64_t changed = 0;

    /** When anything of the file was changed last, its names and permissions included, which nobody can set. */
    std::int64_t touched = 0;

    bool operator==(const FileStamp&) const = default;

    bool isSameFile(const FileStamp& other) const { return device == other.device && file == other.file; }
};

/** The steps that saving and opening a project take on the disk, each of which may fail, and before each of which the power may
    go. Tests put their own in place.

    Paths are absolute with forward slashes. Results are error numbers of the C library, 0 where all went well. Nothing is known
    to have reached the disk before the file's contents and the folder that names it are synchronized. */
class QUORVANE_API FileSystem {
public:
    /** The disk; lives as long as the program. */
    static FileSystem& disk();

    virtual ~FileSystem();

    /** Whether several threads may read files at once. */
    virtual bool canReadAtOnce() const { return false; }

    /** Reads a regular file; a folder is `EISDIR`, and a pipe, a device or a socket `EINVAL`.
        @param maxSize  in bytes, up to @ref MaxFileSize ; a larger file is `EFBIG`, and not read */
    virtual int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) = 0;
    int readFile(Containers::StringView path, Containers::String& bytes) { return readFile(path, bytes, MaxFileSize); }

    /** Makes a file, or empties it first.
        @param modeOf   file whose permissions it gets; empty, or one that is missing, for the usual ones */
    virtual int writeFile(Containers::StringView path, Containers::StringView bytes, Containers::StringView modeOf) = 0;

    /** Returns when a file's contents have reached the disk. */
    virtual int syncFile(Containers::StringView path) = 0;

    /** Returns when the names in a folder have reached the disk. */
    virtual int syncFolder(Containers::StringView path) = 0;

    /** Returns when the contents of some files and the names in some folders have reached the disk. In which order is left open: asked
        for all at once, a disk takes much less time than for one after the other.
        @param results  receives a result for each, of files first */
    virtual void syncAll(Containers::ArrayView<const Containers::String> files,
        Containers::ArrayView<const Containers::String> folders, Containers::ArrayView<int> results);

    /** Gives a file a second name. */
    virtual int linkFile(Containers::StringView path, Containers::StringView name) = 0;

    /** Renames a file, in place of another one of that name. */
    virtual int renameFile(Containers::StringView from, Containers::StringView to) = 0;

    virtual int removeFile(Containers::StringView path) = 0;
    virtual int makeFolder(Containers::StringView path) = 0;

    /** Removes a folder that is empty. */
    virtual int removeFolder(Containers::StringView path) = 0;

    /** All names in a folder but "." and "..", in byte order. */
    virtual int listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) = 0;

    /** Whether a name stands for another place; the other functions follow it there. */
    virtual bool isLink(Containers::StringView path) = 0;

    /** Looks at a file or folder without opening it. Allocates nothing where the path ends with a NUL.
        @param stamp    left as it is on failure
        @return `ENOSYS` where the file system cannot tell */
    virtual int stampOf(Containers::StringView path, FileStamp& stamp);

    /** Locks a folder for this program and, within it, for who called; see @ref FolderLock .
        @param lock     receives what unlocks it
        @return `EWOULDBLOCK` where it is locked already, `ENOLCK` where the file system knows no such locks */
    virtual int lockFolder(Containers::StringView path, int& lock);

    virtual void unlockFolder(int lock);

    /** In bytes. */
    static constexpr std::size_t MaxFileSize = std::size_t(1) << 30;
};

/** What went wrong with which file. */
struct FileError {
    Containers::String path;

    /** The end of a sentence, such as "cannot be written: No space left on device". */
    Containers::String reason;
};

/** The reason for an error number of a @ref FileSystem .
    @param what     what cannot be done, such as "written" */
QUORVANE_API Containers::String systemReason(Containers::StringView what, int error);

}
