#include "FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace QuorvaneEngine {

namespace {

/** A path as the C library takes it. */
class Name {
public:
    explicit Name(Containers::StringView path): _path{path.data(), path.size()} {}
    operator const char*() const { return _path.c_str(); }

private:
    std::string _path;
};

class Descriptor {
public:
    Descriptor(const char* path, int flags): _descriptor{::open(path, flags | O_CLOEXEC, 0666)} {}
    ~Descriptor() {
        if(_descriptor != -1) ::close(_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return _descriptor; }

    /** Closes, which on some disks is what tells that a write failed. */
    int close() { return ::close(std::exchange(_descriptor, -1)) ? errno : 0; }

private:
    int _descriptor;
};

int resultOf(int returned) { return returned ? errno : 0; }

int writeAll(int descriptor, Containers::StringView bytes) {
    while(!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if(written < 0 && errno != EINTR) return errno;
        if(written > 0) bytes = bytes.exceptPrefix(std::size_t(written));
    }
    return 0;
}

int sync(const char* path, int flags) {
    Descriptor file{path, O_RDONLY | flags};
    if(file == -1) return errno;
    // Some file systems cannot synchronize folders, and need not.
    return ::fsync(file) && errno != EINVAL ? errno : 0;
}

class Disk: public FileSystem {
public:
    int readFile(Containers::StringView path, Containers::String& bytes) override {
        // A pipe that nobody writes to would block without this flag.
        Descriptor file{Name{path}, O_RDONLY | O_NONBLOCK};
        if(file == -1) return errno;
        struct stat status {};
        if(::fstat(file, &status)) return errno;
        if(S_ISDIR(status.st_mode)) return EISDIR;
        if(!S_ISREG(status.st_mode)) return EINVAL;
        if(std::size_t(status.st_size) > MaxFileSize) return EFBIG;

        // The file may change its size meanwhile; what was read is what counts.
        std::string read;
        read.resize(std::size_t(status.st_size) + 1);
        std::size_t size = 0;
        for(;;) {
            if(size == read.size()) read.resize(size * 2);
            const ssize_t count = ::read(file, read.data() + size, read.size() - size);
            if(count < 0 && errno != EINTR) return errno;
            if(count == 0) break;
            if(count > 0) size += std::size_t(count);
            if(size > MaxFileSize) return EFBIG;
        }
        bytes = Containers::String{read.data(), size};
        return 0;
    }

    int writeFile(Containers::StringView path, Containers::StringView bytes, Containers::StringView modeOf) override {
        Descriptor file{Name{path}, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW};
        if(file == -1) return errno;
        struct stat status {};
        // Where the disk keeps no permissions there is nothing to lose.
        if(!modeOf.isEmpty() && ::stat(Name{modeOf}, &status) == 0) ::fchmod(file, status.st_mode & 0777);
        if(const int error = writeAll(file, bytes)) return error;
        return file.close();
    }

    int syncFile(Containers::StringView path) override { return sync(Name{path}, 0); }
    int syncFolder(Containers::StringView path) override { return sync(Name{path}, O_DIRECTORY); }

    int linkFile(Containers::StringView path, Containers::StringView name) override {
        return resultOf(::link(Name{path}, Name{name}));
    }

    int renameFile(Containers::StringView from, Containers::StringView to) override {
        return resultOf(::rename(Name{from}, Name{to}));
    }

    int removeFile(Containers::StringView path) override { return resultOf(::unlink(Name{path})); }
    int makeFolder(Containers::StringView path) override { return resultOf(::mkdir(Name{path}, 0777)); }
    int removeFolder(Containers::StringView path) override { return resultOf(::rmdir(Name{path})); }

    int listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) override {
        const std::unique_ptr<DIR, int (*)(DIR*)> folder{::opendir(Name{path}), ::closedir};
        if(!folder) return errno;
        std::vector<std::string> found;
        errno = 0;
        while(const dirent* const entry = ::readdir(folder.get())) {
            const std::string name{entry->d_name};
            if(name != "." && name != "..") found.push_back(name);
        }
        if(errno) return errno;
        std::sort(found.begin(), found.end());
        names = Containers::Array<Containers::String>{Corrade::ValueInit, found.size()};
        for(std::size_t i = 0; i != found.size(); ++i) names[i] = Containers::String{found[i].data(), found[i].size()};
        return 0;
    }
};

}

FileSystem& FileSystem::disk() {
    static Disk disk;
    return disk;
}

FileSystem::~FileSystem() = default;

Containers::String systemReason(const Containers::StringView what, const int error) {
    const std::string reason =
        "cannot be " + std::string{what.data(), what.size()} + ": " + std::string{std::strerror(error)};
    return Containers::String{reason.data(), reason.size()};
}

}
