#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "FileSystem.h"

namespace QuorvaneEngine {

/** A file system in memory that fails or loses its power at the step that a test names.

    Like a disk, it keeps contents and names for sure only once they were synchronized. Each step on names is done wholly or not at
    all. Folders are made with @ref put() . */
class MemoryFileSystem: public FileSystem {
public:
    /** Thrown when the power goes. */
    struct PowerLoss {};

    /** What of that which was not synchronized is there after the power came back. */
    enum class Kept { Nothing, Everything, Names, Contents, AnyPart };

    /** Puts a file in place, with its folders, so that it is on the disk. */
    void put(const std::string& path, const std::string& bytes);
    void putFolder(const std::string& path);

    /** Contents of all files by path, those of the folders `.editor` aside. */
    std::map<std::string, std::string> files() const;

    bool exists(const std::string& path) const { return _names.contains(path); }

    /** Lets the power go when @p step steps are done and, where the next one writes, half of it, too. */
    void losePowerAfter(std::size_t step) { _lossAfter = _steps + step; }

    /** Lets a step fail, counted from 0, and where @p isLasting also all later ones. A write that fails leaves half of it. */
    void failAt(std::size_t step, int error, bool isLasting = false);

    /** Undoes @ref losePowerAfter() and @ref failAt() . */
    void behave();

    void powerOn(Kept kept, unsigned seed);

    std::size_t steps() const { return _steps; }

    /** What giving a file a second name answers, 0 for doing it. */
    int linkError = 0;

    /** Paths that are said to be links. */
    std::set<std::string> links;

    /** How often files were written or renamed. */
    std::size_t changes = 0;

    using FileSystem::readFile;
    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override;
    int writeFile(Containers::StringView path, Containers::StringView bytes, Containers::StringView modeOf) override;
    int syncFile(Containers::StringView path) override;
    int syncFolder(Containers::StringView path) override;
    int linkFile(Containers::StringView path, Containers::StringView name) override;
    int renameFile(Containers::StringView from, Containers::StringView to) override;
    int removeFile(Containers::StringView path) override;
    int makeFolder(Containers::StringView path) override;
    int removeFolder(Containers::StringView path) override;
    int listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) override;
    bool isLink(Containers::StringView path) override;

    /** No step, as @ref isLink() is none. */
    int stampOf(Containers::StringView path, FileStamp& stamp) override;

private:
    struct Node {
        bool isFolder;
        std::string bytes, syncedBytes;
        std::uint64_t changed = 0;
    };
    using Names = std::map<std::string, std::shared_ptr<Node>>;

    /** A change of names: @p from is taken away where it is not empty, @p to is given to the node where it is not. */
    struct Step {
        std::string from, to;
        std::shared_ptr<Node> node;
        bool isSynced;
    };

    static void apply(const Step& step, Names& names);

    int begin();
    void change(const Step& step);
    Node* find(const std::string& path) const;

    /** Another name is in the folder of a path, or one less. */
    void touchParent(const std::string& path);

    int parentError(const std::string& path) const;

    Names _names, _syncedNames;
    std::vector<Step> _unsynced;
    std::uint64_t _time = 0;
    std::size_t _steps = 0;
    std::size_t _lossAfter = ~std::size_t{};
    std::size_t _failAt = ~std::size_t{};
    int _error = 0;
    bool _isLasting = false;
};

}
