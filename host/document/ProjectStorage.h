#pragma once

#include <cstdint>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "FileSystem.h"
#include "KnownFiles.h"
#include "ProjectLock.h"
#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Projects on disk: `project.json`, and one `localization/<code>.json` for each language with translations, which is the object
    at `/localization/translations/<code>` of the document. An entry there that is no object, or whose key is no language code,
    stays in `project.json`.

    Failures print one warning: `ProjectStorage::open(): <file>:<line>:<column>: <reason>`, with line and column as in
    @ref JsonError where the content is at fault, else `ProjectStorage::open(): <file>: <reason>`; `save()` likewise. */
class QUORVANE_API ProjectStorage {
public:
    /** @param files    must outlive the storage */
    explicit ProjectStorage(FileSystem& files);
    ~ProjectStorage();
    ProjectStorage(const ProjectStorage&) = delete;
    ProjectStorage& operator=(const ProjectStorage&) = delete;

    /** Keeps other programs from saving the project in a folder, and from opening it where something of a save is left to be done, until
        another one is opened or the storage goes: for who is about to open the project, change it and save it, so that no change of
        another program in between is lost. The lock of the open project stays until another one is open. Warns as @ref open()
        does.
        @param folder   as for @ref open()
        @return false where another program does so, or saves at this moment */
    bool lock(Containers::StringView folder);

    /** As @ref lock() , for as long as the user likes: makes the folder `.editor` of a project, where it can be made, and prints no
        warning.
        @param refusal  set on failure; its reason says in words who has the project
        @return false only where another program has it; what else is wrong with the folder is told by @ref open() */
    bool tryLock(Containers::StringView folder, FileError& refusal);

    /** Whether the open project is locked for this storage. */
    bool isLocked() const { return _lock && _lock->isTaken(_folder); }

    /** Reads the project in a folder, after completing or rolling back a save that was cut short, and remembers what its files
        hold.
        @param folder       absolute, or relative to the current folder
        @param document     the project's; left as it is on failure
        @return false for a project that cannot be read as a whole; the storage then stays with the former one */
    bool open(Containers::StringView folder, rapidjson::Document& document);

    /** Writes those files whose content is not as it was when they were last read or written, and removes those whose translations
        are gone; all or none. Formatting alone is no reason to write a file. Fails where another program has the project locked, and
        where somebody else has changed a file that would be written or removed. A project that is gone is written anew. */
    bool save(const rapidjson::Document& document);

    /** Whether @ref save() would have nothing to do. Writes out the whole document in memory. */
    bool isSaved(const rapidjson::Document& document) const;

    /** Looks whether somebody else has changed the files; see @ref KnownFiles::look() . */
    DiskState look(Containers::String* changed = nullptr) { return _known.look(changed); }

    /** Lets the next @ref save() write over what somebody else has done to the files until now. They count as not saved. */
    void keepDocument();

    /** Names what was last read or written: a fingerprint of 16 characters, the same where the contents are. */
    Containers::StringView savedState() const { return _savedState; }

    /** Makes the folder `.editor`, which version control is told to ignore, where it can be made. */
    void makeEditorFolder();

    /** Takes a document that is in no folder for saved. */
    void setSaved(const rapidjson::Document& document);

    /** The open project's folder: absolute, with forward slashes, none at the end; empty before the first @ref open() . */
    Containers::StringView folder() const { return _folder; }

    /** Whether a text is built like a language code by BCP 47, so that it can name a file. */
    static bool isLanguageCode(Containers::StringView text);

private:
    /** A file's path in the folder, and what tells its content from any other. */
    struct Fingerprint {
        Containers::String path;
        std::size_t size;
        std::uint64_t hash;

        bool operator==(const Fingerprint& other) const;
    };
    struct File;

    static bool write(const rapidjson::Document& document, std::vector<File>& files, FileError& error);
    static Containers::String stateOf(const std::vector<Fingerprint>& files);
    static std::vector<Fingerprint> fingerprints(const std::vector<File>& files);

    bool hasLock(Containers::StringView folder) const;
    bool take(const Containers::String& path, ProjectLock::Making making, FileError& error);
    void keepLock();
    bool isSaved(const std::vector<Fingerprint>& current) const;

    /** Puts an earlier save in order that was cut short and could not be taken back. */
    bool finishEarlier(FileError& error);

    void keep(const std::vector<KnownFiles::Difference>& differences);

    bool mayReplace(Containers::StringView path, FileError& error);
    bool put(const std::vector<File>& files, const std::vector<Fingerprint>& current, FileError& error);

    bool recover(Containers::StringView folder, FileError& error) const;

    FileSystem* _files;

    /** Of the open project, and of the one that is about to be opened; null where there is none. */
    Containers::Pointer<ProjectLock> _lock, _nextLock;

    Containers::String _folder;
    std::vector<Fingerprint> _saved;
    Containers::String _savedState;
    KnownFiles _known;
};

}
