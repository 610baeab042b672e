#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "FileSystem.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What became of the files of a project on the disk. */
enum class DiskState : std::uint8_t {
    Same, /**< they hold what was read or written last */
    Changed, /**< somebody else changed, added or removed some */
    Gone /**< project.json is not there, and what is left of the others is as it was */
};

/** The files of a project as they were read or written last, so that it is noticed when somebody else changes them. To look costs a
    question to the disk for each file and allocates nothing; only a file that was touched since, or may have been, is read, and one that still
    holds the same bytes is unchanged. On a file system that cannot tell, nothing is noticed. */
class QUORVANE_API KnownFiles {
public:
    /** A file that somebody else changed. */
    struct Difference {
        /** Relative to the project's folder. */
        Containers::String path;

        /** Whether there is a file now. */
        bool isThere;
    };

    /** Tells what time it is, in nanoseconds since 1970. */
    using Clock = std::int64_t (*)();

    /** Knows of no file.
        @param files    must outlive this object
        @param folder   of the project, absolute */
    explicit KnownFiles(FileSystem& files, Containers::StringView folder, Clock clock = systemTime);

    /** The state of a file that is about to be read. */
    FileStamp stampOf(Containers::StringView path) const;

    /** A file that was read.
        @param path     relative to the folder
        @param stamp    as it was before */
    void noteRead(Containers::StringView path, const FileStamp& stamp, Containers::StringView bytes);

    /** A file that was written; the next look reads it, as others may have written it since. */
    void noteWritten(Containers::StringView path, Containers::StringView bytes);
    void noteRemoved(Containers::StringView path);

    /** Looks at the disk.
        @param changed  receives the path of the first file that was changed, absolute, and how many more were */
    DiskState look(Containers::String* changed = nullptr);

    /** Whether a known file is not there. */
    bool isMissing(Containers::StringView path) const;

    /** Whether a file, known or not, holds what somebody else has written since it was read or written last. */
    bool isForeign(Containers::StringView path);

    /** Takes what is on the disk now for known.
        @return what has changed until now */
    std::vector<Difference> learn();

    /** As @ref learn() , of some files alone.
        @param paths    relative to the folder */
    std::vector<Difference> learn(const std::vector<Containers::String>& paths);

private:
    struct File {
        Containers::String path;
        Containers::String place;
        FileStamp stamp;
        std::size_t size;
        std::uint64_t hash;

        /** Whether another change may have left it with the same stamp. */
        bool isYoung;
    };
    enum class Look : std::uint8_t { Same, Changed, Missing };

    static std::int64_t systemTime();

    Containers::String placeOf(Containers::StringView path) const;
    bool isYoung(const FileStamp& stamp) const;
    Look look(File& file) const;
    void set(Containers::StringView path, const FileStamp& stamp, Containers::StringView bytes);
    void setUnread(Containers::StringView path, const FileStamp& stamp);

    void learn(const std::vector<Difference>& differences);

    /** The paths of files that were added to the folder of translations. */
    std::vector<Containers::String> added();

    FileSystem* _files;
    Containers::String _folder;
    Clock _clock;
    Containers::String _translations;
    FileStamp _translationsStamp;
    std::vector<File> _known;
};

}
